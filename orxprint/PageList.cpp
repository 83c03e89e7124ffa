#include "orxprint/PageList.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

#include "orxprint/Failure.h"

namespace orxprint {

namespace {

// A whole text of digits, at least 1.
std::optional<std::uint32_t> ParsePage(std::string_view text) {
  std::uint32_t page = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, page);
  if (error != std::errc() || stop != end || page == 0) return std::nullopt;
  return page;
}

std::optional<PageRange> ParseRange(std::string_view text) {
  const std::size_t dash = text.find('-');
  const std::optional<std::uint32_t> first = ParsePage(text.substr(0, dash));
  if (!first) return std::nullopt;
  if (dash == std::string_view::npos) return PageRange{*first, first};
  if (dash + 1 == text.size()) return PageRange{*first, std::nullopt};
  const std::optional<std::uint32_t> last = ParsePage(text.substr(dash + 1));
  if (!last || *last < *first) return std::nullopt;
  return PageRange{*first, last};
}

std::string OutOfRange(std::uint32_t page, std::uint32_t pageCount) {
  return "page " + std::to_string(page) + " is out of range: the document has " +
         std::to_string(pageCount) + (pageCount == 1 ? " page" : " pages");
}

}  // namespace

std::optional<PageList> ParsePageList(std::string_view text) {
  PageList list;
  while (true) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const std::optional<PageRange> range = ParseRange(text.substr(0, comma));
    if (!range) return std::nullopt;
    list.push_back(*range);
    if (comma == text.size()) return list;
    text.remove_prefix(comma + 1);
  }
}

std::vector<std::uint32_t> SelectPages(const PageList& list, std::uint32_t pageCount,
                                       Repeats repeats) {
  std::vector<std::uint32_t> pages;
  std::unordered_set<std::uint32_t> seen;
  for (const PageRange& range : list) {
    const std::uint32_t last = range.last.value_or(std::max(range.first, pageCount));
    if (last > pageCount) throw Failure(OutOfRange(std::max(range.first, last), pageCount));
    if (last - range.first >= kMostSelectedPages - pages.size()) {
      throw Failure("more than " + std::to_string(kMostSelectedPages) + " pages are selected");
    }
    for (std::uint32_t more = 0; more <= last - range.first; ++more) {
      const std::uint32_t page = range.first + more;
      if (seen.insert(page).second || repeats == Repeats::Kept) pages.push_back(page);
    }
  }
  return pages;
}

}  // namespace orxprint
