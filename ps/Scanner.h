// The scanner: turns the bytes of the document into tokens, and tokens into objects.
//
// A token is a run of regular bytes or a single delimiter. White space separates tokens, comments
// are skipped; what they say is told to whoever listens. Inside a string (the parenthesis depth is
// above 0) white space and bytes of no class belong to the token instead.
//
// The scanner owns the reader of the document, the token and the depth, and makes its objects on a
// machine's heap; it borrows the machine.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ps/InputReader.h"
#include "ps/Machine.h"

namespace orxeps {

// Listens to the comments of a document.
class CommentListener {
public:
  // The letters and signs of a comment behind its "%", without white space, digits, dots and
  // delimiters; valid during the call.
  virtual void CommentRead(std::string_view text) = 0;

protected:
  ~CommentListener() = default;
};

enum class TokenKind : std::uint8_t {
  Nothing,    // at the end of the data, at a line end, before a binary token and without input
  Delimiter,  // or, inside a string, any text
  Word,       // regular bytes that are no number
  Number,     // bytes of which every number consists; whether they make one is another matter
  Integer,    // a number whose value is known
  Real,       // the same
};

struct Token {
  TokenKind kind = TokenKind::Nothing;
  std::string_view text;  // valid until the next token is read
  std::int32_t intValue = 0;
  float realValue = 0.0F;
};

class Scanner {
public:
  // All borrowed; `document` may be null.
  Scanner(Machine& owner, PrintInputStream* document, CommentListener& comments) noexcept
      : input(document, owner.watch), machine(owner), listener(comments) {}

  InputReader input;
  // Open parentheses. Carries over from pass to pass: an unterminated string leaves it above 0, a
  // stray ")" below.
  std::int32_t stringDepth = 0;

  [[nodiscard]] Token ReadToken() {
    Token token;
    if (stringDepth != 0 || !ReadReadyToken(token)) token = ReadTokenFor(TokenUse::Plain);
    return token;
  }

  // The object that a token begins, nothing when there is none. For an empty token, a binary token.
  [[nodiscard]] PSRef ReadObject(const Token& token);

  // Whether a token is a number in hexadecimal.
  [[nodiscard]] static bool IsHexadecimal(std::string_view token) noexcept {
    return token.starts_with("16#") || token.starts_with("0x") || token.starts_with("0X");
  }
  // The object of a token that is no delimiter: a number, or an executable name.
  [[nodiscard]] PSRef MakeObject(std::string_view token);
  // The object of a token whose value is known. REQUIRES: its kind is Integer or Real.
  [[nodiscard]] PSRef MakeNumber(const Token& token) {
    const bool isReal = token.kind == TokenKind::Real;
    PSRef object = machine.heap.Make(isReal ? PSObjectType::Real : PSObjectType::Integer);
    object->intValue = token.intValue;
    object->realValue = token.realValue;
    return object;
  }
  // The object of a token that looks like a number: an Integer, a Real, or an object of no type.
  [[nodiscard]] PSRef ParseNumber(std::string_view token);
  // The rest of a string, after its "(".
  [[nodiscard]] PSRef ReadString();
  // The rest of a procedure, after its "{". However deep procedures are nested, this uses a bounded
  // amount of the machine stack.
  [[nodiscard]] PSRef ReadProcedure();
  // Whether the next byte is known to begin no binary token.
  [[nodiscard]] bool BinaryTokenIsRuledOut() const noexcept {
    const std::string_view ready = input.Ready();
    return !ready.empty() && static_cast<signed char>(ready.front()) >= 0;
  }
  // One binary token if the next byte begins one. Nothing when it does not (the byte then waits to
  // be read again), when the kind of token is not supported (only its first byte is taken) and when
  // a read fails.
  [[nodiscard]] PSRef ReadBinaryToken();

private:
  // What the bytes of one token are read for.
  enum class TokenUse {
    Plain,
    AfterBackslash,  // a parenthesis that comes first is text and leaves the depth alone
  };

  bool ReadReadyToken(Token& token) noexcept;
  Token ReadTokenFor(TokenUse use);
  bool AddByte(char byte, TokenUse use, Token& token);
  Token ReadRegularRun(char first);
  void AddDelimiter(char delimiter, TokenUse use);
  void ReadComment();
  [[nodiscard]] PSRef MakeName(std::string_view text, bool literal);
  [[nodiscard]] PSRef MakeInteger(std::int32_t value);
  [[nodiscard]] PSRef ReadAngle(std::string_view bracket, std::string_view whole);
  [[nodiscard]] PSRef ReadSupportedBinaryToken(unsigned char type);
  [[nodiscard]] int AddStringToken(std::string& string, bool& fits);

  Machine& machine;
  CommentListener& listener;
  std::string text;                   // of a token that is not in one piece in the input's block
  std::string commentText;            // of a comment
  bool stoppedAtBinaryToken = false;  // the last token ended before a byte that begins one
};

}  // namespace orxeps
