// What the library answers about a document's pages.
//
// Every query of the library looks through its whole input, so the questions go to an interpreter
// over the comment lines alone, and a question about one page to one over the few lines that its
// answer can come from: many pages are asked about in time that grows with their number only.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/ORXPrintInterpreter.h"

namespace orxdrawing {

// In the interpreter's units.
struct PageSize {
  float width = 0;
  float height = 0;
};

struct PageAnswers {
  std::optional<std::uint32_t> count;  // as the document states it
  std::optional<PageSize> size;        // of all pages together
  struct Page {
    std::optional<std::string> label;  // UTF-8
    std::optional<PageSize> size;
  };
  std::vector<Page> pages;  // those asked about, in their order
};

// More pages than this are not asked about one by one.
inline constexpr std::uint32_t kMostAskedPages = 10'000;

// Makes a text the input of an interpreter. The text is borrowed until the next takes its place.
using ShowText = std::function<void(std::string_view text)>;

// Puts questions to an interpreter. Borrows the lines and the interpreter.
class Questioner {
public:
  Questioner(std::string_view commentLines, ORXPrintInterpreter& itsInterpreter, ShowText showText);

  // Count and size of the document as a whole.
  [[nodiscard]] PageAnswers AskAboutDocument();
  [[nodiscard]] PageAnswers::Page AskAboutPage(std::uint32_t page);

private:
  void TakeLine(std::string_view line);
  void TakePageLine(std::string_view line);

  std::string_view lines;
  ORXPrintInterpreter& interpreter;
  ShowText show;

  // Lines with a word "%%Page:" by each number among the first fields behind their first colon, for
  // one of those is the page's.
  std::unordered_map<std::uint32_t, std::string> labelLines;
  std::unordered_map<std::uint32_t, std::string> sizeLines;  // the first box of each page
  std::string documentSizeLine;                              // the last box of the document
  std::uint32_t pageComments = 0;
};

}  // namespace orxdrawing
