#include "drawing/DocumentComments.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "drawing/Text.h"

namespace orxdrawing {

namespace {

constexpr std::size_t kMostTextBytes = 1000;

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Whether the interpreter looks at a character of a comment.
bool CountsInComment(char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) return true;
  return std::string_view("!#$&*+,-:;=?^_~@`").find(c) != std::string_view::npos;
}

// A line of text, whose parentheses may stand around it. Characters beyond ASCII are those of
// Latin 1 unless the whole is UTF-8.
std::string TextOf(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    text = text.substr(1, text.size() - 2);
  }
  return orxdrawing::ToUtf8(text.substr(0, kMostTextBytes));
}

// Takes lines one after the other and gathers what they say.
//
// Documents inside the document (between BeginDocument and EndDocument) keep their boxes to
// themselves; their page comments count, for the library counts them too. Where the header says
// that the box comes at the end, the last one holds, else the first.
class CommentReader {
public:
  // A line without its end, which has a percent sign somewhere.
  void TakeLine(std::string_view line) {
    const std::size_t start = line.find('%');
    if (!ended) NotePageStart(line.substr(start));
    if (line.find("%%", start) != std::string_view::npos) TakeComment(line);
  }

  DocumentComments Finish() { return std::move(comments); }

private:
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
    } else if (comment.starts_with("%%Title:") && comments.title.empty()) {
      comments.title = TextOf(comment.substr(8));
    } else if (comment.starts_with("%%Creator:") && comments.creator.empty()) {
      comments.creator = TextOf(comment.substr(10));
    } else if (comment.starts_with("%%BoundingBox:")) {
      TakeDocumentBox(comment.substr(14), comments.box, boxComesLast);
    } else if (comment.starts_with("%%HiResBoundingBox:")) {
      TakeDocumentBox(comment.substr(19), comments.fineBox, fineBoxComesLast);
    } else if (comment.starts_with("%%PageBoundingBox:")) {
      TakePageBox(comment.substr(18), comments.pageBoxes);
    } else if (comment.starts_with("%%PageHiResBoundingBox:")) {
      TakePageBox(comment.substr(23), comments.finePageBoxes);
    }
  }

  static void TakeDocumentBox(std::string_view text, std::optional<Box>& kept, bool& comesLast) {
    if (text.find("(atend)") != std::string_view::npos) {
      comesLast = true;
      return;
    }
    const std::optional<Box> box = ParseBox(text);
    if (box && (!kept || comesLast)) kept = box;
  }

  void TakePageBox(std::string_view text, std::map<std::uint32_t, Box>& boxes) const {
    const std::optional<Box> box = ParseBox(text);
    if (box && comments.pageComments > 0) boxes[comments.pageComments] = *box;
  }

  DocumentComments comments;
  int depth = 0;
  bool ended = false;
  bool boxComesLast = false;
  bool fineBoxComesLast = false;
};

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

// Finds the lines that have a percent sign, which are few. They are looked at in the block when it
// holds them whole, and gathered when not, provided that they say something of interest.
class LineFinder {
public:
  LineFinder(const ByteReader& byteReader, CommentReader& commentReader)
      : read(byteReader), reader(commentReader) {}

  void Run() {
    std::uint64_t place = 0;
    while (Load(place)) place = TakeBlock();
  }

private:
  static constexpr std::size_t kBlockBytes = 1 << 16;
  // The library keeps no more of a line.
  static constexpr std::size_t kMostLineBytes = std::size_t{16} << 20;
  // What makes a long line worth being gathered.
  static constexpr std::string_view kWords[] = {"Page", "%%BoundingBox", "%%EOF", "%%BeginDocument",
                                                "%%EndDocument"};
  static constexpr std::size_t kLongestWord = 15;

  bool Load(std::uint64_t place) {
    blockPlace = place;
    nextNewline = nextReturn = 0;
    bytes = std::string_view(block.data(), read(place, block.data(), block.size()));
    return !bytes.empty();
  }

  // Takes the lines of the block. Returns the place where to go on.
  std::uint64_t TakeBlock() {
    std::size_t position = 0;
    while (true) {
      const std::size_t sign = bytes.find('%', position);
      if (sign == std::string_view::npos) return blockPlace + bytes.size();
      std::size_t start = sign;
      while (start > position && !IsLineEnd(bytes[start - 1])) --start;
      const std::size_t end = LineEndFrom(sign);
      const bool isWhole = (start > 0 || blockPlace == lineFloor) && end < bytes.size();
      if (!isWhole) return TakeLongLine(blockPlace + start, start == 0);
      reader.TakeLine(bytes.substr(start, end - start));
      position = end;
      lineFloor = blockPlace + end;
    }
  }

  // Each of the two is searched for once only, though one of them may be far away.
  std::size_t LineEndFrom(std::size_t position) {
    if (nextNewline <= position) nextNewline = std::min(bytes.find('\n', position), bytes.size());
    if (nextReturn <= position) nextReturn = std::min(bytes.find('\r', position), bytes.size());
    return std::min(nextNewline, nextReturn);
  }

  // A line that the block does not hold whole. Returns the place of its end.
  std::uint64_t TakeLongLine(std::uint64_t start, bool mayBeginBefore) {
    if (mayBeginBefore) start = FindStart(start);
    const auto [end, isOfInterest] = LookThroughLine(start);
    if (isOfInterest) {
      std::string line(
          static_cast<std::size_t>(std::min<std::uint64_t>(end - start, kMostLineBytes)), '\0');
      line.resize(read(start, line.data(), line.size()));
      if (line.find('%') != std::string::npos) reader.TakeLine(line);
    }
    lineFloor = end;
    return end;
  }

  // Where the line begins that goes on at `place`; not before the end of the last line taken.
  std::uint64_t FindStart(std::uint64_t place) {
    while (place > lineFloor) {
      const auto count =
          static_cast<std::size_t>(std::min<std::uint64_t>(place - lineFloor, block.size()));
      place -= count;
      if (!Load(place)) return place;
      for (std::size_t i = bytes.size(); i-- > 0;) {
        if (i < count && IsLineEnd(bytes[i])) return place + i + 1;
      }
    }
    return place;
  }

  struct LookedThrough {
    std::uint64_t end;
    bool isOfInterest;
  };
  LookedThrough LookThroughLine(std::uint64_t start) {
    bool isOfInterest = false;
    std::string seam;  // the last bytes of the block before
    for (std::uint64_t place = start; Load(place); place += bytes.size()) {
      const char* const end = std::find_if(bytes.data(), bytes.data() + bytes.size(), IsLineEnd);
      const std::string_view piece(bytes.data(), static_cast<std::size_t>(end - bytes.data()));
      seam += piece.substr(0, kLongestWord);
      isOfInterest = isOfInterest || HasWord(seam) || HasWord(piece);
      if (piece.size() < bytes.size()) return {place + piece.size(), isOfInterest};
      seam = piece.substr(piece.size() - std::min(piece.size(), kLongestWord));
    }
    return {blockPlace, isOfInterest};
  }
  static bool HasWord(std::string_view text) {
    return std::any_of(std::begin(kWords), std::end(kWords), [text](std::string_view word) {
      return text.find(word) != std::string_view::npos;
    });
  }

  const ByteReader& read;
  CommentReader& reader;
  std::vector<char> block = std::vector<char>(kBlockBytes);
  std::string_view bytes;       // what the block holds
  std::size_t nextNewline = 0;  // in the block, from where it was looked for on
  std::size_t nextReturn = 0;
  std::uint64_t blockPlace = 0;
  std::uint64_t lineFloor = 0;  // no line that is still to come begins before
};

bool StartsLikePostScript(const ByteReader& read) {
  char start[2];
  return read(0, start, sizeof start) == 2 && std::string_view(start, 2) == "%!";
}

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

DocumentComments ReadComments(const ByteReader& read) {
  CommentReader reader;
  LineFinder(read, reader).Run();
  DocumentComments comments = reader.Finish();
  comments.startsLikePostScript = StartsLikePostScript(read);
  return comments;
}

}  // namespace orxdrawing
