// Lists of pages as people write them: "1,3-5,7-".
//
// Parsed before any document is opened, and applied to each document's page count afterwards, since
// an open range ends where the document does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orxprint {

// Pages count from 1. A range without a last page goes on to the document's end.
struct PageRange {
  std::uint32_t first = 1;
  std::optional<std::uint32_t> last;

  friend bool operator==(const PageRange&, const PageRange&) = default;
};

using PageList = std::vector<PageRange>;

// More pages than this are not selected at once.
inline constexpr std::uint32_t kMostSelectedPages = 100'000;

// None when the text is no list of pages, page 0 and ranges that run backwards included.
[[nodiscard]] std::optional<PageList> ParsePageList(std::string_view text);

// Whether a page that the list names again is selected again.
enum class Repeats { Left, Kept };

// The pages of the list in its order. Throws Failure, naming `pageCount`, when the list asks for a
// page behind it, and when it selects more than kMostSelectedPages.
[[nodiscard]] std::vector<std::uint32_t> SelectPages(const PageList& list, std::uint32_t pageCount,
                                                     Repeats repeats = Repeats::Left);

}  // namespace orxprint
