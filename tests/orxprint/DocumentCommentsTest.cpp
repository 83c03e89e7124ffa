// What the host reads from a document's comments.
#include "drawing/DocumentComments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "drawing/PageAnswers.h"
#include "framework/InputStreams.h"
#include "framework/TextStream.h"
#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"

namespace orxprint {
namespace {

using orxdrawing::Box;
using orxdrawing::DocumentComments;
using orxdrawing::ParseBox;
using orxdrawing::ReadComments;

using namespace std::string_literals;

using orxframework::MemoryInputStream;

DocumentComments CommentsOf(const std::string& document) {
  return ReadComments([&document](std::uint64_t place, char* buffer, std::size_t count) {
    count = std::min(count, document.size() - std::min<std::size_t>(place, document.size()));
    if (count > 0) std::memcpy(buffer, document.data() + place, count);
    return count;
  });
}

TEST(ParseBox, TakesFourNumbersWithAnArea) {
  using MaybeBox = std::optional<Box>;
  const std::vector<std::pair<std::string, MaybeBox>> cases = {
      {" 10 20 110 220", Box{10, 20, 110, 220}},
      {"\t-9.5 +0 1e2 155.25 rest", Box{-9.5, 0, 100, 155.25}},
      {"0 0 612", std::nullopt},
      {"0 0 x 792", std::nullopt},
      {"", std::nullopt},
      {"0 0 0 792", std::nullopt},
      {"100 0 0 792", std::nullopt},
      {"0 0 inf 1", std::nullopt},
      {"0 0 nan 1", std::nullopt},
      {"0 0 1e999 1", std::nullopt},
  };
  for (const auto& [text, box] : cases) EXPECT_EQ(ParseBox(text), box) << text;
}

TEST(DocumentComments, FindTheBoxOfTheDocument) {
  const std::vector<std::pair<std::string, std::optional<Box>>> cases = {
      {"%!\n%%BoundingBox: 1 2 3 4\n%%BoundingBox: 5 6 7 8\n", Box{1, 2, 3, 4}},
      {"%!\r%%BoundingBox: 1 2 3 4", Box{1, 2, 3, 4}},
      {"%!\r\n%%BoundingBox: (atend)\r\n%%BoundingBox: 1 2 3 4\r\n", Box{1, 2, 3, 4}},
      {"%%BoundingBox:(atend)\n%%BeginDocument: x\n%%BoundingBox: 5 6 7 8\n%%EOF\n"
       "%%EndDocument\n%%BoundingBox: 1 2 3 4\n%%EOF\n%%BoundingBox: 9 9 10 10",
       Box{1, 2, 3, 4}},
      {"%%BoundingBox: nonsense\n%%BoundingBox: 1 2 3 4\n", Box{1, 2, 3, 4}},
      {"(%%BoundingBox: 1 2 3 4)\n", std::nullopt},
  };
  for (const auto& [document, box] : cases) EXPECT_EQ(CommentsOf(document).box, box) << document;
}

TEST(DocumentComments, GivePagesTheirOwnBoxes) {
  const DocumentComments comments = CommentsOf(
      "%!PS\n%%BoundingBox: 0 0 10 10\n%%Pages: 3\n%%Page: one 1\n%%PageBoundingBox: 1 1 2 2\n"
      "%%Page: two 2\n% EndPage: here\n%%Page: three 3\n%%PageBoundingBox: (atend)\n"
      "%%PageTrailer\n%%PageBoundingBox: 3 3 4 4\n%%EOF\n%%Page: four 4\n");
  EXPECT_TRUE(comments.startsLikePostScript);
  EXPECT_EQ(comments.pageComments, 3U);
  EXPECT_EQ(comments.pageStarts, (std::vector<bool>{true, true, false, true}));
  EXPECT_EQ(comments.BoxOfPage(1), (Box{1, 1, 2, 2}));
  EXPECT_EQ(comments.BoxOfPage(2), (Box{0, 0, 10, 10}));
  EXPECT_EQ(comments.BoxOfPage(3), (Box{3, 3, 4, 4}));
}

// Everything that the library answers about the first pages of a document.
std::string Answers(const std::string& document) {
  MemoryInputStream stream{std::string_view(document)};
  const std::unique_ptr<ORXPrintInterpreter> interpreter(static_cast<ORXPrintInterpreter*>(
      ORXFillDictionary::Find("ORXPrintEPSInterpreter")(static_cast<PrintInputStream*>(&stream))));
  std::string answers;
  unsigned count = 7;
  answers += std::to_string(interpreter->GetPageCount(&count)) + " " + std::to_string(count);
  for (unsigned page = 0; page < 5; ++page) {
    interpreter->SetAllPages(page == 0 ? 1 : 0);
    interpreter->SetCurrentPage(page);
    float width = 0;
    float height = 0;
    ORXUnicodeString label("none");
    answers += "; " + std::to_string(interpreter->GetPageSize(&width, &height));
    answers += " " + std::to_string(width) + " " + std::to_string(height);
    answers += " " + std::to_string(interpreter->GetPageLabel(label)) + " " + label.ToUtf8();
  }
  return answers;
}

TEST(DocumentComments, KeepEveryLineThatTheLibraryAnswersFrom) {
  const std::vector<std::string> documents = {
      "%!PS\n%%Pages: 3\n%%BoundingBox: 0 0 612 792\n1 2 add\n%%Page: (i) 1\nx %%Page: ii 2\n"
      "%%PageBoundingBox: 0 0 300 400\n0 0 moveto\n%%Page: iii 3\n%%EOF\n%%BoundingBox: 0 0 9 9",
      "%!\r%%Pages:\t(atend)\r%%BoundingBox:\t10 20 110 220\r%%Page: 2\r%%Page: a b 1\r%%Pages: 5",
      "%!\r\n%%Pages: 1 1\r\n(text) %%BoundingBox: 1 2 3 4\r\n%%Page: 1 2 3 4\r\n%%Pages: 3 1 \r\n",
      "\0%%Pages: 2\n\0\0%%Page: z 2\nbinary\0%%PageBoundingBox: 1 1 5 5\n"s,
      "%%Pages: -1\n%%BoundingBox: 0 0 9999999999 12.5\n%%Page:  spaced   1 ",
      "nothing at all",
      "",
  };
  for (const std::string& document : documents) {
    EXPECT_EQ(Answers(CommentsOf(document).lines), Answers(document)) << document;
  }
}

TEST(DocumentComments, AreFoundWhereverBlocksEnd) {
  constexpr std::size_t kBlock = 1 << 16;
  const std::string comment = "%%Page: here 1";
  for (const std::string& before : {"\n"s, "\r"s, "text "s, "a:b "s}) {
    for (std::size_t place = kBlock - 20; place < kBlock + 3; ++place) {
      // a line that begins in another block than the comment, or right before it
      const std::string filling(place - before.size(), before[0] < ' ' ? 'x' : ' ');
      const std::string document = filling + before + comment + "\n%%Pages: 1\n";
      const DocumentComments comments = CommentsOf(document);
      const std::size_t start = before[0] < ' ' ? place : 0;
      EXPECT_EQ(comments.lines, document.substr(start)) << place;
    }
  }
  // Only what the library looks at of a line is kept.
  const std::string endless = "%%Page: " + std::string(std::size_t{20} << 20, '%');
  EXPECT_EQ(CommentsOf(endless).lines.size(), (std::size_t{16} << 20) + 1);
}

TEST(Questioner, AnswersFromFewLinesWhatTheLibraryAnswersFromAll) {
  const std::vector<std::string> documents = {
      "%%Pages: 3\n%%BoundingBox: 0 0 612 792\n%%Page: (i) 1\nx %%Page: ii 2\n"
      "%%PageBoundingBox: 0 0 300 400\n%%PageBoundingBox: 0 0 3 4\n%%Page: iii 3\n",
      "%%Page: a b 1\n%%Page: 2\n%%Page:  spaced   1 \n%%Page: x +2\n%%Page: y 2x\n%%Page: -1 3\n",
      "%%Page: 1 1 %%PageBoundingBox: 0 0 5 6\n%%BoundingBox: 0 0 7 8\n%%Page: 2 2\n%%EOF\n"
      "%%Page: 3 3\n%%PageBoundingBox: 0 0 9 9\n%%BoundingBox: 0 0 11 11\n",
      "a: b %%Page: 1 4\n%%Page: x 99999999999\n%%PageBoundingBox: (atend)\n%%BoundingBox: 0 0 1 "
      "2\n",
      "%%PageBoundingBox: 1 1 2 2\n%%Page: one 0\n%%PageBoundingBox: 0 0 8 0\n",
      "",
  };
  for (const std::string& document : documents) {
    orxframework::TextStream text;
    const std::unique_ptr<ORXPrintInterpreter> interpreter(static_cast<ORXPrintInterpreter*>(
        ORXFillDictionary::Find("ORXPrintEPSInterpreter")(static_cast<PrintInputStream*>(&text))));
    orxdrawing::Questioner questioner(document, *interpreter,
                                      [&text](std::string_view shown) { text.Show(shown); });
    for (const std::uint32_t page : {0U, 1U, 2U, 3U, 4U, 99U, 2147483647U, 4294967295U}) {
      const orxdrawing::PageAnswers::Page answer = questioner.AskAboutPage(page);
      text.Show(document);
      interpreter->SetAllPages(0);
      interpreter->SetCurrentPage(page);
      orxdrawing::PageSize size;
      ORXUnicodeString label;
      const bool hasSize = interpreter->GetPageSize(&size.width, &size.height) != 0;
      const bool hasLabel = interpreter->GetPageLabel(label) != 0;
      ASSERT_EQ(answer.size.has_value(), hasSize) << document << page;
      if (hasSize) {
        EXPECT_EQ(std::pair(answer.size->width, answer.size->height),
                  std::pair(size.width, size.height))
            << document << page;
      }
      EXPECT_EQ(answer.label.value_or("none"), hasLabel ? label.ToUtf8() : "none")
          << document << page;
    }
  }
}

}  // namespace
}  // namespace orxprint
