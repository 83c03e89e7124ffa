// What the library answers about a document's pages, asked under the limits of the command.
//
// Every query of the library reads the document anew, so the questions go to an interpreter over
// the document's comment lines alone, which answers the same.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orxprint/InterpreterRun.h"

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

[[nodiscard]] PageAnswers AskAboutDocument(const Plugin& plugin, const Document& document,
                                           const Limits& limits);
// The same and the answers about single pages; there may be fewer when a limit stopped the asking.
[[nodiscard]] PageAnswers AskAboutPages(const Plugin& plugin, const Document& document,
                                        const Limits& limits, std::vector<std::uint32_t> pages);

}  // namespace orxprint
