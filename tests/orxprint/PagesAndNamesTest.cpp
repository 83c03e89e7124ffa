// Page lists, and the names of outputs.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "orxprint/Failure.h"
#include "orxprint/Formats.h"
#include "orxprint/OutputNames.h"
#include "orxprint/PageList.h"

namespace orxprint {
namespace {

// The pages that a list selects of seven, or the message that refuses it.
std::string Selected(const std::string& text) {
  const std::optional<PageList> list = ParsePageList(text);
  if (!list) return "no list";
  try {
    std::string pages;
    for (const std::uint32_t page : SelectPages(*list, 7)) pages += std::to_string(page) + " ";
    return pages;
  } catch (const Failure& failure) {
    return failure.what();
  }
}

TEST(PageList, SelectsInItsOrderAndRefusesWhatIsNotThere) {
  const std::string outOfRange = " is out of range: the document has 7 pages";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"1", "1 "},
      {"1,3-5,7-", "1 3 4 5 7 "},
      {"5-", "5 6 7 "},
      {"6,2,2-3,6", "6 2 3 "},
      {"8", "page 8" + outOfRange},
      {"6-9", "page 9" + outOfRange},
      {"9-", "page 9" + outOfRange},
      {"4294967295", "page 4294967295" + outOfRange},
      {"", "no list"},
      {"0", "no list"},
      {"1,", "no list"},
      {"-3", "no list"},
      {"3-1", "no list"},
      {"1--2", "no list"},
      {"1 2", "no list"},
      {"+1", "no list"},
      {"4294967296", "no list"},
  };
  for (const auto& [text, pages] : cases) EXPECT_EQ(Selected(text), pages) << text;
  const std::vector<std::uint32_t> repeated = {2, 1, 2};
  EXPECT_EQ(SelectPages(*ParsePageList("2,1,2"), 7, Repeats::Kept), repeated);
}

TEST(PageList, IsBoundedWhateverTheDocumentSays) {
  EXPECT_THROW((void)SelectPages(*ParsePageList("1-"), 4'000'000'000U), Failure);
  EXPECT_EQ(SelectPages(*ParsePageList("4294967295-"), 4294967295U).size(), 1U);
}

TEST(OutputNames, FormatFollowsTheEnding) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"a.svg", "svg"},
      {"a.b.PDF", "pdf"},
      {"dir.svg/a.png", "png"},
      {"a.none", "no format"},
      {"dir.pdf/name", "no format"},
      {"a", "no format"},
      {".svg", "no format"},
      {"dir/.svg", "no format"},
      {"a.", "no format"},
      {"a.svgz", "no format"},
  };
  for (const auto& [name, expected] : cases) {
    const Format* format = FormatOfFile(name);
    EXPECT_EQ(format ? format->name : "no format", expected) << name;
  }
}

TEST(OutputNames, NumbersStandBeforeTheEndingOrWhereTheTypedNameSays) {
  const struct {
    std::string_view typed;
    std::string_view ofPage12;
    std::string_view whole;
  } kCases[] = {
      {"name.svg", "name-012.svg", "name.svg"},
      {"dir.x/name", "dir.x/name-012", "dir.x/name"},
      {"p%d.svg", "p12.svg", "p.svg"},
      {"%04d/f%04d.png", "%04d/f0012.png", "%04d/f.png"},
      {"f%d/page.svg", "f%d/page-012.svg", "f%d/page.svg"},
      {"%1d-%d", "12-%d", "-%d"},
      {"100%.svg", "100%-012.svg", "100%.svg"},
      {"100%%d.svg", "100%d-012.svg", "100%d.svg"},
      {"%s%d.svg", "%s12.svg", "%s.svg"},
  };
  for (const auto& [typed, ofPage12, whole] : kCases) {
    EXPECT_EQ(OutputName::Typed(typed).ForPage(12, 120), ofPage12) << typed;
    EXPECT_EQ(OutputName::Typed(typed).Whole(), whole) << typed;
  }
  EXPECT_EQ(OutputName::Plain("100%d.svg").ForPage(2, 9), "100%d-2.svg");
  EXPECT_FALSE(OutputName::Plain("100%d.svg").HasNumberPlace());
}

}  // namespace
}  // namespace orxprint
