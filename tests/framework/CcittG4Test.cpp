// Group 4 decoding: pages from another encoder, pages from our own, and damage of every kind.
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/Crc32.h"
#include "framework/CcittG4Encoder.h"
#include "host/ORXRasterDecoders.h"
#include "tests/framework/G4Encoder.h"

namespace orxframework::ccitt {
namespace {

struct Decoded {
  int status = 0;
  int rows = 0;
  int errors = 0;
  std::vector<unsigned char> bitmap;

  [[nodiscard]] bool Succeeded() const { return status == 0 && rows > 0 && errors == 0; }
};

Decoded Decode(const std::vector<unsigned char>& data, int columns, int rows) {
  Decoded result;
  const auto rowBytes = static_cast<std::size_t>((columns + 7) / 8);
  result.bitmap.assign(rowBytes * static_cast<std::size_t>(rows), 0x5A);
  int size[] = {columns, rows};
  result.status = CCITT_G4_dec(data.data(), static_cast<int>(data.size()), size,
                               result.bitmap.data(), result.rows, result.errors);
  return result;
}

// The bitmap of a page: 0 black, 1 white, pad bits 1.
std::vector<unsigned char> BitmapOf(const Page& page) {
  std::vector<unsigned char> bitmap;
  for (const std::vector<bool>& line : page) {
    const std::size_t start = bitmap.size();
    bitmap.resize(start + (line.size() + 7) / 8, 0xFF);
    for (std::size_t x = 0; x < line.size(); ++x) {
      if (line[x]) bitmap[start + x / 8] &= static_cast<unsigned char>(~(0x80U >> x % 8));
    }
  }
  return bitmap;
}

// The files hold what an independent encoder made of pages that a script drew; the sums are of
// those pages. "run-codes" has every run code of either colour, and runs of several make-up codes.
TEST(CcittG4, DecodesThePagesOfAnotherEncoder) {
  const struct {
    const char* name;
    int columns;
    int rows;
    std::uint32_t crc32;
  } pages[] = {
      {"run-codes", 110003, 6, 0x82537B89},
      {"noise", 67, 60, 0x0E830048},
      {"shapes", 333, 150, 0x0817952D},
      {"blank", 17, 10, 0xA2F49D8D},
  };
  for (const auto& page : pages) {
    std::ifstream file(std::string(ORX_TEST_DATA) + "/framework/data/" + page.name + ".g4",
                       std::ios::binary);
    const std::vector<unsigned char> data{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(data.empty()) << page.name;
    const Decoded decoded = Decode(data, page.columns, page.rows);
    EXPECT_TRUE(decoded.Succeeded()) << page.name;
    EXPECT_EQ(decoded.rows, page.rows) << page.name;
    EXPECT_EQ(orxdrawing::Crc32(decoded.bitmap), page.crc32) << page.name;
  }
}

// A page whose lines keep `likeness` percent of the pixels of the line above, with runs of about
// `runLength`.
Page DrawPage(std::mt19937& random, int columns, int rows, unsigned runLength, unsigned likeness) {
  Page page;
  for (int row = 0; row < rows; ++row) {
    std::vector<bool> line(static_cast<std::size_t>(columns));
    bool black = random() % 2 == 0;
    for (std::size_t x = 0; x < line.size(); ++x) {
      if (random() % runLength == 0) black = !black;
      const bool copies = row > 0 && random() % 100 < likeness;
      line[x] = copies ? page.back()[x] : black;
    }
    page.push_back(std::move(line));
  }
  return page;
}

// What the encoder for files makes of the page.
std::vector<unsigned char> EncodedByRows(const Page& page) {
  std::vector<unsigned char> encoded;
  G4RowEncoder encoder(static_cast<int>(page[0].size()), [&encoded](std::string_view bytes) {
    encoded.insert(encoded.end(), bytes.begin(), bytes.end());
  });
  for (const std::vector<bool>& line : page) {
    std::vector<unsigned char> row = BitmapOf({line});
    for (unsigned char& byte : row) byte = static_cast<unsigned char>(~byte);
    encoder.AddRow(row);
  }
  encoder.Finish();
  return encoded;
}

TEST(CcittG4, GivesBackEveryPageThatWasEncoded) {
  std::mt19937 random(3);
  for (const int columns : {1, 2, 7, 8, 9, 31, 64, 100, 1728, 6000}) {
    for (const unsigned runLength : {1U, 3U, 20U, 3000U}) {
      for (const unsigned likeness : {0U, 80U, 99U, 100U}) {
        const Page page = DrawPage(random, columns, 12, runLength, likeness);
        const unsigned horizontal = random() % 3;  // never, for half of the choices, always
        G4Encoder encoder([&] { return horizontal > random() % 2; });
        if (horizontal == 0) {
          EXPECT_EQ(EncodedByRows(page),
                    PackBits(encoder.Encode(page) + std::string(kEndOfBlockText)));
        }
        const std::string digits = encoder.Encode(page);
        for (const std::string& tail : {std::string(kEndOfBlockText), std::string()}) {
          const Decoded decoded = Decode(PackBits(digits + tail), columns, 12);
          ASSERT_TRUE(decoded.Succeeded()) << columns << " " << runLength << " " << likeness;
          ASSERT_EQ(decoded.bitmap, BitmapOf(page)) << columns << " " << runLength;
        }
      }
    }
  }
}

// Codes by hand: P for pass mode, H for horizontal, V0, R1 to R3 and L1 to L3 for vertical, wN and
// bN for the codes of a run, EOFB for the end of the block. Digits stand for themselves.
std::string Digits(const std::string& codes) {
  static const std::map<std::string, std::string_view> kCodes = {
      {"P", "0001"},     {"H", "001"},
      {"V0", "1"},       {"R1", "011"},
      {"R2", "000011"},  {"R3", "0000011"},
      {"L1", "010"},     {"L2", "000010"},
      {"L3", "0000010"}, {"EOFB", kEndOfBlockText}};
  std::string digits;
  std::istringstream words(codes);
  for (std::string word; words >> word;) {
    const auto code = kCodes.find(word);
    if (code != kCodes.end()) {
      digits += code->second;
    } else if (word[0] == 'w' || word[0] == 'b') {
      digits += G4Encoder::RunDigits(word[0] == 'b', std::stoi(word.substr(1)));
    } else {
      digits += word;
    }
  }
  return digits;
}

struct HandMadePage {
  const char* name;
  const char* codes;
  std::vector<std::string> lines;  // 8 columns each, X for black
};

TEST(CcittG4, DecodesHandMadePages) {
  const std::string kBlank = "........";
  const HandMadePage pages[] = {
      {"AllModes",
       "H w2 b3 V0  L1 R1 V0  V0 R2  R3 L2 V0  L3 V0 V0  P V0",
       {"..XXX...", ".XXXXX..", ".XXXXXXX", "....XX..", ".XXXXX..", kBlank}},
      {"ARunFromTheFirstColumn", "H w0 b8 V0 V0", {"XXXXXXXX", "XXXXXXXX"}},
      {"ARunToTheLastColumn", "H w3 b5 V0 V0", {"...XXXXX", "...XXXXX"}},
      {"RunsOfNoPixelsAreNoChanges", "H w2 b0 H w2 b2 V0  V0 V0 V0", {"....XX..", "....XX.."}},
      {"ARunOfNoPixelsAtTheEnd", "H w8 b0  V0", {kBlank, kBlank}},
      {"RowsBehindTheEndOfTheBlockAreWhite", "H w0 b4 V0 EOFB", {"XXXX....", kBlank, kBlank}},
      {"PassAtTheEndOfTheLineEndsIt", "P V0", {kBlank, kBlank}},
      {"DataBehindTheLastRowDoesNotMatter", "V0 00000001", {kBlank}},
  };
  for (const HandMadePage& page : pages) {
    Page pixels;
    for (const std::string& line : page.lines) {
      std::vector<bool>& row = pixels.emplace_back();
      for (const char pixel : line) row.push_back(pixel == 'X');
    }
    const Decoded decoded =
        Decode(PackBits(Digits(page.codes)), 8, static_cast<int>(page.lines.size()));
    EXPECT_TRUE(decoded.Succeeded()) << page.name;
    EXPECT_EQ(decoded.bitmap, BitmapOf(pixels)) << page.name;
  }
}

TEST(CcittG4, RefusesDamage) {
  const struct {
    const char* name;
    const char* codes;
    int rowsBefore;
  } cases[] = {
      {"NoData", "", 0},
      {"NoRowBeforeTheEndOfTheBlock", "EOFB", 0},
      {"TheEndOfTheBlockInsideARow", "V0 H w2 b2 EOFB", 1},
      {"OneHalfOfTheEndOfTheBlock", "V0 000000000001", 1},
      {"AnExtension", "V0 0000001111", 1},
      {"ACodeThatIsNone", "V0 00000000", 1},
      {"ARunCodeThatIsNone", "V0 H 000000001", 1},
      {"ABlackRunCodeThatIsNone", "V0 H w2 000000001", 1},
      {"ARunBeyondTheLine", "V0 H w2 b7", 1},
      {"AMakeUpCodeBeyondTheLine", "V0 H w64", 1},
      {"AChangeBeyondTheLine", "V0 R1", 1},
      {"AChangeBeforeTheLine", "H w1 b2 V0 L2", 1},
      {"AChangeBeforeTheLastOne", "H w2 b1 V0 H w4 b2 L3 V0", 1},
      {"DataThatEndsInsideTheRows", "V0 V0 H w2 b2", 2},
      {"DataThatEndsBetweenRows", "V0 V0 V0 V0 V0 V0 V0 V0", 8},
      {"DataThatEndsInsideTheLastCodeOfARow", "H w0 b4 V0 V0 H b2 111", 1},
      {"DataThatEndsInsideACode", "V0 V0 V0 V0 V0 V0 01", 6},
  };
  for (const auto& each : cases) {
    const Decoded decoded = Decode(PackBits(Digits(each.codes)), 8, 20);
    EXPECT_LT(decoded.status, 0) << each.name;
    EXPECT_GT(decoded.errors, 0) << each.name;
    EXPECT_EQ(decoded.rows, each.rowsBefore) << each.name;
  }
}

}  // namespace
}  // namespace orxframework::ccitt
