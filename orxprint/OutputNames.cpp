#include "orxprint/OutputNames.h"

#include <utility>

namespace orxprint {

namespace {

struct NumberPlace {
  std::size_t length = 0;  // 0: there is none
  std::size_t digits = 0;
};

// What a text begins with: "%d", "%0Nd" or "%Nd", with N of one digit.
NumberPlace NumberPlaceAt(std::string_view text) {
  std::size_t end = 1;
  std::size_t digits = 0;
  if (end < text.size() && text[end] == '0') ++end;
  if (end < text.size() && text[end] >= '1' && text[end] <= '9') {
    digits = static_cast<std::size_t>(text[end] - '0');
    ++end;
  }
  if (end < text.size() && text[end] == 'd') return {end + 1, digits};
  return {};
}

std::string Padded(std::uint32_t number, std::size_t digits) {
  std::string text = std::to_string(number);
  return text.insert(0, digits > text.size() ? digits - text.size() : 0, '0');
}

}  // namespace

std::size_t EndingPosition(std::string_view fileName) {
  const std::size_t dot = fileName.rfind('.');
  const std::size_t slash = fileName.find_last_of("/\\");
  if (dot == std::string_view::npos) return fileName.size();
  if (slash != std::string_view::npos && dot <= slash + 1) return fileName.size();
  return dot == 0 ? fileName.size() : dot;
}

std::string WithoutPageNumber(std::string name) {
  const std::size_t end = EndingPosition(name);
  std::size_t begin = end;
  while (begin > 0 && name[begin - 1] >= '0' && name[begin - 1] <= '9') --begin;
  const bool isNumbered = begin < end && begin > 0 && name[begin - 1] == '-';
  return isNumbered ? name.erase(begin - 1, end - begin + 1) : name;
}

OutputName OutputName::Plain(std::string name) {
  OutputName output;
  output.front = std::move(name);
  return output;
}

OutputName OutputName::Typed(std::string_view pattern) {
  OutputName output;
  const std::size_t nameStart = pattern.find_last_of('/') + 1;  // 0 without a slash
  output.front = pattern.substr(0, nameStart);
  for (std::size_t i = nameStart; i < pattern.size(); ++i) {
    std::string& text = output.hasPlace ? output.back : output.front;
    const std::string_view rest = pattern.substr(i);
    const NumberPlace place = rest[0] == '%' ? NumberPlaceAt(rest) : NumberPlace{};
    if (place.length > 0 && !output.hasPlace) {
      output.hasPlace = true;
      output.digits = place.digits;
      i += place.length - 1;
    } else {
      text += rest[0];
      if (rest.starts_with("%%")) ++i;
    }
  }
  return output;
}

std::string OutputName::ForPage(std::uint32_t page, std::uint32_t greatest) const {
  if (hasPlace) return front + Padded(page, digits) + back;
  std::string name = Whole();
  return name.insert(EndingPosition(name), "-" + Padded(page, std::to_string(greatest).size()));
}

}  // namespace orxprint
