#include "orxprint/Statements.h"

#include <algorithm>
#include <set>
#include <utility>

#include "drawing/DocumentComments.h"
#include "drawing/Text.h"

namespace orxprint {

namespace {

constexpr std::string_view kBox = "%%BoundingBox";
constexpr std::string_view kBlanks = " \t\f\v";
// What interpreters skip in front of a program: blanks, line ends, the end-of-job mark.
constexpr std::string_view kSkippedInFront = " \t\f\v\r\n\x04";

std::string_view Trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string_view TakeWord(std::string_view& text) {
  text = Trimmed(text);
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  return word;
}

// A text may stand in parentheses.
std::string TextOf(std::string_view value) {
  value = Trimmed(value);
  if (value.size() >= 2 && value.front() == '(' && value.back() == ')') {
    value = value.substr(1, value.size() - 2);
  }
  return std::string(orxdrawing::Shortened(value, Statements::kMostTextBytes));
}

// The version behind a word such as "PS-Adobe-3.0".
std::string VersionBehind(std::string_view line, std::string_view word) {
  const std::size_t found = line.find(word);
  if (found == std::string_view::npos) return {};
  line.remove_prefix(found + word.size());
  return std::string(
      line.substr(0, std::min<std::size_t>(line.find_first_not_of("0123456789."), 16)));
}

// What the lines of a comment that goes on ("%%+") add to.
enum class List { None, Fonts, Resources };

class StatementReader {
public:
  // A line that begins with a percent sign; the end of a long one may be missing.
  void TakeLine(std::string_view text, std::uint64_t number) {
    line = number;
    const std::size_t colon = text.find(':');
    const std::string_view key = text.substr(0, colon);
    if (key.starts_with("%%EOF") && depth == 0) isOver = true;
    if (isOver) return;
    if (key == "%%BeginDocument") ++depth;
    if (key.starts_with("%%EndDocument") && depth > 0) --depth;
    if (depth > 0) {
      if (key == kBox) AddOtherBox(text.substr(std::min(colon, text.size() - 1) + 1));
      return;
    }
    if (text.starts_with("%%+")) return AddNames(text.substr(3));
    list = List::None;
    if (key == "%%Page") ++page;
    const std::string_view value = colon == std::string_view::npos ? "" : text.substr(colon + 1);
    if (value.find("(atend)") == std::string_view::npos) TakeComment(key, value);
  }
  [[nodiscard]] bool IsOver() const { return isOver; }

  Statements found;

private:
  void TakeComment(std::string_view key, std::string_view value) {
    const std::pair<std::string_view, std::optional<Statement> Statements::*> kTexts[] = {
        {"%%Title", &Statements::title},
        {"%%Creator", &Statements::creator},
        {"%%For", &Statements::madeFor},
        {"%%CreationDate", &Statements::date},
        {"%%LanguageLevel", &Statements::languageLevel}};
    for (const auto& [name, member] : kTexts) {
      if (key == name && !(found.*member)) found.*member = Statement{TextOf(value), line};
    }
    if (key == kBox && hasBox) AddOtherBox(value);
    hasBox = hasBox || key == kBox;
    for (const std::string_view name : {kBox, std::string_view("%%HiResBoundingBox")}) {
      if (key == name) AddBox(name, 0, value);
    }
    for (const std::string_view name : {"%%PageBoundingBox", "%%PageHiResBoundingBox"}) {
      if (key == name && page > 0) AddBox(name, page, value);
    }
    if (key == "%%BeginPreview") found.hasBitmapPreview = true;
    if (key == "%%DocumentNeededFonts" || key == "%%DocumentFonts") list = List::Fonts;
    if (key == "%%DocumentNeededResources") list = List::Resources;
    AddNames(value);
  }

  void AddBox(std::string_view comment, std::uint32_t itsPage, std::string_view value) {
    if (found.boxes.size() == Statements::kMostBoxes) return;
    found.boxes.push_back({comment, itsPage, orxdrawing::ParseBox(value), line});
  }

  void AddOtherBox(std::string_view value) {
    if (found.otherBoxes.size() == Statements::kMostOtherBoxes) return;
    const std::optional<Box> box = orxdrawing::ParseBox(value);
    if (box) found.otherBoxes.push_back({kBox, 0, box, line});
  }

  // Resources have their kind in front, which holds for all that follow it.
  void AddNames(std::string_view value) {
    if (list == List::None) return;
    std::string kind;
    if (list == List::Resources) kind = TakeWord(value);
    for (std::string_view name = TakeWord(value); !name.empty(); name = TakeWord(value)) {
      if (list == List::Fonts || kind == "font") {
        AddName(found.fonts, std::string(name));
      } else {
        AddName(found.resources, kind + " " + std::string(name));
        // A set of procedures has a version and a revision behind its name.
        if (kind == "procset") return;
      }
    }
  }
  void AddName(std::vector<std::string>& names, std::string name) {
    name.resize(orxdrawing::Shortened(name, Statements::kMostTextBytes).size());
    std::set<std::string>& seen = &names == &found.fonts ? seenFonts : seenResources;
    if (seen.contains(name)) return;
    if (names.size() == Statements::kMostNames) {
      found.areNamesLeftOut = true;
      return;
    }
    seen.insert(name);
    names.push_back(std::move(name));
  }

  std::uint64_t line = 0;
  std::uint32_t page = 0;
  int depth = 0;
  bool isOver = false;
  bool hasBox = false;
  List list = List::None;
  std::set<std::string> seenFonts;
  std::set<std::string> seenResources;
};

// Cuts a document into lines and hands on the beginnings of those with a percent sign in front.
class LineCutter {
public:
  explicit LineCutter(StatementReader& statementReader) : reader(statementReader) {}

  void Add(std::string_view text) {
    while (!text.empty()) {
      const std::size_t size = std::min(text.find_first_of("\r\n"), text.size());
      Keep(text.substr(0, size));
      if (size == text.size()) return;
      const bool isSecondOfPair = text[size] == '\n' && isAfterReturn && size == 0;
      isAfterReturn = text[size] == '\r';
      if (!isSecondOfPair) EndLine();
      text.remove_prefix(size + 1);
    }
  }
  void EndLine() {
    if (kept.starts_with('%')) reader.TakeLine(kept, number);
    kept.clear();
    ++number;
  }

private:
  static constexpr std::size_t kMostBytes = 1 << 14;

  void Keep(std::string_view piece) {
    if (piece.empty()) return;
    isAfterReturn = false;
    const char first = kept.empty() ? piece[0] : kept[0];
    const std::size_t most = first == '%' ? kMostBytes : 1;
    kept += piece.substr(0, most - std::min(most, kept.size()));
  }

  StatementReader& reader;
  std::string kept;
  std::uint64_t number = 1;
  bool isAfterReturn = false;
};

void TakeFirstLine(std::string_view start, Statements& found) {
  start.remove_prefix(std::min(start.find_first_not_of(kSkippedInFront), start.size()));
  const std::string_view line = start.substr(0, start.find_first_of("\r\n"));
  found.isPostScript = line.starts_with("%!");
  if (!found.isPostScript) return;
  found.dscVersion = VersionBehind(line, "PS-Adobe-");
  found.epsfVersion = VersionBehind(line, "EPSF-");
}

}  // namespace

Statements ReadStatements(
    const std::function<std::size_t(std::uint64_t place, char* buffer, std::size_t count)>& read) {
  StatementReader reader;
  LineCutter lines(reader);
  std::vector<char> block(1 << 16);
  for (std::uint64_t place = 0; !reader.IsOver();) {
    const std::string_view bytes(block.data(), read(place, block.data(), block.size()));
    if (bytes.empty()) break;
    if (place == 0) TakeFirstLine(bytes, reader.found);
    lines.Add(bytes);
    place += bytes.size();
  }
  lines.EndLine();
  return std::move(reader.found);
}

}  // namespace orxprint
