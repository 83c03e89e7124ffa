// What documents say of themselves, wherever lines and blocks end, and places that people write.
#include "orxprint/Statements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "orxprint/PlaceOption.h"

namespace orxprint {
namespace {

Statements StatementsOf(const std::string& document) {
  return ReadStatements([&document](std::uint64_t place, char* buffer, std::size_t count) {
    const std::size_t start = std::min<std::size_t>(place, document.size());
    count = std::min(count, document.size() - start);
    if (count > 0) std::memcpy(buffer, document.data() + start, count);
    return count;
  });
}

TEST(Statements, AreOfPostScriptOnlyBehindItsMark) {
  const struct {
    std::string document;
    bool isPostScript;
    std::string dsc;
    std::string epsf;
  } kTable[] = {
      {"%!PS-Adobe-3.0 EPSF-3.0\n", true, "3.0", "3.0"},
      {"%!PS-Adobe-2.1", true, "2.1", ""},
      {"%!\n%%Title: PS-Adobe-3.0", true, "", ""},
      {"\x04\r\n\t %!PS\r", true, "", ""},
      {"% !PS", false, "", ""},
      {"%PDF-1.4", false, "", ""},
      {"text\n%!PS-Adobe-3.0", false, "", ""},
      {"", false, "", ""},
  };
  for (const auto& row : kTable) {
    const Statements found = StatementsOf(row.document);
    EXPECT_EQ(found.isPostScript, row.isPostScript) << row.document;
    EXPECT_EQ(found.dscVersion, row.dsc) << row.document;
    EXPECT_EQ(found.epsfVersion, row.epsf) << row.document;
  }
}

TEST(Statements, KeepTheFirstTextOfAKindWithItsLine) {
  const Statements found = StatementsOf(
      "%!\r\n%%Title: (atend)\r\n\r\n 1 %%Title: in a line\n%%Title:  first one \r%%Title: second\n"
      "%%Creator:none\n%%For\n%%CreationDate: (a)(b)\n%%EOF\n%%LanguageLevel: 3\n");
  EXPECT_EQ(found.title->text, "first one");
  EXPECT_EQ(found.title->line, 5U);
  EXPECT_EQ(found.creator->text, "none");
  EXPECT_EQ(found.date->text, "a)(b");
  EXPECT_FALSE(found.languageLevel) << "behind the end";
}

TEST(Statements, BoxesBelongToTheDocumentOrAPage) {
  const Statements found = StatementsOf(
      "%!\n%%BoundingBox: 0 0 9 9\n%%PageBoundingBox: 1 1 2 2\n%%Page: a 1\n"
      "%%PageBoundingBox: 0 0 5 5\n%%BeginDocument: x\n%%BoundingBox: 0 0 1 1\n%%Page: z 1\n"
      "%%EndDocument\n%%Page: b 2\n%%PageHiResBoundingBox: nonsense\n%%BoundingBox: 0 0 8 8\n");
  std::string text;
  for (const StatedBox& stated : found.boxes) {
    text += std::string(stated.comment) + " of " + std::to_string(stated.page) + " in " +
            std::to_string(stated.line) + (stated.box ? "; " : " bad; ");
  }
  EXPECT_EQ(text,
            "%%BoundingBox of 0 in 2; %%PageBoundingBox of 1 in 5; "
            "%%PageHiResBoundingBox of 2 in 11 bad; %%BoundingBox of 0 in 12; ");
  std::string others;
  for (const StatedBox& stated : found.otherBoxes) others += std::to_string(stated.line) + " ";
  EXPECT_EQ(others, "7 12 ");
}

TEST(Statements, AreFoundWhereverBlocksEnd) {
  constexpr std::size_t kBlock = 1 << 16;
  for (const std::string& end : {std::string("\n"), std::string("\r\n"), std::string("\r")}) {
    for (std::size_t place = kBlock - 12; place < kBlock + 3; ++place) {
      const std::string before(place - end.size(), 'x');
      const Statements found = StatementsOf(before + end + "%%Title: here" + end + "%%For: you");
      ASSERT_TRUE(found.title && found.madeFor) << place;
      EXPECT_EQ(found.title->text + " 2", "here " + std::to_string(found.title->line)) << place;
      EXPECT_EQ(found.madeFor->line, 3U) << place;
    }
  }
}

TEST(PlaceOption, IsTwoNumbersWithOrWithoutAUnit) {
  constexpr double kPoint = 25.4 / 72;
  const std::vector<std::pair<std::string, std::optional<PlaceOption>>> cases = {
      {"12.5,80", PlaceOption{{12.5, 80}, std::nullopt}},
      {"-1,1e2mm", PlaceOption{{-1, 100}, 1.0}},
      {"0,.5pt", PlaceOption{{0, 0.5}, kPoint}},
      {"1;2", std::nullopt},
      {"1,2 mm", std::nullopt},
      {"1mm,2mm", std::nullopt},
      {"1,", std::nullopt},
      {",1", std::nullopt},
      {"inf,1", std::nullopt},
      {"1,1e999", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& [text, place] : cases) {
    const std::optional<PlaceOption> parsed = ParsePlace(text);
    ASSERT_EQ(parsed.has_value(), place.has_value()) << text;
    if (!place) continue;
    EXPECT_EQ(parsed->at, place->at) << text;
    EXPECT_NEAR(parsed->unitInMillimetres.value_or(0), place->unitInMillimetres.value_or(0), 1e-12);
  }
}

}  // namespace
}  // namespace orxprint
