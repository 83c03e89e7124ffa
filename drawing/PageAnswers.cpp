#include "drawing/PageAnswers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace orxdrawing {

namespace {

// A page comment that makes the page behind it the first one.
constexpr std::string_view kFirstPage = "%%Page: 1 1\n";
// Lines with more fields name no page.
constexpr std::size_t kMostFields = 3;

bool Contains(std::string_view line, std::string_view word) {
  return line.find(word) != std::string_view::npos;
}

std::optional<PageSize> AskSize(ORXPrintInterpreter& interpreter) {
  PageSize size;
  if (interpreter.GetPageSize(&size.width, &size.height) == 0) return std::nullopt;
  return size;
}

std::optional<std::uint32_t> AskCount(ORXPrintInterpreter& interpreter) {
  unsigned count = 0;
  if (interpreter.GetPageCount(&count) == 0) return std::nullopt;
  return count;
}

// The number at the start of a field, 0 when there is none. Saturates as the library's does.
std::uint32_t NumberOf(std::string_view field) {
  std::int32_t number = 0;
  if (field.starts_with('+')) field.remove_prefix(1);
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
  if (error == std::errc::result_out_of_range)
    number = field.starts_with('-') ? INT32_MIN : INT32_MAX;
  return static_cast<std::uint32_t>(number);
}

}  // namespace

Questioner::Questioner(std::string_view commentLines, ORXPrintInterpreter& itsInterpreter,
                       ShowText showText)
    : lines(commentLines), interpreter(itsInterpreter), show(std::move(showText)) {
  bool ended = false;
  for (std::string_view rest = lines; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
    const std::string_view line = rest.substr(0, end + 1);
    rest.remove_prefix(end + 1);
    if (Contains(line, "%%Page:")) TakePageLine(line);
    ended = ended || Contains(line, "%%EOF");
    if (!ended) TakeLine(line);
  }
}

void Questioner::TakePageLine(std::string_view line) {
  std::string_view rest = line.substr(0, line.size() - 1);
  rest.remove_prefix(std::min(rest.find(':') + 1, rest.size()));
  std::array<std::uint32_t, kMostFields> numbers{};
  std::size_t count = 0;
  while (true) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    if (rest.empty()) break;
    if (count == kMostFields) return;
    const std::size_t length = std::min(rest.find_first_of(" \t"), rest.size());
    numbers[count++] = NumberOf(rest.substr(0, length));
    rest.remove_prefix(length);
  }
  std::sort(numbers.begin(), numbers.begin() + count);
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0 && numbers[i] == numbers[i - 1]) continue;
    labelLines[numbers[i]] += line;
  }
}

void Questioner::TakeLine(std::string_view line) {
  const bool isPageLine = Contains(line, "%%Page:");
  if (isPageLine) ++pageComments;
  if (Contains(line, "(atend)")) return;
  if (Contains(line, "%%BoundingBox: ")) documentSizeLine = line;
  if (!Contains(line, "%%PageBoundingBox: ")) return;
  const auto [place, isNew] = sizeLines.try_emplace(pageComments);
  if (!isNew) return;
  if (!isPageLine) place->second = kFirstPage;
  place->second += line;
}

PageAnswers Questioner::AskAboutDocument() {
  show(lines);
  interpreter.SetAllPages(1);
  PageAnswers answers;
  answers.count = AskCount(interpreter);
  answers.size = AskSize(interpreter);
  return answers;
}

PageAnswers::Page Questioner::AskAboutPage(std::uint32_t page) {
  interpreter.SetAllPages(0);
  PageAnswers::Page answer;
  if (const auto found = labelLines.find(page); found != labelLines.end()) {
    show(found->second);
    interpreter.SetCurrentPage(page);
    ORXUnicodeString label;
    if (interpreter.GetPageLabel(label) != 0) answer.label = label.ToUtf8();
  }
  const auto found = sizeLines.find(page);
  show(found == sizeLines.end() ? documentSizeLine : found->second);
  interpreter.SetCurrentPage(found == sizeLines.end() ? 0 : 1);
  answer.size = AskSize(interpreter);
  return answer;
}

}  // namespace orxdrawing
