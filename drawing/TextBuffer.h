// Text of a file that is handed on in blocks. Numbers are written fast and as the shortest text
// that reads back as the same value.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "drawing/Picture.h"

namespace orxdrawing {

// How a number may be written.
enum class NumberForm {
  Free,   // with an exponent where that is shorter
  Plain,  // digits and a point only
};

// Throws std::bad_alloc only when it is made.
class TextBuffer {
public:
  explicit TextBuffer(ByteSink byteSink) : sink(std::move(byteSink)) {}

  void Add(std::string_view text) {
    if (text.size() > kBytes - used) Flush();
    if (text.size() > kBytes) return sink(text);
    std::memcpy(bytes.get() + used, text.data(), text.size());
    used += text.size();
  }
  void Add(char character) {
    if (used == kBytes) Flush();
    bytes[used++] = character;
  }
  // REQUIRES: the number is finite and, in plain form, less than 1e40.
  template <typename Number>
  void AddNumber(Number number, NumberForm form = NumberForm::Free) {
    if (kBytes - used < kLongestNumber) Flush();
    char* const start = bytes.get() + used;
    char* const end = start + kLongestNumber;
    char* stop = form == NumberForm::Plain
                     ? std::to_chars(start, end, number, std::chars_format::fixed).ptr
                     : std::to_chars(start, end, number).ptr;
    // No zero is needed before the point.
    char* const zero = start + (*start == '-' ? 1 : 0);
    if (*zero == '0' && stop - zero > 1) {
      std::memmove(zero, zero + 1, static_cast<std::size_t>(stop - zero - 1));
      --stop;
    }
    used = static_cast<std::size_t>(stop - bytes.get());
  }
  void Flush() {
    if (used > 0) sink({bytes.get(), used});
    used = 0;
  }

private:
  static constexpr std::size_t kBytes = 1 << 16;
  // The least double in plain form has so many digits.
  static constexpr std::size_t kLongestNumber = 400;

  ByteSink sink;
  std::unique_ptr<char[]> bytes = std::make_unique<char[]>(kBytes);
  std::size_t used = 0;
};

}  // namespace orxdrawing
