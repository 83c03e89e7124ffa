#include "orxprint/ExportedNames.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string_view>

namespace orxprint {

namespace {

// The few fields of the ELF format that are needed, at their places in its records.
constexpr std::size_t kHeaderSize = 64;
constexpr std::size_t kSectionTableOffset = 40;
constexpr std::size_t kSectionSize = 64;
constexpr std::size_t kSectionCount = 60;
constexpr std::size_t kSymbolSize = 24;
constexpr std::uint32_t kDynamicSymbols = 11;
constexpr unsigned kLocal = 0;
constexpr unsigned kDefaultVisibility = 0;
constexpr unsigned kProtected = 3;

class ElfFile {
public:
  explicit ElfFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(stream), {});
  }

  [[nodiscard]] bool IsReadable() const {
    constexpr std::string_view kMagic =
        "\x7f"
        "ELF\x02";
    return bytes.size() >= kHeaderSize && bytes.starts_with(kMagic) &&
           At<std::uint16_t>(kSectionSizeField) == kSectionSize;
  }

  // A number of the file; 0 beyond its end.
  template <typename Number>
  [[nodiscard]] Number At(std::uint64_t place) const {
    Number number = 0;
    if (place <= bytes.size() && bytes.size() - place >= sizeof number) {
      std::memcpy(&number, bytes.data() + place, sizeof number);
    }
    return number;
  }
  // A text, cut where no name is that long: tables that overlap must not multiply the file.
  [[nodiscard]] std::string TextAt(std::uint64_t place) const {
    constexpr std::size_t kLongest = 1000;
    if (place >= bytes.size()) return {};
    const std::string_view rest = std::string_view(bytes).substr(place, kLongest);
    return std::string(rest.substr(0, rest.find('\0')));
  }
  // Where the header of a section stands, given its number.
  [[nodiscard]] std::uint64_t Section(std::uint32_t number) const {
    return At<std::uint64_t>(kSectionTableOffset) + std::uint64_t{number} * kSectionSize;
  }
  [[nodiscard]] std::uint64_t Size() const { return bytes.size(); }

private:
  static constexpr std::size_t kSectionSizeField = 58;
  std::string bytes;
};

bool IsOffered(const ElfFile& file, std::uint64_t symbol) {
  const unsigned binding = file.At<std::uint8_t>(symbol + 4) >> 4U;
  const unsigned visibility = file.At<std::uint8_t>(symbol + 5) & 3U;
  const bool isDefined = file.At<std::uint16_t>(symbol + 6) != 0;
  return isDefined && binding != kLocal &&
         (visibility == kDefaultVisibility || visibility == kProtected);
}

}  // namespace

std::optional<std::vector<std::string>> ExportedNames(const std::filesystem::path& path) {
  const ElfFile file(path);
  if (!file.IsReadable()) return std::nullopt;
  for (std::uint32_t i = 0; i < file.At<std::uint16_t>(kSectionCount); ++i) {
    const std::uint64_t table = file.Section(i);
    if (file.At<std::uint32_t>(table + 4) != kDynamicSymbols) continue;
    const auto symbols = file.At<std::uint64_t>(table + 24);
    const auto size = std::min(file.At<std::uint64_t>(table + 32), file.Size());
    const auto names =
        file.At<std::uint64_t>(file.Section(file.At<std::uint32_t>(table + 40)) + 24);
    std::vector<std::string> exported;
    for (std::uint64_t offset = 0; offset + kSymbolSize <= size; offset += kSymbolSize) {
      const std::uint64_t symbol = symbols + offset;
      if (!IsOffered(file, symbol)) continue;
      exported.push_back(file.TextAt(names + file.At<std::uint32_t>(symbol)));
    }
    std::sort(exported.begin(), exported.end());
    return exported;
  }
  return std::nullopt;
}

}  // namespace orxprint
