// Texts for people and programs: numbers as the trace writes them, and words of documents made
// harmless before a terminal sees them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orxdrawing {

// Appends the shortest text that reads back as the same float; "inf", "-inf" and "nan" otherwise.
void AppendFloat(std::string& text, float value);

// A number for people: at most six digits, no trailing zeros.
[[nodiscard]] std::string ShortNumber(double value);
// "2,958".
[[nodiscard]] std::string WithCommas(std::size_t number);

// The text with every control character, every byte that is not UTF-8 and every character that
// changes the direction of writing replaced by an escape such as \x1b or \u202e. A backslash
// stays as it is.
[[nodiscard]] std::string EscapeForTerminal(std::string_view text);

// The text itself where it is UTF-8, else each byte taken for a character of Latin 1; control
// characters become spaces.
[[nodiscard]] std::string ToUtf8(std::string_view text);

// The first bytes of a text, at most so many, cut between characters.
[[nodiscard]] std::string_view Shortened(std::string_view text, std::size_t mostBytes);

// The text as a JSON string with its quotes; bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string QuoteForJson(std::string_view text);

}  // namespace orxdrawing
