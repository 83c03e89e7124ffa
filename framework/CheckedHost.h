// Wrappers that watch how an interpreter uses its host, for tests and for debugging plug-ins.
//
// A checked stream or generator stands in front of another one, passes every call on and notes in
// words each call that an interpreter must not make: out of order, with arguments that the
// interface does not allow, or after the interpreter is gone. A call whose arguments cannot be
// used is noted and not passed on. The host's own fault of destroying an interpreter from inside a
// callback is noted as well, before it does harm. What stands behind a wrapper is borrowed.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/ORXFrameworkApi.h"
#include "host/PrintGenerator.h"
#include "host/PrintInputStream.h"

namespace orxframework {

// What both wrappers keep: the violations met so far, the first hundred of them.
class ORX_FRAMEWORK_API ViolationLog {
public:
  [[nodiscard]] const std::vector<std::string>& Violations() const noexcept { return violations; }
  // To be called when the interpreter is about to be destroyed. From now on every call is a
  // violation, and so is this one from inside a callback of the interpreter. Returns whether the
  // interpreter may go.
  bool Retire();

protected:
  ViolationLog() = default;
  ~ViolationLog() = default;

  // Notes that a call breaks a rule unless `holds`, which is returned.
  bool Require(bool holds, std::string_view call, std::string_view rule);
  void RequireInUse(std::string_view call);

  // Passes a call on to what stands behind the wrapper.
  template <typename Call>
  int PassOn(const Call& call) {
    const CallInProgress inProgress(callsInProgress);
    return call();
  }

private:
  // A call that is being passed on, to its end or until an exception leaves it.
  class CallInProgress {
  public:
    explicit CallInProgress(int& itsCount) noexcept : count(itsCount) { ++count; }
    CallInProgress(const CallInProgress&) = delete;
    CallInProgress& operator=(const CallInProgress&) = delete;
    ~CallInProgress() { --count; }

  private:
    int& count;
  };

  std::vector<std::string> violations;
  int callsInProgress = 0;
  bool isRetired = false;
};

class ORX_FRAMEWORK_API CheckedInputStream final : public PrintInputStream, public ViolationLog {
public:
  explicit CheckedInputStream(PrintInputStream& checkedStream) noexcept : stream(checkedStream) {}

  // Notes a violation if a pass has left the stream open.
  void RequireClosed();

  int Open(const char* mode) override;
  int Read(void* buffer, int count, int* countRead) override;
  int ReadByte(char* byte) override;
  int SetPosition(unsigned position) override;
  int Seek(int offset, int origin) override;
  int UnreadByte(char byte) override;
  int GetPosition(unsigned* position) override;
  int IsReadable() override;
  int Close() override;
  int HasMoreData() override;
  int GetState() override;
  int ClearEndOfFile() override;

private:
  void RequireOpen(std::string_view call);
  void BeginRead(std::string_view call);

  PrintInputStream& stream;
  std::unordered_set<unsigned> positions;  // handed out since Open
  bool isOpen = false;
  bool isRewound = false;
  bool hasPushedBack = false;
};

class ORX_FRAMEWORK_API CheckedGenerator final : public PrintGenerator, public ViolationLog {
public:
  explicit CheckedGenerator(PrintGenerator& checkedGenerator) noexcept
      : generator(checkedGenerator) {}

  int NewPage() override;
  int MoveTo(float x, float y) override;
  int LineTo(float x, float y) override;
  int FillArea(int contourCount, int* pointCounts, float* points) override;
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override;
  int DefineColor(int index, float red, float green, float blue) override;
  int SetLineColor(int index) override;
  int SetFillColor(int index) override;
  int SetLineWidth(float width) override;
  int SetLineCap(int cap) override;
  int SetFillRule(int rule) override;

private:
  // How far a stroke or a fill has come. A stroke may draw any number of points and end after any
  // of them; a fill of an empty path ends with its colour.
  enum Phase : unsigned {
    kIdle = 1U << 0,
    kColorDefined = 1U << 1,
    kLineColorSet = 1U << 2,
    kLineCapSet = 1U << 3,
    kStroking = 1U << 4,
    kFillColorSet = 1U << 5,
    kFillRuleSet = 1U << 6,
  };
  static constexpr unsigned kBetween = kIdle | kStroking | kFillColorSet;

  void Step(std::string_view call, unsigned allowedPhases, Phase next);
  void RequireColorIndex(std::string_view call, int index);

  PrintGenerator& generator;
  Phase phase = kIdle;
};

}  // namespace orxframework
