#include "bench/Encodings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "tests/framework/G4Encoder.h"

namespace orxbench {

namespace {

// Breaks what is appended into lines.
class Lines {
public:
  explicit Lines(std::size_t bytes) { text.reserve(bytes + bytes / 32 + 16); }

  void Append(std::string_view piece) {
    if (column == 0 && piece.front() == '%') text += ' ';
    text += piece;
    column += piece.size();
    if (column >= 72) EndLine();
  }
  void EndLine() {
    text += '\n';
    column = 0;
  }

  std::string text;

private:
  std::size_t column = 0;
};

}  // namespace

std::string EncodeBase85(std::string_view bytes) {
  Lines lines(bytes.size() * 5 / 4);
  for (std::size_t i = 0; i < bytes.size(); i += 4) {
    const std::size_t length = std::min<std::size_t>(4, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const auto byte = k < length ? static_cast<unsigned char>(bytes[i + k]) : 0U;
      group = group << 8 | byte;
    }
    if (length == 4 && group == 0) {
      lines.Append("z");
      continue;
    }
    std::array<char, 5> digits;
    for (std::size_t k = 5; k-- > 0; group /= 85) digits[k] = static_cast<char>('!' + group % 85);
    lines.Append({digits.data(), length + 1});
  }
  return std::move(lines.text) + "~>\n";
}

std::string EncodeRunLength(std::string_view bytes) {
  constexpr std::size_t kLongestRun = 128;
  std::string encoded;
  std::size_t literals = 0;  // where those begin that are not written yet
  const auto writeLiterals = [&](std::size_t end) {
    while (literals < end) {
      const std::size_t length = std::min(kLongestRun, end - literals);
      encoded += static_cast<char>(length - 1);
      encoded += bytes.substr(literals, length);
      literals += length;
    }
  };
  for (std::size_t i = 0; i < bytes.size();) {
    std::size_t end = i + 1;
    while (end < bytes.size() && end - i < kLongestRun && bytes[end] == bytes[i]) ++end;
    if (end - i >= 3) {
      writeLiterals(i);
      encoded += static_cast<char>(257 - (end - i));
      encoded += bytes[i];
      literals = end;
    }
    i = end;
  }
  writeLiterals(bytes.size());
  encoded += '\x80';
  return encoded;
}

std::string EncodeFax(const std::vector<std::vector<bool>>& page) {
  orxframework::ccitt::G4Encoder encoder([] { return false; });
  const std::vector<unsigned char> packed = orxframework::ccitt::PackBits(
      encoder.Encode(page) + std::string(orxframework::ccitt::kEndOfBlockText));
  return {packed.begin(), packed.end()};
}

std::string EncryptForEexec(std::string_view plain) {
  std::uint16_t key = 55665;
  std::string encrypted;
  encrypted.reserve(plain.size());
  for (const char byte : plain) {
    const auto cipher = static_cast<std::uint8_t>(static_cast<std::uint8_t>(byte) ^ key >> 8);
    key = static_cast<std::uint16_t>((cipher + std::uint32_t{key}) * 52845 + 22719);
    encrypted += static_cast<char>(cipher);
  }
  return encrypted;
}

std::string EncodeHexadecimal(std::string_view bytes) {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  Lines lines(bytes.size() * 2);
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    const std::array<char, 2> digits = {kDigits[value / 16], kDigits[value % 16]};
    lines.Append({digits.data(), digits.size()});
  }
  lines.EndLine();
  return std::move(lines.text);
}

}  // namespace orxbench
