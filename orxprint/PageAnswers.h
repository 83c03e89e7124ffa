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

#include "framework/InputStreams.h"
#include "host/ORXPrintInterpreter.h"

namespace orxprint {

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

// Texts as an interpreter's input, one after the other.
class TextStream final : public PrintInputStream {
public:
  // The text is borrowed until the next takes its place.
  void Show(std::string_view text) { stream.emplace(text); }

  int Open(const char* mode) override { return stream->Open(mode); }
  int Read(void* buffer, int count, int* countRead) override {
    return stream->Read(buffer, count, countRead);
  }
  int ReadByte(char* byte) override { return stream->ReadByte(byte); }
  int SetPosition(unsigned position) override { return stream->SetPosition(position); }
  int Seek(int offset, int origin) override { return stream->Seek(offset, origin); }
  int UnreadByte(char byte) override { return stream->UnreadByte(byte); }
  int GetPosition(unsigned* position) override { return stream->GetPosition(position); }
  int IsReadable() override { return stream->IsReadable(); }
  int Close() override { return stream->Close(); }
  int HasMoreData() override { return stream->HasMoreData(); }
  int GetState() override { return stream->GetState(); }
  int ClearEndOfFile() override { return stream->ClearEndOfFile(); }

private:
  std::optional<orxframework::MemoryInputStream> stream{std::in_place, std::string_view()};
};

// Puts questions to an interpreter. Borrows the lines, the interpreter and its input.
class Questioner {
public:
  Questioner(std::string_view commentLines, ORXPrintInterpreter& itsInterpreter, TextStream& input);

  // Count and size of the document as a whole.
  [[nodiscard]] PageAnswers AskAboutDocument();
  [[nodiscard]] PageAnswers::Page AskAboutPage(std::uint32_t page);

private:
  void TakeLine(std::string_view line);
  void TakePageLine(std::string_view line);

  std::string_view lines;
  ORXPrintInterpreter& interpreter;
  TextStream& text;

  // Lines with a word "%%Page:" by each number among the first fields behind their first colon, for
  // one of those is the page's.
  std::unordered_map<std::uint32_t, std::string> labelLines;
  std::unordered_map<std::uint32_t, std::string> sizeLines;  // the first box of each page
  std::string documentSizeLine;                              // the last box of the document
  std::uint32_t pageComments = 0;
};

}  // namespace orxprint
