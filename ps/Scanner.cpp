#include "ps/Scanner.h"

#include <algorithm>
#include <vector>

#include "host/PrintGenerator.h"
#include "ps/BinaryTokens.h"
#include "ps/CharacterClass.h"
#include "ps/Errors.h"
#include "ps/InputBytes.h"
#include "ps/Numbers.h"

namespace orxeps {

namespace {

// What the bytes of one token are read for.
enum class TokenUse {
  Plain,
  AfterBackslash,  // a parenthesis that comes first is text and leaves the depth alone
};

void AddToText(ORXPrintEPSInterpreter& interpreter, std::string& text, std::string_view more) {
  if (text.size() + more.size() <= kMaxTextBytes) {
    text += more;
  } else {
    RaiseError(interpreter, "limitcheck");
  }
}
void AddToText(ORXPrintEPSInterpreter& interpreter, std::string& text, char byte) {
  if (text.size() < kMaxTextBytes) {
    text += byte;
  } else {
    RaiseError(interpreter, "limitcheck");
  }
}

// Goes to the end of the input, so that the pass ends.
void EndProgram(ORXPrintEPSInterpreter& interpreter) { interpreter.inputStream->Seek(0, 2); }

void BeginPage(ORXPrintEPSInterpreter& interpreter) {
  interpreter.pageState = PageState::Drawing;
  if (interpreter.AllPagesFlag() == 1 && interpreter.pageCounter > 0 && interpreter.generator) {
    interpreter.generator->NewPage();
  }
  ++interpreter.pageCounter;
}

// Reads a comment, its "%" read already, up to and with the line end, and acts on it.
void ReadComment(ORXPrintEPSInterpreter& interpreter) {
  std::string& comment = interpreter.scanner.text;
  comment.clear();
  char byte = 0;
  while (ReadInputByte(interpreter, byte) && byte != '\n') {
    if (ClassOf(byte).namesComment) AddToText(interpreter, comment, byte);
    if (!InputIsReadable(interpreter)) break;
  }
  if (comment == "EOF") {
    EndProgram(interpreter);
  } else if (comment.find("Page:") != std::string::npos) {
    BeginPage(interpreter);
  }
}

// Reads the rest of a run of regular bytes and steps back before the byte that ends it. At the end
// of the data that is a 0.
void ReadRegularRun(ORXPrintEPSInterpreter& interpreter, char byte) {
  std::string& token = interpreter.scanner.token;
  do {
    AddToText(interpreter, token, byte);
    byte = 0;
    ReadInputByte(interpreter, byte);
  } while (ClassOf(byte).kind == ByteKind::Regular);
  interpreter.inputStream->UnreadByte(byte);
}

// Adds a delimiter to the token and keeps count of the open parentheses.
void AddDelimiter(ScannerState& scanner, char delimiter, TokenUse use) {
  const bool isEscaped = use == TokenUse::AfterBackslash && scanner.token.empty();
  if (delimiter == '(' && !isEscaped) ++scanner.stringDepth;
  if (delimiter == ')' && !isEscaped) --scanner.stringDepth;
  scanner.token += delimiter;
}

// Whether a byte ended the token.
bool AddByte(ORXPrintEPSInterpreter& interpreter, char byte, TokenUse use) {
  ScannerState& scanner = interpreter.scanner;
  switch (ClassOf(byte).kind) {
    case ByteKind::Regular:
      ReadRegularRun(interpreter, byte);
      return true;
    case ByteKind::Delimiter:
      if (byte != '%' || scanner.stringDepth != 0) {
        AddDelimiter(scanner, byte, use);
        return true;
      }
      ReadComment(interpreter);
      scanner.token.clear();
      return false;
    default:
      if (scanner.stringDepth == 0 && ClassOf(byte).beginsBinary) {
        interpreter.inputStream->UnreadByte(byte);
        scanner.stoppedAtBinaryToken = true;
        return true;
      }
      if (scanner.stringDepth > 0) AddToText(interpreter, scanner.token, byte);
      return false;
  }
}

std::string_view ReadTokenFor(ORXPrintEPSInterpreter& interpreter, TokenUse use) {
  ScannerState& scanner = interpreter.scanner;
  scanner.token.clear();
  scanner.stoppedAtBinaryToken = false;
  if (!interpreter.inputStream) return {};
  char byte = 0;
  ReadInputByte(interpreter, byte);
  while (byte != '\n' && InputIsReadable(interpreter) && !AddByte(interpreter, byte, use)) {
    if (!ReadInputByte(interpreter, byte)) break;
  }
  return scanner.token;
}

// The first byte behind leading spaces; 0 when there is none.
char FirstSignificantByte(std::string_view token) noexcept {
  const std::size_t first = token.find_first_not_of(' ');
  return first == std::string_view::npos ? '\0' : token[first];
}

bool IsHexadecimal(std::string_view token) noexcept {
  return token.starts_with("16#") || token.starts_with("0x") || token.starts_with("0X");
}

PSRef MakeInteger(ORXPrintEPSInterpreter& interpreter, std::int32_t value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Integer);
  object->intValue = value;
  return object;
}

}  // namespace

std::string_view ReadToken(ORXPrintEPSInterpreter& interpreter) {
  return ReadTokenFor(interpreter, TokenUse::Plain);
}

PSRef MakeObject(ORXPrintEPSInterpreter& interpreter, std::string_view token) {
  if (IsHexadecimal(token)) {
    token.remove_prefix(token[0] == '1' ? 3 : 2);
    return MakeInteger(interpreter, static_cast<std::int32_t>(ParseHexadecimal(token)));
  }
  if (std::ranges::all_of(token, [](char c) { return ClassOf(c).isNumeric; })) {
    return ParseNumber(interpreter, token);
  }
  PSRef name = MakeLiteralName(interpreter, token);
  name->literal = 0;
  return name;
}

PSRef ParseNumber(ORXPrintEPSInterpreter& interpreter, std::string_view token) {
  bool isReal = false;
  bool mayBeReal = false;
  for (const char c : token) {
    isReal = isReal || c == '.' || c == 'E';
    mayBeReal = mayBeReal || c == 'e';
  }
  if (isReal || mayBeReal) {
    const double value = ParseReal(token);
    // With nothing but an "e" a token that is worth 0 is no real: "0e5" is nothing at all.
    if (isReal || value != 0.0) {
      PSRef real = interpreter.heap.Make(PSObjectType::Real);
      real->realValue = static_cast<float>(value);
      return real;
    }
  }
  const std::int32_t value = ParseInteger(token);
  if (value != 0 || token == "0") return MakeInteger(interpreter, value);
  return interpreter.heap.Make();
}

PSRef MakeLiteralName(ORXPrintEPSInterpreter& interpreter, std::string_view text) {
  PSRef name = interpreter.heap.Make(PSObjectType::Name);
  name->nameText = interpreter.names.Intern(text);
  return name;
}

PSRef ReadString(ORXPrintEPSInterpreter& interpreter) {
  ScannerState& scanner = interpreter.scanner;
  PSRef string = interpreter.heap.Make(PSObjectType::String);
  std::string text;
  std::uint64_t position = scanner.bytesRead - 1;
  for (int open = 1; open != 0 && InputIsReadable(interpreter);) {
    if (position == scanner.bytesRead) break;
    position = scanner.bytesRead;
    const std::string_view token = ReadToken(interpreter);
    if (scanner.stoppedAtBinaryToken) {
      // Where the depth is 0 such a byte has no place in the text; left alone it would stop the
      // scanner here for ever.
      char dropped = 0;
      ReadInputByte(interpreter, dropped);
      continue;
    }
    const char first = FirstSignificantByte(token);
    if (first == '(') {
      ++open;
    } else if (first == ')') {
      --open;
    } else if (first == '\\') {
      AddToText(interpreter, text, ReadTokenFor(interpreter, TokenUse::AfterBackslash));
    } else if (ClassOf(first).kind != ByteKind::Delimiter) {
      AddToText(interpreter, text, token);
    }
  }
  string->stringText = ORXString(text);
  interpreter.heap.UpdateCharge(*string);
  return string;
}

PSRef ReadProcedure(ORXPrintEPSInterpreter& interpreter) {
  std::vector<PSRef> open;  // the procedures that are being read, the outermost first
  open.push_back(interpreter.heap.Make(PSObjectType::Procedure));
  const auto closeInnermost = [&interpreter, &open] {
    interpreter.heap.UpdateCharge(*open.back());
    if (open.size() == 1) return;
    ObjectList& outer = open[open.size() - 2]->procElements;
    outer.Append(open.back().Get());
    static_cast<void>(open.back().Leak());
    open.pop_back();
  };
  std::uint64_t position = interpreter.scanner.bytesRead - 1;
  while (InputIsReadable(interpreter) && position != interpreter.scanner.bytesRead) {
    position = interpreter.scanner.bytesRead;
    const std::string_view token = ReadToken(interpreter);
    if (token.starts_with('{')) {
      open.push_back(interpreter.heap.Make(PSObjectType::Procedure));
    } else if (token == "}") {
      if (open.size() == 1) break;
      closeInnermost();
    } else if (PSRef element = ReadObject(interpreter, token)) {
      open.back()->procElements.Append(element.Get());
      static_cast<void>(element.Leak());
    }
  }
  while (open.size() > 1) closeInnermost();
  closeInnermost();
  return std::move(open.front());
}

PSRef ReadObject(ORXPrintEPSInterpreter& interpreter, std::string_view token) {
  if (token.empty()) return ReadBinaryToken(interpreter);
  switch (token.front()) {
    case '(':
      return ReadString(interpreter);
    case '/':
      return MakeLiteralName(interpreter, ReadToken(interpreter));
    case '<':
      // Strings in hexadecimal are not supported: what follows the "<" is lost.
      if (ReadToken(interpreter) == "<") return MakeObject(interpreter, "<<");
      return {};
    case '>':
      if (ReadToken(interpreter) == ">") return MakeObject(interpreter, ">>");
      return {};
    case '%':
    case ')':
    case '\\':
    case '}':
      return {};
    default:
      return MakeObject(interpreter, token);
  }
}

}  // namespace orxeps
