// Numbers from and to text, by way of the C library, whose conversions are exact.
#include "web/MissingLibrary.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <string_view>

namespace std {

namespace {

template <typename Number>
Number Read(const char* text) {
  if constexpr (is_same_v<Number, float>) return strtof(text, nullptr);
  return static_cast<Number>(strtod(text, nullptr));
}

// The digits of a positive number as "d.ddde+xx", the fewest that read back as it.
template <typename Number>
string_view ShortestScientific(Number value, array<char, 64>& text) {
  for (int digits = 0; digits < numeric_limits<Number>::max_digits10; ++digits) {
    const int length = snprintf(text.data(), text.size(), "%.*e", digits, double{value});
    if (Read<Number>(text.data()) == value) return {text.data(), static_cast<size_t>(length)};
    // Below a power of two the numbers lie closer, so that the text next above may read back where
    // the closest does not.
    array<char, 64> above = text;
    char* digit = strchr(above.data(), 'e') - 1;
    while (digit >= above.data() && (*digit == '9' || *digit == '.')) {
      if (*digit == '9') *digit = '0';
      --digit;
    }
    if (digit < above.data()) continue;
    ++*digit;
    if (Read<Number>(above.data()) != value) continue;
    text = above;
    return {text.data(), static_cast<size_t>(length)};
  }
  return text.data();
}

struct Digits {
  array<char, 32> text{};
  int count = 0;
  int exponent = 0;  // of the first digit
};

template <typename Number>
Digits ShortestDigits(Number value) {
  array<char, 64> buffer;
  const string_view scientific = ShortestScientific(value, buffer);
  Digits digits;
  const size_t mark = scientific.find('e');
  for (const char c : scientific.substr(0, mark)) {
    if (c != '.') digits.text[static_cast<size_t>(digits.count++)] = c;
  }
  digits.exponent = atoi(scientific.data() + mark + 1);
  return digits;
}

class Writer {
public:
  Writer(char* first, char* last) : next(first), end(last) {}

  void Add(string_view text) {
    if (static_cast<size_t>(end - next) < text.size()) isFull = true;
    if (isFull) return;
    memcpy(next, text.data(), text.size());
    next += text.size();
  }
  void AddZeros(int count) {
    for (int i = 0; i < count; ++i) Add("0");
  }
  [[nodiscard]] to_chars_result Result() const {
    if (isFull) return {end, errc::value_too_large};
    return {next, errc()};
  }

private:
  char* next;
  char* end;
  bool isFull = false;
};

void AddScientific(Writer& writer, const Digits& digits) {
  const string_view text(digits.text.data(), static_cast<size_t>(digits.count));
  writer.Add(text.substr(0, 1));
  if (digits.count > 1) writer.Add(".");
  writer.Add(text.substr(1));
  char exponent[16];
  const int length = snprintf(exponent, sizeof exponent, "e%+03d", digits.exponent);
  writer.Add({exponent, static_cast<size_t>(length)});
}

int LengthOfScientific(const Digits& digits) {
  const int exponent = abs(digits.exponent) < 100 ? 4 : 5;
  return digits.count + (digits.count > 1 ? 1 : 0) + exponent;
}

int LengthOfFixed(const Digits& digits) {
  if (digits.exponent < 0) return digits.count + 1 - digits.exponent;
  return digits.count <= digits.exponent + 1 ? digits.exponent + 1 : digits.count + 1;
}

// A whole number of more digits than are needed is written exactly.
void AddFixed(Writer& writer, const Digits& digits, double value) {
  const string_view text(digits.text.data(), static_cast<size_t>(digits.count));
  const auto whole = static_cast<size_t>(max(digits.exponent + 1, 0));
  if (digits.exponent < 0) {
    writer.Add("0.");
    writer.AddZeros(-digits.exponent - 1);
    writer.Add(text);
  } else if (text.size() > whole) {
    writer.Add(text.substr(0, whole));
    writer.Add(".");
    writer.Add(text.substr(whole));
  } else {
    char exact[400];
    const int length = snprintf(exact, sizeof exact, "%.0f", value);
    writer.Add({exact, static_cast<size_t>(length)});
  }
}

template <typename Number>
to_chars_result Write(char* first, char* last, Number value, bool isFixed) {
  Writer writer(first, last);
  if (signbit(value)) writer.Add("-");
  const Number size = abs(value);
  if (isnan(value) || isinf(value) || size == 0) {
    writer.Add(isnan(value) ? "nan" : size == 0 ? "0" : "inf");
    return writer.Result();
  }
  const Digits digits = ShortestDigits(size);
  if (isFixed || LengthOfFixed(digits) <= LengthOfScientific(digits)) {
    AddFixed(writer, digits, double{size});
  } else {
    AddScientific(writer, digits);
  }
  return writer.Result();
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool StartsWithWord(string_view text, string_view word) {
  if (text.size() < word.size()) return false;
  return equal(word.begin(), word.end(), text.begin(),
               [](char a, char b) { return a == (b | 0x20); });
}

// The end of "inf", "infinity", "nan" or "nan(letters)"; 0 for none of them.
size_t EndOfWord(string_view text) {
  if (StartsWithWord(text, "infinity")) return 8;
  if (StartsWithWord(text, "inf")) return 3;
  if (!StartsWithWord(text, "nan")) return 0;
  if (text.size() == 3 || text[3] != '(') return 3;
  size_t i = 4;
  while (i < text.size() && (IsDigit(text[i]) || IsLetter(text[i]) || text[i] == '_')) ++i;
  return i < text.size() && text[i] == ')' ? i + 1 : 3;
}

struct Pattern {
  size_t end = 0;  // 0: no number
  bool isZero = true;
  bool isWord = false;
};

Pattern FindNumber(string_view text) {
  const size_t start = text.starts_with('-') ? 1 : 0;
  Pattern pattern;
  pattern.end = EndOfWord(text.substr(start));
  if (pattern.end > 0) return {pattern.end + start, false, true};
  size_t i = start;
  size_t digits = 0;
  for (bool hasPoint = false; i < text.size(); ++i) {
    if (text[i] == '.' && !hasPoint) {
      hasPoint = true;
      continue;
    }
    if (!IsDigit(text[i])) break;
    ++digits;
    if (text[i] != '0') pattern.isZero = false;
  }
  if (digits == 0) return {};
  pattern.end = i;
  if (i == text.size() || (text[i] | 0x20) != 'e') return pattern;
  ++i;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  for (; i < text.size() && IsDigit(text[i]); ++i) pattern.end = i + 1;
  return pattern;
}

struct Free {
  void operator()(char* text) const noexcept { free(text); }
};

}  // namespace

to_chars_result to_chars(char* first, char* last, float value) {
  return Write(first, last, value, false);
}

to_chars_result to_chars(char* first, char* last, double value) {
  return Write(first, last, value, false);
}

to_chars_result to_chars(char* first, char* last, float value, chars_format) {
  return Write(first, last, value, true);
}

to_chars_result to_chars(char* first, char* last, double value, chars_format) {
  return Write(first, last, value, true);
}

from_chars_result from_chars(const char* first, const char* last, double& value) {
  const Pattern pattern = FindNumber({first, static_cast<size_t>(last - first)});
  if (pattern.end == 0) return {first, errc::invalid_argument};
  char local[128];
  unique_ptr<char, Free> large;
  char* text = local;
  if (pattern.end >= sizeof local) {
    large.reset(static_cast<char*>(malloc(pattern.end + 1)));
    if (!large) return {first, errc::not_enough_memory};
    text = large.get();
  }
  memcpy(text, first, pattern.end);
  text[pattern.end] = '\0';
  const double result = strtod(text, nullptr);
  const char* const end = first + pattern.end;
  const bool fits = pattern.isWord || (!isinf(result) && (result != 0 || pattern.isZero));
  if (!fits) return {end, errc::result_out_of_range};
  value = result;
  return {end, errc()};
}

}  // namespace std
