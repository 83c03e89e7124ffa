// Operators on the document's own file: "currentfile", "filter" and "eexec". A file object has no
// reading position of its own; everything is read where the input stands.

#include <algorithm>
#include <string_view>
#include <utility>

#include "image/ImageOperators.h"
#include "ps/InputReader.h"
#include "ps/Operands.h"

namespace orxeps::operators {

// -> a new file object
ResultCode CurrentFile(Machine& machine, FilterSet& filters) {
  PSRef file = machine.heap.Make(PSObjectType::File);
  file->OwnParts().fileSource = &filters.document;
  return PushResult(machine, std::move(file));
}

namespace {

bool TopIs(const Machine& machine, PSObjectType type) noexcept {
  const PSObject* top = machine.operandStack.Top();
  return top && top->Is(type);
}

}  // namespace

// file (parameters) name filter -> the same file, the filter attached behind those it has
ResultCode Filter(Machine& machine, FilterSet& filters) {
  if (!TopIs(machine, PSObjectType::Name)) return ResultCode::Failed;
  const PSRef name = TakeOperand(machine);
  DecodeFilter* filter = filters.ForName(name->nameText.View());
  if (!filter) {
    NoteDeparture(machine, ORXNoteKind::FilterUnknown, name->nameText.View());
    return ResultCode::Failed;
  }
  if (TopIs(machine, PSObjectType::Dictionary)) {
    filter->SetParameters(TakeOperand(machine)->Parts().dictEntries);
  }
  if (!TopIs(machine, PSObjectType::File)) return ResultCode::Failed;
  PSObject& file = *machine.operandStack.Top();
  InputReader* source = file.Parts().fileSource;
  if (!source || source->GetState() != 0) return ResultCode::Ran;
  // One too many stays attached, as the sign that nothing can be drawn from this file.
  if (file.Parts().fileFilters.Count() <= kMaxFilters) file.OwnParts().fileFilters.Append(filter);
  if (file.Parts().fileFilters.Count() > kMaxFilters) return RaiseError(machine, "limitcheck");
  return ResultCode::Ran;
}

namespace {

// Looks for "cleartomark" in a text that is fed to it piece by piece. The word begins with its only
// "c", so a mismatch can start over at once.
class ClearToMarkSearch {
public:
  void Feed(std::string_view text) noexcept {
    while (!found && !text.empty()) {
      if (matched == 0) text.remove_prefix(std::min(text.find(kWord.front()), text.size()));
      if (text.empty()) return;
      if (text.front() != kWord[matched]) matched = 0;
      if (text.front() == kWord[matched]) ++matched;
      found = matched == kWord.size();
      text.remove_prefix(1);
    }
  }
  [[nodiscard]] bool Found() const noexcept { return found; }

private:
  static constexpr std::string_view kWord = "cleartomark";

  std::size_t matched = 0;
  bool found = false;
};

// Feeds one line, without its end, to the search. A carriage return, a newline and a zero at the
// beginning end a line. False when the input gave nothing.
bool SearchLine(InputReader& input, ClearToMarkSearch& search) {
  char byte = 0;
  if (!input.ReadByte(byte)) return false;
  if (byte == '\0') return true;
  while (byte != '\r' && byte != '\n') {
    search.Feed({&byte, 1});
    const std::string_view ready = input.Ready();
    const std::string_view line = ready.substr(0, ready.find_first_of("\r\n"));
    search.Feed(line);
    input.Skip(line.size());
    if (!input.ReadByte(byte)) break;
  }
  return true;
}

// Reads to the end of the line in which "cleartomark" is complete, or to the end of the input.
void ReadThroughClearToMark(InputReader& input) {
  ClearToMarkSearch search;
  while (!search.Found() && SearchLine(input, search)) {
  }
}

}  // namespace

// eexec ->; skips the encrypted part of a font program. The file operand stays.
ResultCode EExec(FilterSet& filters) {
  const PlaceHold place(filters.document);
  ReadThroughClearToMark(filters.document);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
