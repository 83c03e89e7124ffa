// Operators on the document's own file: "currentfile", "filter" and "eexec". A file object has no
// reading position of its own; everything is read where the input stands.

#include <string_view>

#include "host/PrintInputStream.h"
#include "image/DecodeFilters.h"
#include "ps/InputBytes.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

// -> a new file object
ResultCode CurrentFile(ORXPrintEPSInterpreter& interpreter) {
  PSRef file = interpreter.heap.Make(PSObjectType::File);
  file->fileSource = interpreter.inputStream;
  return PushResult(interpreter, std::move(file));
}

namespace {

bool TopIs(const ORXPrintEPSInterpreter& interpreter, PSObjectType type) noexcept {
  const PSObject* top = interpreter.operandStack.Top();
  return top && top->Is(type);
}

}  // namespace

// file (parameters) name filter -> the same file, the filter attached behind those it has
ResultCode Filter(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  if (!TopIs(interpreter, PSObjectType::Name)) return ResultCode::Failed;
  DecodeFilter* filter = FilterForName(interpreter, TakeOperand(interpreter)->nameText);
  if (!filter) return ResultCode::Failed;
  if (TopIs(interpreter, PSObjectType::Dictionary)) {
    filter->SetParameters(TakeOperand(interpreter)->dictEntries);
  }
  if (!TopIs(interpreter, PSObjectType::File)) return ResultCode::Failed;
  PSObject& file = *interpreter.operandStack.Top();
  if (!file.fileSource || file.fileSource->GetState() != 0) return ResultCode::Ran;
  if (file.fileFilters.Count() >= kMaxFilters) return RaiseError(interpreter, "limitcheck");
  file.fileFilters.Append(filter);
  return ResultCode::Ran;
}

namespace {

// Looks for "cleartomark" in a text that is fed to it character by character. The word begins with
// its only "c", so a mismatch can start over at once.
class ClearToMarkSearch {
public:
  void Feed(char character) noexcept {
    if (found) return;
    if (character != kWord[matched]) matched = 0;
    if (character == kWord[matched]) ++matched;
    found = matched == kWord.size();
  }
  [[nodiscard]] bool Found() const noexcept { return found; }

private:
  static constexpr std::string_view kWord = "cleartomark";

  std::size_t matched = 0;
  bool found = false;
};

// Feeds one line, without its end, to the search. A carriage return, a newline and a zero at the
// beginning end a line. False when the input gave nothing.
bool SearchLine(ORXPrintEPSInterpreter& interpreter, ClearToMarkSearch& search) {
  char byte = 0;
  if (!ReadInputByte(interpreter, byte)) return false;
  if (byte == '\0') return true;
  while (byte != '\r' && byte != '\n') {
    search.Feed(byte);
    if (!ReadInputByte(interpreter, byte)) break;
  }
  return true;
}

// Reads to the end of the line in which "cleartomark" is complete, or to the end of the input.
void ReadThroughClearToMark(ORXPrintEPSInterpreter& interpreter) {
  ClearToMarkSearch search;
  while (!search.Found() && SearchLine(interpreter, search)) {
  }
}

}  // namespace

// eexec ->; skips the encrypted part of a font program. The file operand stays.
ResultCode EExec(ORXPrintEPSInterpreter& interpreter) {
  if (interpreter.inputStream) ReadThroughClearToMark(interpreter);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
