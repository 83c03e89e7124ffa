#include "orxprint/UsageHints.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <string_view>
#include <utility>

#include "orxprint/Files.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

// Whether one word becomes the other by at most two letters more, fewer or other.
bool AreAlike(std::string_view a, std::string_view b) {
  constexpr std::size_t kMostEdits = 2;
  std::vector<std::size_t> edits(b.size() + 1);  // from the beginning of a to those of b
  std::iota(edits.begin(), edits.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(edits[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = edits[j + 1];
      edits[j + 1] = std::min({replaced, edits[j] + 1, edits[j + 1] + 1});
    }
  }
  return edits.back() <= kMostEdits;
}

}  // namespace

bool TellOfUnknownCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (!app.get_subcommands().empty()) return false;
  const auto word =
      std::find_if(std::next(arguments.begin(), arguments.empty() ? 0 : 1), arguments.end(),
                   [](const std::string& argument) { return !argument.starts_with('-'); });
  if (word == arguments.end()) return false;
  Tell("'" + *word + "' is no command");
  if (StatusOf(PathOf(*word)).kind != FileKind::None) {
    Tell(*word, "to draw this file, write: orxprint render " + *word);
    return true;
  }
  for (const CLI::App* command : app.get_subcommands({})) {
    if (AreAlike(command->get_name(), *word)) Tell("did you mean " + command->get_name() + "?");
  }
  return true;
}

void HintAtNamesWithDash(const std::vector<std::string>& arguments) {
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument.size() < 2 || argument[0] != '-') continue;
    if (StatusOf(PathOf(argument)).kind == FileKind::None) continue;
    Tell(argument, "to name this file, write ./" + argument);
  }
}

}  // namespace orxprint
