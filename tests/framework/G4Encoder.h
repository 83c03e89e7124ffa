// Group 4 encoding for tests, written straight from ITU-T T.6, clause 2.2: pixel by pixel, with no
// thought of speed, and nothing shared with the decoder but the published lists of run codes.
//
// An encoder may code in horizontal mode what vertical mode could say; the decoder must not care.
// `chooseHorizontal` is asked each time there is the choice.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/CcittCodes.h"

namespace orxframework::ccitt {

inline constexpr std::string_view kEndOfBlockText = "000000000001000000000001";

// A page of pixels, true for black.
using Page = std::vector<std::vector<bool>>;

// Digits "0" and "1" as bytes, padded with zeros. Other characters count for nothing.
inline std::vector<unsigned char> PackBits(std::string_view digits) {
  std::vector<unsigned char> bytes;
  unsigned used = 0;
  for (const char digit : digits) {
    if (digit != '0' && digit != '1') continue;
    if (used % 8 == 0) bytes.push_back(0);
    if (digit == '1') bytes.back() |= static_cast<unsigned char>(0x80U >> used % 8);
    ++used;
  }
  return bytes;
}

class G4Encoder {
public:
  explicit G4Encoder(std::function<bool()> chooseHorizontal)
      : wantsHorizontal(std::move(chooseHorizontal)) {}

  // The digits of all lines, without the end-of-block code.
  std::string Encode(const Page& page) {
    digits.clear();
    std::vector<bool> above(page.empty() ? 0 : page[0].size(), false);
    for (const std::vector<bool>& line : page) {
      EncodeLine(above, line);
      above = line;
    }
    return digits;
  }

  // Make-up codes, longest first, and the terminating code.
  static std::string RunDigits(bool black, int run) {
    std::string text;
    while (true) {
      const auto [codeRun, code] = LongestCode(black, run);
      text += code;
      run -= codeRun;
      if (codeRun < kFirstMakeUp) return text;
    }
  }

private:
  static std::pair<int, std::string_view> LongestCode(bool black, int run) {
    std::pair<int, std::string_view> longest;
    ForEachRunCode(black ? kBlackTerminating : kWhiteTerminating,
                   black ? kBlackMakeUp : kWhiteMakeUp,
                   [&longest, run](int codeRun, std::string_view code) {
                     if (codeRun <= run && codeRun >= longest.first) longest = {codeRun, code};
                   });
    return longest;
  }

  static bool PixelAt(const std::vector<bool>& line, int x) {
    return x >= 0 && line[static_cast<std::size_t>(x)];
  }

  // The first changing element to the right of `start`, of the colour given, or the line's end.
  static int NextChange(const std::vector<bool>& line, int start, bool toColour) {
    const int width = static_cast<int>(line.size());
    for (int x = start + 1; x < width; ++x) {
      if (PixelAt(line, x) == toColour && PixelAt(line, x - 1) != toColour) return x;
    }
    return width;
  }

  void EncodeLine(const std::vector<bool>& above, const std::vector<bool>& line) {
    static constexpr std::string_view kVertical[] = {"0000010", "000010", "010",    "1",
                                                     "011",     "000011", "0000011"};
    const int width = static_cast<int>(line.size());
    bool colour = false;
    for (int a0 = -1; a0 < width;) {
      const int a1 = NextColour(line, a0, !colour);
      const int b1 = NextChange(above, a0, !colour);
      const int b2 = NextChange(above, b1, colour);
      if (b2 < a1) {
        digits += "0001";
        a0 = b2;
      } else if (a1 - b1 >= -3 && a1 - b1 <= 3 && !wantsHorizontal()) {
        digits += kVertical[a1 - b1 + 3];
        a0 = a1;
        colour = !colour;
      } else {
        const int a2 = NextColour(line, a1, colour);
        digits += "001";
        digits += RunDigits(colour, a1 - (a0 < 0 ? 0 : a0)) + RunDigits(!colour, a2 - a1);
        a0 = a2;
      }
    }
  }

  // The first pixel to the right of `start` that has the colour, or the line's end.
  static int NextColour(const std::vector<bool>& line, int start, bool colour) {
    const int width = static_cast<int>(line.size());
    int x = start + 1;
    while (x < width && PixelAt(line, x) != colour) ++x;
    return x < width ? x : width;
  }

  std::function<bool()> wantsHorizontal;
  std::string digits;
};

}  // namespace orxframework::ccitt
