#include "orxprint/DocumentComments.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace orxprint {

namespace {

constexpr int kBlockBytes = 1 << 16;

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Whether the interpreter looks at a character of a comment.
bool CountsInComment(char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) return true;
  return std::string_view("!#$&*+,-:;=?^_~@`").find(c) != std::string_view::npos;
}

// Takes lines one after the other and gathers what they say.
//
// Documents inside the document (between BeginDocument and EndDocument) keep their boxes to
// themselves; their page comments count, for the library counts them too. Where the header says
// that the box comes at the end, the last one holds, else the first.
class CommentReader {
public:
  void TakeBytes(std::string_view bytes) {
    if (firstBytes.size() < 2) firstBytes += bytes.substr(0, 2);
    while (true) {
      const std::size_t end = bytes.find_first_of("\r\n");
      if (end == std::string_view::npos) break;
      TakePiece(bytes.substr(0, end));
      EndLine();
      bytes.remove_prefix(end + 1);
    }
    TakePiece(bytes);
  }

  DocumentComments Finish() {
    EndLine();
    comments.startsLikePostScript = firstBytes.starts_with("%!");
    return std::move(comments);
  }

private:
  void TakePiece(std::string_view piece) { line += piece; }

  void EndLine() {
    const std::size_t start = line.find('%');
    if (start != std::string::npos) {
      if (!ended) NotePageStart(std::string_view(line).substr(start));
      if (line.find("%%", start) != std::string::npos) TakeComment(line);
    }
    line.clear();
  }

  void NotePageStart(std::string_view comment) {
    if (comment.find("Page") == std::string_view::npos) return;
    std::string words(comment);
    std::erase_if(words, [](char c) { return !CountsInComment(c); });
    if (words.find("Page:") == std::string::npos) return;
    comments.pageStarts.push_back(comment.starts_with("%%Page:"));
  }

  void TakeComment(std::string_view comment) {
    for (const std::string_view word : {"%%Page", "%%BoundingBox", "%%EOF"}) {
      if (comment.find(word) == std::string_view::npos) continue;
      comments.lines += comment;
      comments.lines += '\n';
      break;
    }
    if (!ended) Interpret(comment);
  }

  void Interpret(std::string_view comment) {
    if (comment.starts_with("%%BeginDocument")) {
      ++depth;
    } else if (comment.starts_with("%%EndDocument")) {
      if (depth > 0) --depth;
    } else if (comment.starts_with("%%Page:")) {
      ++comments.pageComments;
    } else if (depth > 0) {
      return;
    } else if (comment.starts_with("%%EOF")) {
      ended = true;
    } else if (comment.starts_with("%%BoundingBox:")) {
      TakeDocumentBox(comment.substr(14));
    } else if (comment.starts_with("%%PageBoundingBox:") && comments.pageComments > 0) {
      const std::optional<Box> box = ParseBox(comment.substr(18));
      if (box) comments.pageBoxes[comments.pageComments] = *box;
    }
  }

  void TakeDocumentBox(std::string_view text) {
    if (text.find("(atend)") != std::string_view::npos) {
      boxComesLast = true;
      return;
    }
    const std::optional<Box> box = ParseBox(text);
    if (box && (!comments.box || boxComesLast)) comments.box = box;
  }

  DocumentComments comments;
  std::string firstBytes;
  std::string line;
  int depth = 0;
  bool ended = false;
  bool boxComesLast = false;
};

}  // namespace

std::optional<Box> DocumentComments::BoxOfPage(std::uint32_t page) const {
  const auto own = pageBoxes.find(page);
  return own == pageBoxes.end() ? box : own->second;
}

std::optional<Box> ParseBox(std::string_view numbers) {
  double values[4];
  for (double& value : values) {
    while (!numbers.empty() && IsSpace(numbers.front())) numbers.remove_prefix(1);
    const char* end = numbers.data() + numbers.size();
    if (!numbers.empty() && numbers.front() == '+') numbers.remove_prefix(1);
    const auto [stop, error] = std::from_chars(numbers.data(), end, value);
    if (error != std::errc() || !std::isfinite(value)) return std::nullopt;
    numbers.remove_prefix(static_cast<std::size_t>(stop - numbers.data()));
  }
  const Box box{values[0], values[1], values[2], values[3]};
  if (!(box.Width() > 0 && box.Height() > 0)) return std::nullopt;
  return box;
}

DocumentComments ReadComments(PrintInputStream& input) {
  CommentReader reader;
  std::vector<char> block(kBlockBytes);
  input.Open("rb");
  while (true) {
    int count = 0;
    const int status = input.Read(block.data(), kBlockBytes, &count);
    if (count > 0) reader.TakeBytes({block.data(), static_cast<std::size_t>(count)});
    if (status < 0 || count <= 0) break;
  }
  input.Close();
  return reader.Finish();
}

}  // namespace orxprint
