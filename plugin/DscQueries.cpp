// The framework's questions about pages, answered from the document's structuring comments without
// running any PostScript. Each is a pass over the input of its own and changes nothing in the
// interpreter.

#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "plugin/ORXPrintEPSInterpreter.h"
#include "plugin/Visit.h"
#include "ps/HostCalls.h"
#include "ps/Limits.h"
#include "ps/Numbers.h"

namespace orxeps {

namespace {

enum class AtEnd { Rewind, LeaveThere };

// A pass over the lines of the document. A line ends at a carriage return or a newline; the newline
// of a CR LF pair is an empty line of its own. Tabs read as spaces.
class LineReader {
public:
  LineReader(InputReader& reader, RunWatch& runWatch, AtEnd atEnd)
      : input(reader), watch(runWatch), whereToStop(atEnd) {
    input.Open();
    input.Rewind();
  }
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;
  // Leaves the input as every pass does. What the host throws here comes too late to matter: the
  // answer has been found, or something was thrown before.
  ~LineReader() {
    watch.NoteEnd(ORXPassResult::Complete, "", input.Position());
    try {
      input.ClearEndOfFile();
      if (whereToStop == AtEnd::Rewind) input.Rewind();
      input.Close();
    } catch (const HostThrew&) {
      return;
    }
  }

  // False at the end of the data, and when the input stands still. A line of which not even the
  // first byte can be read is empty; two of them in a row are the end.
  [[nodiscard]] bool ReadLine() {
    if (!input.IsReadable()) return false;
    const bool couldRead = lineWasRead;
    lineWasRead = ReadBytes();
    return lineWasRead || couldRead;
  }
  // The line read last; valid until the next.
  [[nodiscard]] std::string_view Line() const noexcept { return line; }

private:
  // False when not a single byte could be read.
  bool ReadBytes() {
    line.clear();
    char byte = 0;
    if (!input.ReadByte(byte)) return false;
    if (byte == '\0' || byte == '\r') return true;
    while (byte != '\n' && input.HasMoreData()) {
      if (line.size() < kMaxTextBytes) line += byte == '\t' ? ' ' : byte;
      if (!input.ReadByte(byte) && input.HasMoreData()) break;
      if (byte == '\r') break;
    }
    return true;
  }

  InputReader& input;
  RunWatch& watch;
  const AtEnd whereToStop;
  std::string line;
  bool lineWasRead = true;
};

bool Contains(std::string_view line, std::string_view text) noexcept {
  return line.find(text) != std::string_view::npos;
}

std::string_view AfterColon(std::string_view line) noexcept {
  const std::size_t colon = line.find(':');
  return colon == std::string_view::npos ? std::string_view() : line.substr(colon + 1);
}

// The text behind the first colon, cut at spaces. A field is ended by a space once it holds a
// character; what is left at the end of the line was not ended.
struct Fields {
  std::size_t endedCount = 0;
  std::string_view first;
  std::string_view second;
  std::string_view lastEnded;
  std::string_view rest;
};

enum class SpacesInFront { Keep, Drop };

Fields SplitFields(std::string_view line, SpacesInFront spaces) noexcept {
  Fields fields;
  std::string_view text = AfterColon(line);
  std::size_t length = 0;  // of the field being read
  while (length < text.size()) {
    if (text[length] != ' ') {
      ++length;
    } else if (length == 0 && spaces == SpacesInFront::Drop) {
      text.remove_prefix(1);
    } else if (length == 0) {
      ++length;
    } else {
      fields.lastEnded = text.substr(0, length);
      ++fields.endedCount;
      if (fields.endedCount == 1) fields.first = fields.lastEnded;
      if (fields.endedCount == 2) fields.second = fields.lastEnded;
      text.remove_prefix(length + 1);
      length = 0;
    }
  }
  fields.rest = text;
  return fields;
}

// The upper right corner of a box comment: the third and fourth of the integers behind the colon.
struct UpperRight {
  std::int32_t x;
  std::int32_t y;
};

UpperRight ParseBox(std::string_view line) noexcept {
  constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
  std::string_view text = AfterColon(line);
  std::int32_t numbers[4] = {};
  for (std::int32_t& number : numbers) {
    const std::size_t begin = std::min(text.find_first_not_of(kWhiteSpace), text.size());
    text.remove_prefix(begin);
    const std::size_t end = std::min(text.find_first_of(kWhiteSpace), text.size());
    number = ParseInteger(text.substr(0, end));
    text.remove_prefix(end);
  }
  return {numbers[2], numbers[3]};
}

// Whether the search for the page count ends with this line. The count is written in any case.
bool ReadPageCount(std::string_view line, unsigned& count) noexcept {
  const Fields fields = SplitFields(line, SpacesInFront::Keep);
  const bool onlyRest = fields.endedCount == 0;
  count = static_cast<unsigned>(ParseInteger(onlyRest ? fields.rest : fields.lastEnded));
  return fields.endedCount <= 1;
}

void KeepLarger(float& result, float size) noexcept {
  if (size > result) result = size;
}

}  // namespace

bool ORXPrintEPSInterpreter::FindPageCount(unsigned& count) {
  LineReader reader(scanner.input, watch, AtEnd::Rewind);
  while (reader.ReadLine()) {
    const std::string_view line = reader.Line();
    if (!Contains(line, "%%Pages: ") || Contains(line, "(atend)")) continue;
    if (ReadPageCount(line, count)) return true;
  }
  return false;
}

bool ORXPrintEPSInterpreter::FindPageSize(float& width, float& height) {
  unsigned pageCount = 0;
  static_cast<void>(FindPageCount(pageCount));
  unsigned page = 0;
  LineReader reader(scanner.input, watch, AtEnd::LeaveThere);
  while (reader.ReadLine()) {
    const std::string_view line = reader.Line();
    if (Contains(line, "%%EOF")) break;
    if (Contains(line, "%%Page:")) ++page;
    const bool isDocumentBox = Contains(line, "%%BoundingBox: ");
    const bool isPageBox = Contains(line, "%%PageBoundingBox: ");
    if ((!isDocumentBox && !isPageBox) || Contains(line, "(atend)")) continue;
    const UpperRight corner = ParseBox(line);
    const float x = static_cast<float>(corner.x) * canvas.unitScale;
    const float y = static_cast<float>(corner.y) * canvas.unitScale;
    if (AllPagesFlag() == 1) {
      if (page > pageCount) continue;
      KeepLarger(width, x);
      KeepLarger(height, y);
      if (isDocumentBox) break;
    } else if (AllPagesFlag() == 0) {
      if (!isDocumentBox && page != SelectedPage()) continue;
      width = x;
      height = y;
      if (isPageBox) break;
    }
  }
  return width != 0.0F && height != 0.0F;
}

bool ORXPrintEPSInterpreter::FindPageLabel(ORXUnicodeString& label) {
  LineReader reader(scanner.input, watch, AtEnd::Rewind);
  while (reader.ReadLine()) {
    const std::string_view line = reader.Line();
    if (!Contains(line, "%%Page:")) continue;
    const Fields fields = SplitFields(line, SpacesInFront::Drop);
    std::string_view ordinal;
    if (fields.endedCount == 1 && !fields.rest.empty()) {
      ordinal = fields.rest;
    } else if (fields.endedCount == 2) {
      ordinal = fields.second;
    } else {
      continue;
    }
    if (static_cast<std::uint32_t>(ParseInteger(ordinal)) == SelectedPage()) {
      label = ORXUnicodeString(ORXString(fields.first));
      return true;
    }
  }
  return false;
}

// Runs a query as a visit of its own. Whether it found an answer, as 1 or 0.
template <typename Query>
int ORXPrintEPSInterpreter::Answer(Query query) noexcept {
  if (isVisited || !scanner.input.HasStream()) return 0;
  const Visit visit(isVisited);
  watch.BeginPass();
  bool found = false;
  try {
    found = query();
  } catch (const std::bad_alloc&) {
    watch.NoteEnd(ORXPassResult::OutOfMemory, "VMerror", scanner.input.Position());
  } catch (const HostThrew&) {
    watch.NoteEnd(ORXPassResult::HostThrew, "", scanner.input.Position());
  }
  watch.EndPass();
  return found ? 1 : 0;
}

int ORXPrintEPSInterpreter::GetPageCount(unsigned* count) noexcept {
  return Answer([&] { return FindPageCount(*count); });
}

int ORXPrintEPSInterpreter::GetPageSize(float* width, float* height) noexcept {
  return Answer([&] { return FindPageSize(*width, *height); });
}

int ORXPrintEPSInterpreter::GetPageLabel(ORXUnicodeString& label) noexcept {
  return Answer([&] { return FindPageLabel(label); });
}

}  // namespace orxeps
