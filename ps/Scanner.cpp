#include "ps/Scanner.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "ps/CharacterClass.h"
#include "ps/Errors.h"
#include "ps/Numbers.h"

namespace orxeps {

namespace {

// Adds to a text unless that would exceed the ceiling. Whether it did.
bool AddToText(std::string& text, std::string_view more) {
  if (text.size() + more.size() > kMaxTextBytes) return false;
  text += more;
  return true;
}

// The first byte behind leading spaces; 0 when there is none.
char FirstSignificantByte(std::string_view token) noexcept {
  const std::size_t first = token.find_first_not_of(' ');
  return first == std::string_view::npos ? '\0' : token[first];
}

bool IsNumeric(std::string_view token) noexcept {
  return std::ranges::all_of(token, [](char c) { return Is(c, kNumeric); });
}

Token ClassifiedToken(std::string_view text) noexcept {
  if (text.empty()) return {};
  if (Is(text.front(), kDelimiter)) return {TokenKind::Delimiter, text};
  return {IsNumeric(text) ? TokenKind::Number : TokenKind::Word, text};
}

}  // namespace

// Reads a token that lies ready as a whole, and the byte behind it too, as nearly all do outside of
// strings. False, and nothing read, for any other.
bool Scanner::ReadReadyToken(Token& token) noexcept {
  const std::string_view ready = input.Ready();
  const char* begin = ready.data();
  const char* const end = begin + ready.size();
  while (begin != end && Is(*begin, kBlank)) ++begin;
  if (end - begin < 2) return false;
  const char* next = begin + 1;
  const std::uint8_t traits = TraitsOf(*begin);
  if (traits & kRegular) {
    if (traits & kNumeric) {
      const ShortNumber number = ScanShortNumber(begin, end);
      next = begin + number.length;
      if (number.length > 0 && next != end && !Is(*next, kRegular)) {
        token = {number.isReal ? TokenKind::Real : TokenKind::Integer,
                 {begin, number.length},
                 number.intValue,
                 number.realValue};
        input.Skip(static_cast<std::size_t>(next - ready.data()));
        stoppedAtBinaryToken = false;
        return true;
      }
      next = begin + 1;
    }
    std::uint8_t common = traits;
    for (; next != end && Is(*next, kRegular); ++next) {
      common = static_cast<std::uint8_t>(common & TraitsOf(*next));
    }
    if (next == end) return false;
    token.kind = (common & kNumeric) ? TokenKind::Number : TokenKind::Word;
  } else if (traits & kDelimiter) {
    if (*begin == '(' || *begin == ')' || *begin == '%') return false;
    token.kind = TokenKind::Delimiter;
  } else if (*begin != '\n') {
    return false;
  }
  if (token.kind != TokenKind::Nothing) {
    token.text = {begin, static_cast<std::size_t>(next - begin)};
  }
  input.Skip(static_cast<std::size_t>(next - ready.data()));
  stoppedAtBinaryToken = false;
  return true;
}

Token Scanner::ReadTokenFor(TokenUse use) {
  text.clear();
  stoppedAtBinaryToken = false;
  Token token;
  char byte = 0;
  static_cast<void>(input.ReadByte(byte));
  while (byte != '\n' && input.IsReadable()) {
    if (AddByte(byte, use, token)) return token;
    if (!input.ReadByte(byte)) break;
  }
  return ClassifiedToken(text);
}

// Whether a byte ended the token.
bool Scanner::AddByte(char byte, TokenUse use, Token& token) {
  if (Is(byte, kRegular)) {
    token = ReadRegularRun(byte);
    return true;
  }
  if (Is(byte, kDelimiter)) {
    if (byte == '%' && stringDepth == 0) {
      ReadComment();
      text.clear();
      return false;
    }
    AddDelimiter(byte, use);
    token = ClassifiedToken(text);
    return true;
  }
  if (stringDepth == 0 && Is(byte, kBeginsBinary)) {
    input.UnreadByte(byte);
    stoppedAtBinaryToken = true;
    token = ClassifiedToken(text);
    return true;
  }
  if (stringDepth > 0 && !AddToText(text, {&byte, 1})) RaiseError(machine, "limitcheck");
  return false;
}

// Reads the rest of a run of regular bytes and steps back before the byte that ends it. At the end
// of the data that is a 0.
Token Scanner::ReadRegularRun(char first) {
  const std::string_view ready = input.ReadyWithLast();
  if (!ready.empty()) {
    std::uint8_t common = TraitsOf(first);
    std::size_t length = 1;
    for (; length < ready.size() && Is(ready[length], kRegular); ++length) {
      common = static_cast<std::uint8_t>(common & TraitsOf(ready[length]));
    }
    input.Skip(length - 1);
    const std::string_view run = ready.substr(0, length);
    if (length < ready.size() && text.empty()) {
      return {(common & kNumeric) ? TokenKind::Number : TokenKind::Word, run};
    }
    if (!AddToText(text, run)) RaiseError(machine, "limitcheck");
  } else if (!AddToText(text, {&first, 1})) {
    RaiseError(machine, "limitcheck");
  }
  char byte = 0;
  while (input.ReadByte(byte) && Is(byte, kRegular)) {
    if (!AddToText(text, {&byte, 1})) RaiseError(machine, "limitcheck");
    byte = 0;
  }
  input.UnreadByte(byte);
  input.NoteTokenStart(input.Position() - std::min<std::uint64_t>(text.size(), input.Position()));
  return ClassifiedToken(text);
}

// Adds a delimiter to the token and keeps count of the open parentheses.
void Scanner::AddDelimiter(char delimiter, TokenUse use) {
  const bool isEscaped = use == TokenUse::AfterBackslash && text.empty();
  if (delimiter == '(' && !isEscaped) ++stringDepth;
  if (delimiter == ')' && !isEscaped) --stringDepth;
  text += delimiter;
}

// Reads a comment, its "%" read already, up to and with the line end.
void Scanner::ReadComment() {
  const PlaceHold place(input, input.Position() - 1);
  commentText.clear();
  char byte = 0;
  while (input.ReadByte(byte) && byte != '\n') {
    // What lies ready of the line is taken at once.
    const std::string_view ready = input.ReadyWithLast();
    std::string_view part = ready.empty() ? std::string_view(&byte, 1) : ready;
    part = part.substr(0, part.find('\n'));
    input.Skip(part.size() - 1);
    const std::size_t kept = commentText.size();
    if (kept + part.size() > kMaxTextBytes) {
      RaiseError(machine, "limitcheck");
    } else {
      commentText.resize(kept + part.size());
      char* end = commentText.data() + kept;
      for (const char c : part) {
        *end = c;
        end += Is(c, kNamesComment) ? 1 : 0;
      }
      commentText.resize(static_cast<std::size_t>(end - commentText.data()));
    }
    if (!input.IsReadable()) break;
  }
  listener.CommentRead(commentText);
}

PSRef Scanner::MakeInteger(std::int32_t value) {
  PSRef object = machine.heap.Make(PSObjectType::Integer);
  object->intValue = value;
  return object;
}

PSRef Scanner::MakeName(std::string_view nameText, bool literal) {
  PSRef name = machine.heap.Make(PSObjectType::Name);
  name->nameText = machine.names.Intern(nameText);
  name->literal = literal ? 1 : 0;
  return name;
}

PSRef Scanner::MakeObject(std::string_view token) {
  if (IsHexadecimal(token)) {
    token.remove_prefix(token[0] == '1' ? 3 : 2);
    return MakeInteger(static_cast<std::int32_t>(ParseHexadecimal(token)));
  }
  if (IsNumeric(token)) return ParseNumber(token);
  return MakeName(token, false);
}

PSRef Scanner::ParseNumber(std::string_view token) {
  const bool isReal = token.find_first_of(".E") != std::string_view::npos;
  if (isReal || token.find('e') != std::string_view::npos) {
    const double value = ParseReal(token);
    // With nothing but an "e" a token that is worth 0 is no real: "0e5" is nothing at all.
    if (isReal || value != 0.0) {
      PSRef real = machine.heap.Make(PSObjectType::Real);
      real->realValue = static_cast<float>(value);
      return real;
    }
  }
  const std::int32_t value = ParseInteger(token);
  if (value != 0 || token == "0") return MakeInteger(value);
  return machine.heap.Make();
}

// What one token adds to a string: whether it opens or closes parentheses, 1 or -1.
int Scanner::AddStringToken(std::string& string, bool& fits) {
  const auto add = [&string, &fits](std::string_view more) {
    fits = fits && AddToText(string, more);
  };
  const Token token = ReadToken();
  if (stoppedAtBinaryToken) {
    // Where the depth is 0 such a byte has no place in the text; left alone it would stop the
    // scanner here for ever.
    char dropped = 0;
    static_cast<void>(input.ReadByte(dropped));
    return 0;
  }
  const char first = FirstSignificantByte(token.text);
  if (first == '(') return 1;
  if (first == ')') return -1;
  if (first == '\\') {
    add(ReadTokenFor(TokenUse::AfterBackslash).text);
  } else if (!Is(first, kDelimiter)) {
    add(token.text);
  } else {
    machine.watch.Note({ORXNoteKind::CharactersLost, "(", token.text, 0});
  }
  return 0;
}

// A string that has no room is read to its end and lost.
PSRef Scanner::ReadString() {
  const PlaceHold place(input, input.Position() - 1);
  std::string string;
  bool fits = true;
  ProgressGuard progress(input);
  for (int open = 1; open != 0 && input.IsReadable() && progress.Moved();) {
    try {
      open += AddStringToken(string, fits);
    } catch (const std::bad_alloc&) {
      fits = false;
    }
  }
  if (!fits) {
    RaiseError(machine, "limitcheck");
    return {};
  }
  PSRef object = machine.heap.Make(PSObjectType::String);
  if (string.empty()) return object;
  object->OwnParts().stringText = ORXString(string);
  machine.heap.UpdateCharge(*object);
  return object;
}

namespace {

// The procedures that are being read, the outermost first. However the reading ends, what they cost
// of the budget is given back.
class OpenProcedures {
public:
  explicit OpenProcedures(ObjectHeap& objectHeap) : heap(objectHeap), share(heap.Budget()) {}

  // `start` is the place of the "{".
  void Begin(std::uint64_t start) {
    if (!share.Resize((open.size() + 1) * kOpenProcedureCost)) throw LimitReached{"VMerror"};
    open.push_back({heap.Make(PSObjectType::Procedure), start});
  }
  // Adds to the innermost. The budget follows the list as it grows, not only when it is complete.
  void Append(PSRef element) {
    PSObject& procedure = *open.back().procedure;
    procedure.OwnParts().definedAt = open.back().start;
    ObjectList& elements = procedure.OwnParts().procElements;
    const std::size_t capacity = elements.Capacity();
    elements.Append(std::move(element));
    if (elements.Capacity() != capacity) heap.UpdateCharge(procedure);
  }
  // Moves the innermost into the one around it. REQUIRES: there is one around it.
  void CloseInnermost() {
    PSRef closed = std::move(open.back().procedure);
    open.pop_back();
    Append(std::move(closed));
  }
  // Closes all. REQUIRES: there is one.
  [[nodiscard]] PSRef Finish() {
    while (open.size() > 1) CloseInnermost();
    return std::move(open.front().procedure);
  }
  void Drop() noexcept { open.clear(); }

private:
  struct OpenProcedure {
    PSRef procedure;
    std::uint64_t start;
  };

  ObjectHeap& heap;
  MemoryShare share;
  std::vector<OpenProcedure> open;
};

}  // namespace

// When a ceiling is met or memory runs out on the way, the rest is read to its end and all of it
// lost: run as part of the program it would do harm.
PSRef Scanner::ReadProcedure() {
  OpenProcedures procedures(machine.heap);
  const char* error = nullptr;
  const auto attempt = [&procedures, &error](auto work) {
    try {
      work();
    } catch (const LimitReached& limit) {
      error = limit.error;
    } catch (const std::bad_alloc&) {
      error = "VMerror";
    }
    if (error) procedures.Drop();
  };
  const std::uint64_t start = input.Position() - 1;
  const PlaceHold place(input, start);
  attempt([&] { procedures.Begin(start); });
  std::size_t openBraces = 1;
  ProgressGuard progress(input);
  while (openBraces > 0 && input.IsReadable() && progress.Moved()) {
    attempt([&] {
      const Token token = ReadToken();
      if (token.text.starts_with('{')) {
        ++openBraces;
        if (!error) procedures.Begin(input.Position() - 1);
      } else if (token.text == "}") {
        if (--openBraces > 0 && !error) procedures.CloseInnermost();
      } else if (PSRef element = ReadObject(token); element && !error) {
        procedures.Append(std::move(element));
      }
    });
  }
  if (error) throw LimitReached{error};
  return procedures.Finish();
}

// "<<" and ">>" come as two tokens. Strings in hexadecimal are not supported: what follows the "<"
// is lost.
PSRef Scanner::ReadAngle(std::string_view bracket, std::string_view whole) {
  const Token token = ReadToken();
  if (token.text == bracket) return MakeObject(whole);
  machine.watch.Note({ORXNoteKind::TextAfterAngle, bracket, token.text, 0});
  return {};
}

PSRef Scanner::ReadObject(const Token& token) {
  switch (token.kind) {
    case TokenKind::Nothing:
      return ReadBinaryToken();
    case TokenKind::Number:
      return ParseNumber(token.text);
    case TokenKind::Word:
      return MakeObject(token.text);
    case TokenKind::Integer:
    case TokenKind::Real:
      return MakeNumber(token);
    case TokenKind::Delimiter:
      break;
  }
  switch (token.text.front()) {
    case '(':
      return ReadString();
    case '/':
      return MakeName(ReadToken().text, true);
    case '<':
      return ReadAngle("<", "<<");
    case '>':
      return ReadAngle(">", ">>");
    case '%':
    case ')':
    case '\\':
    case '}':
      return {};
    default:
      return MakeObject(token.text);
  }
}

}  // namespace orxeps
