#include "orxprint/OptionValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace orxprint {

namespace {

// The whole text as a number from 0; none when it is anything else.
std::optional<std::uint32_t> NumberOf(std::string_view text, int base = 10) {
  std::uint32_t number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  const bool isWhole = error == std::errc() && stop == text.data() + text.size();
  return isWhole ? std::optional(number) : std::nullopt;
}

}  // namespace

[[noreturn]] void Refuse(const std::string& option, const std::string& text,
                         const std::string& expected) {
  throw CLI::ValidationError(option, "'" + text + "' is not " + expected);
}

std::function<std::string(const std::string&)> NumberFrom(std::uint32_t least, std::uint32_t most) {
  return [=](const std::string& text) -> std::string {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc() && stop == end && number >= least && number <= most) return {};
    return "'" + text + "' is not a number from " + std::to_string(least) + " to " +
           std::to_string(most);
  };
}

void RefuseEmptyValues(const CLI::App& command) {
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_expected_min() == 0) continue;  // may stand without a value
    for (const std::string& value : option->results()) {
      if (value.empty()) throw CLI::ValidationError(option->get_name(), "has an empty value");
    }
  }
}

void RequireOneStandardInput(const std::vector<std::string>& files) {
  if (std::count(files.begin(), files.end(), "-") <= 1) return;
  throw CLI::ValidationError("FILE", "standard input (-) can be read only once");
}

std::uint64_t ParseSize(const std::string& text) {
  constexpr std::string_view kUnits = "KMG";
  std::uint64_t size = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, size);
  const std::string_view unit(stop, static_cast<std::size_t>(end - stop));
  std::size_t shift = 0;
  if (unit.size() == 1) {
    const char upper = unit[0] >= 'a' ? static_cast<char>(unit[0] - 'a' + 'A') : unit[0];
    shift = kUnits.find(upper) == std::string_view::npos ? 64 : 10 * (kUnits.find(upper) + 1);
  }
  const bool isValid = error == std::errc() && size > 0 && unit.size() <= 1 && shift < 64 &&
                       size <= std::numeric_limits<std::uint64_t>::max() >> shift;
  if (!isValid) Refuse("--memory-limit", text, "a size such as 500M or 2G");
  return size << shift;
}

TimeLimit ParseTimeLimit(const std::string& text) {
  if (text == "none") return {std::nullopt, true};
  double seconds = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seconds);
  if (error != std::errc() || stop != end || !(seconds > 0) || !std::isfinite(seconds)) {
    Refuse("--time-limit", text, "a number of seconds above 0, or none");
  }
  return {seconds, true};
}

Area ParseArea(const std::string& text) {
  if (text == "box") return Area::Box;
  if (text == "hires") return Area::HighResolution;
  if (text == "page") return Area::Page;
  if (text != "drawing") Refuse("--area", text, "box, hires, page or drawing");
  return Area::Drawing;
}

std::optional<PageList> ParsePages(const std::string& text) {
  if (text.empty()) return std::nullopt;
  auto pages = ParsePageList(text);
  if (!pages) Refuse("--pages", text, "a list of pages such as 1,3-5,7-");
  return pages;
}

orxdrawing::TraceCallSet ParseCalls(const std::vector<std::string>& names) {
  const auto& calls = orxdrawing::kTraceCalls;
  orxdrawing::TraceCallSet set = 0;
  for (const std::string& name : names) {
    const auto* const found = std::find(calls.data(), calls.data() + calls.size(), name);
    if (found == calls.data() + calls.size()) {
      std::string expected;
      for (const std::string_view call : calls) {
        expected += (expected.empty() ? "a call: " : ", ") + std::string(call);
      }
      Refuse("--only", name, expected);
    }
    set |= 1U << (found - calls.data());
  }
  return names.empty() ? orxdrawing::kAllTraceCalls : set;
}

PixelBounds ParseFit(const std::string& text) {
  const std::size_t cross = std::min(text.find('x'), text.size());
  const auto width = NumberOf(std::string_view(text).substr(0, cross));
  const auto height = NumberOf(std::string_view(text).substr(std::min(cross + 1, text.size())));
  const auto isSide = [](std::optional<std::uint32_t> side) {
    return side && *side >= 1 && *side <= kMostPixels;
  };
  if (!isSide(width) || !isSide(height)) {
    Refuse("--fit", text, "a size in pixels such as 800x600");
  }
  return {static_cast<int>(*width), static_cast<int>(*height)};
}

Shard ParseShard(const std::string& text) {
  const std::size_t slash = std::min(text.find('/'), text.size());
  const auto number = NumberOf(std::string_view(text).substr(0, slash));
  const auto count = NumberOf(std::string_view(text).substr(std::min(slash + 1, text.size())));
  if (!number || !count || *number < 1 || *number > *count) {
    Refuse("--shard", text, "a share such as 3/8");
  }
  return {*number, *count};
}

std::optional<orxdrawing::Colour> ParseBackground(const std::string& text) {
  if (text == "none") return std::nullopt;
  if (text == "white") return orxdrawing::Colour{1, 1, 1};
  const auto number = text.size() == 7 && text[0] == '#'
                          ? NumberOf(std::string_view(text).substr(1), 16)
                          : std::nullopt;
  if (!number) Refuse("--background", text, "none, white or a colour such as #ffe0c0");
  const auto part = [&number](int shift) {
    return static_cast<float>(*number >> shift & 0xFFU) / 255.0F;
  };
  return orxdrawing::Colour{part(16), part(8), part(0)};
}

}  // namespace orxprint
