// The current graphics state with its path, and the states saved by "gsave".
//
// There is always a current state. Nobody may keep a pointer to it across Restore.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "graphics/GraphicsState.h"
#include "graphics/PathBuffer.h"
#include "ps/Limits.h"
#include "ps/MemoryBudget.h"

namespace orxeps {

class GraphicsStates {
public:
  // States and points count in a budget, which is borrowed.
  explicit GraphicsStates(MemoryBudget& memoryBudget) noexcept
      : budget(memoryBudget), buffer(memoryBudget) {}
  GraphicsStates(const GraphicsStates&) = delete;
  GraphicsStates& operator=(const GraphicsStates&) = delete;
  ~GraphicsStates() { budget.Give(saved.size() * kSavedStateCost); }

  GraphicsState current;

  // Saves a copy of the current state. Returns false, and saves nothing, when the ceiling is met.
  // Throws LimitReached (VMerror) and std::bad_alloc.
  [[nodiscard]] bool Save();
  // Brings the state saved last back, path included; does nothing when none is saved.
  void Restore() noexcept;
  [[nodiscard]] std::size_t SavedCount() const noexcept { return saved.size(); }

  // Whether the path may grow by this many points.
  [[nodiscard]] bool HasRoomFor(std::size_t points) noexcept {
    if (buffer.Count() + points <= kMaxPathPoints) return true;
    pathWasFull = true;
    return false;
  }
  // Adds a point, in device space, to the path; it becomes the current point. A Move begins a
  // subpath.
  void AppendPoint(double x, double y, PathPointKind kind) {
    buffer.Append({x, y, kind});
    ++current.path.count;
    if (kind == PathPointKind::Move) {
      current.subpathStart = static_cast<std::int32_t>(current.path.count);
    }
    current.currentX = x;
    current.currentY = y;
  }
  // Adds lines to points, at least one; the last becomes the current point.
  void AppendLines(std::span<const float> xs, std::span<const float> ys) {
    try {
      buffer.AppendLines(xs, ys);
    } catch (...) {
      buffer.Truncate(current.path.End());
      throw;
    }
    current.path.count += xs.size();
    current.currentX = xs.back();
    current.currentY = ys.back();
  }
  // Empties a path that has met its ceiling since this was asked last, with what saved states share
  // of it; any other stays.
  void EmptyFullPath() noexcept;
  // Empties the path; the current point and the subpath's start stay as they are.
  void ClearPath() noexcept;

  [[nodiscard]] std::size_t PathCount() const noexcept { return current.path.count; }
  // A point of the path. REQUIRES: 1 <= position <= PathCount().
  [[nodiscard]] const PathPoint& PathAt(std::size_t position) const noexcept {
    return buffer.At(current.path.begin + position - 1);
  }

  // Calls visit(std::span<const PathPoint>) for the points of the path, piece by piece.
  template <typename Visitor>
  void VisitPath(Visitor visit) const {
    buffer.VisitPieces(current.path, visit);
  }

private:
  MemoryBudget& budget;
  PathBuffer buffer;
  std::vector<GraphicsState> saved;
  bool pathWasFull = false;
};

}  // namespace orxeps
