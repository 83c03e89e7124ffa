// The procedures that are running, innermost on top.
//
// Running a procedure, "exec", "if" and "ifelse" put a frame here instead of calling each other, so
// their nesting costs heap memory and never the machine stack. A frame owns a reference to what it
// runs: a procedure that is redefined or released while it runs stays alive until its run ends.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ps/Limits.h"
#include "ps/ObjectHeap.h"
#include "ps/PSObject.h"

namespace orxeps {

class ExecutionStack {
public:
  [[nodiscard]] std::size_t Depth() const noexcept { return frames.size(); }

  // Starts running the elements of a procedure, as many as it has now. Throws LimitReached
  // (execstackoverflow).
  void RunProcedure(PSRef procedure) {
    const ObjectList& elements = procedure->Parts().procElements;
    Add({std::move(procedure), &elements, 0, elements.Count()});
  }
  // Starts executing a single object.
  void RunObject(PSRef object) { Add({std::move(object), nullptr, 0, kSingleObject}); }

  // Moves on in the topmost frame. Returns the next object to execute, borrowed; null when the
  // frame came to its end and is gone. REQUIRES: Depth() > 0.
  [[nodiscard]] PSObject* Advance() noexcept {
    Frame& frame = frames.back();
    // What a procedure has may be replaced or added to while it runs, but it never gets shorter.
    if (frame.next < frame.count) return frame.elements->At(++frame.next);
    if (frame.count == kSingleObject) {
      frame.count = 0;
      return frame.running.Get();
    }
    frames.pop_back();
    return nullptr;
  }

  // The element that ran before the one that runs, in the innermost procedure; null for none.
  [[nodiscard]] const PSObject* ElementBefore() const noexcept {
    if (frames.empty() || !frames.back().elements || frames.back().next < 2) return nullptr;
    return frames.back().elements->At(frames.back().next - 1);
  }
  // The innermost procedure that runs, null without one.
  [[nodiscard]] const PSObject* RunningProcedure() const noexcept {
    const auto frame = std::find_if(frames.rbegin(), frames.rend(),
                                    [](const Frame& each) { return each.elements != nullptr; });
    return frame == frames.rend() ? nullptr : frame->running.Get();
  }
  // The place in the document of the innermost procedure that runs, kNoPlace without one.
  [[nodiscard]] std::uint64_t DefinitionPlace() const noexcept {
    const PSObject* procedure = RunningProcedure();
    return procedure ? procedure->Parts().definedAt : kNoPlace;
  }

  // Gives up every run.
  void Abandon() noexcept { frames.clear(); }

private:
  static constexpr std::int32_t kSingleObject = -1;

  struct Frame {
    PSRef running;
    const ObjectList* elements;  // of the procedure that runs
    std::int32_t next;           // elements executed so far
    std::int32_t count;          // elements to execute, or kSingleObject
  };

  void Add(Frame frame) {
    if (frames.size() >= kMaxExecutionDepth) throw LimitReached{"execstackoverflow"};
    frames.push_back(std::move(frame));
  }

  std::vector<Frame> frames;
};

}  // namespace orxeps
