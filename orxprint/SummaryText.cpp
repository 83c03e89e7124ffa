#include "orxprint/SummaryText.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/Text.h"
#include "orxprint/JsonText.h"

namespace orxprint {

namespace {

using orxdrawing::PageSummary;
using orxdrawing::ShortNumber;
using orxdrawing::Tally;

// So many of a kind are told to people.
constexpr std::size_t kMostToldApart = 8;

// The most frequent first.
template <typename Key>
std::vector<std::pair<Key, std::uint64_t>> Sorted(const Tally<Key>& tally) {
  std::vector<std::pair<Key, std::uint64_t>> sorted(tally.Counts().begin(), tally.Counts().end());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& a, const auto& b) { return a.second > b.second; });
  return sorted;
}

template <typename Key, typename Describe>
std::string ListForPeople(const Tally<Key>& tally, Describe describe) {
  std::string text;
  std::size_t told = 0;
  for (const auto& [key, count] : Sorted(tally)) {
    if (told++ == kMostToldApart) break;
    text += (text.empty() ? "" : ", ") + describe(key) + " (" + std::to_string(count) + ")";
  }
  const std::size_t all = tally.Counts().size();
  if (all > kMostToldApart) {
    text += ", " + std::to_string(all - kMostToldApart) + (tally.Others() > 0 ? "+ more" : " more");
  }
  return text;
}

template <typename Key, typename Convert>
Json ListForPrograms(const Tally<Key>& tally, const char* key, Convert convert) {
  Json list = Json::array();
  for (const auto& [value, count] : Sorted(tally)) {
    list.push_back({{key, convert(value)}, {"shapes", count}});
  }
  return list;
}

std::string Counted(std::uint64_t count, std::string_view what) {
  return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace

std::string SummaryForPeople(const PageSummary& page) {
  std::string text = "Page " + std::to_string(page.page) + ": " + Counted(page.strokes, "stroke") +
                     ", " + Counted(page.fills, "fill") + ", " + Counted(page.images, "image") +
                     ", " + Counted(page.points, "point") + "\n";
  if (page.extent) text += "  Extent: " + orxdrawing::DescribeInMillimetres(*page.extent) + "\n";
  const auto inMillimetres = [](float width) { return ShortNumber(width) + " mm"; };
  if (page.strokes > 0) text += "  Widths: " + ListForPeople(page.widths, inMillimetres) + "\n";
  const auto asItIs = [](const std::string& colour) { return colour; };
  if (page.strokes + page.fills > 0) {
    text += "  Colours: " + ListForPeople(page.colours, asItIs) + "\n";
  }
  return text;
}

std::string SummaryForPrograms(const PageSummary& page) {
  const auto asNumber = [](float width) {
    return std::isfinite(width) ? Json(std::round(width * 1e6) / 1e6) : Json();
  };
  const auto asText = [](const std::string& colour) { return Json(colour); };
  Json object = {{"page", page.page},
                 {"strokes", page.strokes},
                 {"fills", page.fills},
                 {"images", page.images},
                 {"points", page.points},
                 {"extent", page.extent ? MillimetresOf(*page.extent) : Json()},
                 {"widths", ListForPrograms(page.widths, "widthMm", asNumber)},
                 {"colours", ListForPrograms(page.colours, "colour", asText)}};
  if (page.widths.Others() > 0) object["shapesOfOtherWidths"] = page.widths.Others();
  if (page.colours.Others() > 0) object["shapesOfOtherColours"] = page.colours.Others();
  return Dump(object, -1);
}

}  // namespace orxprint
