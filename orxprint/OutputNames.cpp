#include "orxprint/OutputNames.h"

namespace orxprint {

namespace {

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

std::size_t EndingPosition(std::string_view fileName) {
  const std::size_t dot = fileName.rfind('.');
  const std::size_t slash = fileName.find_last_of("/\\");
  if (dot == std::string_view::npos) return fileName.size();
  if (slash != std::string_view::npos && dot <= slash + 1) return fileName.size();
  return dot == 0 ? fileName.size() : dot;
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
