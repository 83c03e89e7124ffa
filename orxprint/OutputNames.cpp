#include "orxprint/OutputNames.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orxprint {

namespace {

constexpr std::array<std::pair<std::string_view, Format>, 4> kFormats = {{
    {"svg", Format::Svg},
    {"pdf", Format::Pdf},
    {"png", Format::Png},
    {"none", Format::None},
}};

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// The position of the dot that begins the ending; the name's length when it has none.
std::size_t EndingPosition(std::string_view fileName) {
  const std::size_t dot = fileName.rfind('.');
  const std::size_t slash = fileName.find_last_of("/\\");
  if (dot == std::string_view::npos) return fileName.size();
  if (slash != std::string_view::npos && dot <= slash + 1) return fileName.size();
  return dot == 0 ? fileName.size() : dot;
}

struct NumberPlace {
  std::size_t position = 0;
  std::size_t length = 0;  // 0: there is none
  std::size_t digits = 0;
};

// The first "%d", "%0Nd" or "%Nd", with N of one digit.
NumberPlace FindNumberPlace(std::string_view name) {
  for (std::size_t start = name.find('%'); start != std::string_view::npos;
       start = name.find('%', start + 1)) {
    std::size_t end = start + 1;
    std::size_t digits = 0;
    if (end < name.size() && name[end] == '0') ++end;
    if (end < name.size() && name[end] >= '1' && name[end] <= '9') {
      digits = static_cast<std::size_t>(name[end] - '0');
      ++end;
    }
    if (end < name.size() && name[end] == 'd') return {start, end + 1 - start, digits};
  }
  return {};
}

}  // namespace

std::optional<Format> ParseFormat(std::string_view text) {
  const std::string lower = LowerCase(text);
  for (const auto& [name, format] : kFormats) {
    if (lower == name) return format;
  }
  return std::nullopt;
}

std::optional<Format> FormatOfName(std::string_view fileName) {
  const std::size_t dot = EndingPosition(fileName);
  if (dot == fileName.size()) return std::nullopt;
  const std::optional<Format> format = ParseFormat(fileName.substr(dot + 1));
  return format == Format::None ? std::nullopt : format;
}

std::string_view EndingOf(Format format) {
  return format == Format::Pdf ? ".pdf" : format == Format::Png ? ".png" : ".svg";
}

bool HasNumberPlace(std::string_view fileName) { return FindNumberPlace(fileName).length != 0; }

std::string NumberedName(std::string_view fileName, std::uint32_t page) {
  std::string number = std::to_string(page);
  std::string name(fileName);
  const NumberPlace place = FindNumberPlace(fileName);
  if (place.length == 0) return name.insert(EndingPosition(fileName), "-" + number);
  number.insert(0, place.digits > number.size() ? place.digits - number.size() : 0, '0');
  return name.replace(place.position, place.length, number);
}

}  // namespace orxprint
