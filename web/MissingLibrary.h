// What the C++ library of the WebAssembly compiler lacks of the C++20 that the project uses. It is
// included in front of every file of that build and of no other.
//
// The answers are those of a complete library, to the last bit and the last character. When the
// compiler's own library has all of it, this file goes; it says so itself.
#pragma once

#include <version>

#if !defined(_LIBCPP_VERSION) || _LIBCPP_VERSION >= 14000
#  error "Look whether this library still lacks what is defined here."
#endif

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

namespace std {

template <typename To, typename From>
constexpr To bit_cast(const From& value) noexcept {
  static_assert(sizeof(To) == sizeof(From));
  return __builtin_bit_cast(To, value);
}

template <typename Array>
unique_ptr<Array> make_unique_for_overwrite(size_t count) {
  return unique_ptr<Array>(new remove_extent_t<Array>[count]);
}

// Of the shortest texts that read back as the same number the one closest to it; with an exponent
// where that is shorter. In MissingLibrary.cpp, as are the next three.
to_chars_result to_chars(char* first, char* last, float value);
to_chars_result to_chars(char* first, char* last, double value);
// REQUIRES: the format is fixed.
to_chars_result to_chars(char* first, char* last, double value, chars_format format);
to_chars_result to_chars(char* first, char* last, float value, chars_format format);
// For the general format.
from_chars_result from_chars(const char* first, const char* last, double& value);

namespace ranges {

template <typename Range, typename Output>
constexpr auto copy(const Range& range, Output output) {
  struct Result {
    Output out;
  };
  return Result{std::copy(std::begin(range), std::end(range), output)};
}

template <typename Range, typename Predicate>
constexpr bool all_of(const Range& range, Predicate predicate) {
  return std::all_of(std::begin(range), std::end(range), predicate);
}

template <typename Range, typename Value>
constexpr auto count(const Range& range, const Value& value) {
  return std::count(std::begin(range), std::end(range), value);
}

template <typename Range, typename Predicate>
constexpr auto count_if(const Range& range, Predicate predicate) {
  return std::count_if(std::begin(range), std::end(range), predicate);
}

template <typename Range, typename Less>
void stable_sort(Range& range, Less less) {
  std::stable_sort(std::begin(range), std::end(range), less);
}

template <typename Range, typename Other, typename Predicate = std::equal_to<>>
constexpr bool equal(const Range& range, const Other& other, Predicate areEqual = {}) {
  return std::equal(std::begin(range), std::end(range), std::begin(other), std::end(other),
                    areEqual);
}

template <typename Range, typename Less = std::less<>, typename Field = std::identity>
constexpr bool is_sorted(const Range& range, Less less = {}, Field field = {}) {
  for (auto i = std::begin(range); i != std::end(range); ++i) {
    if (i == std::begin(range)) continue;
    if (less(std::invoke(field, *i), std::invoke(field, *(i - 1)))) return false;
  }
  return true;
}

template <typename Range, typename Predicate>
constexpr auto adjacent_find(const Range& range, Predicate areAlike) {
  return std::adjacent_find(std::begin(range), std::end(range), areAlike);
}

// For the few rows of tables that are put into order at compile time.
template <typename Range, typename Less = std::less<>, typename Field>
constexpr void sort(Range& range, Less less, Field field) {
  for (auto row = std::begin(range); row != std::end(range); ++row) {
    for (auto i = row; i != std::begin(range); --i) {
      if (!less(std::invoke(field, *i), std::invoke(field, *(i - 1)))) break;
      auto other = *i;
      *i = *(i - 1);
      *(i - 1) = other;
    }
  }
}

}  // namespace ranges
}  // namespace std
