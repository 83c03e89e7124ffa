#include "orxprint/PageQuestions.h"

#include <utility>

namespace orxprint {

namespace {

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

PageAnswers::Page AskPage(ORXPrintInterpreter& interpreter, std::uint32_t page) {
  interpreter.SetAllPages(0);
  interpreter.SetCurrentPage(page);
  PageAnswers::Page answer;
  ORXUnicodeString label;
  if (interpreter.GetPageLabel(label) != 0) answer.label = label.ToUtf8();
  answer.size = AskSize(interpreter);
  return answer;
}

}  // namespace

PageAnswers AskAboutDocument(const Plugin& plugin, const Document& document, const Limits& limits) {
  return AskAboutPages(plugin, document, limits, {});
}

PageAnswers AskAboutPages(const Plugin& plugin, const Document& document, const Limits& limits,
                          std::vector<std::uint32_t> pages) {
  const auto control = std::make_shared<RunControl>();
  const auto answers = std::make_shared<PageAnswers>();
  UseInterpreter(plugin, document, Reading::CommentsOnly, limits, control,
                 [control, answers, pages = std::move(pages)](ORXPrintInterpreter& interpreter) {
                   interpreter.SetAllPages(1);
                   const std::optional<std::uint32_t> count = AskCount(interpreter);
                   const std::optional<PageSize> size = AskSize(interpreter);
                   control->Enter([&] {
                     answers->count = count;
                     answers->size = size;
                   });
                   for (const std::uint32_t page : pages) {
                     PageAnswers::Page answer = AskPage(interpreter, page);
                     const int status =
                         control->Enter([&] { answers->pages.push_back(std::move(answer)); });
                     if (status != 0) return;
                   }
                 });
  return *answers;
}

}  // namespace orxprint
