#include "orxprint/PageAreas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/Extent.h"

namespace orxprint {

namespace {

std::optional<Box> FromOrigin(const std::optional<PageSize>& size, Units units) {
  if (!size || !(size->width > 0) || !(size->height > 0)) return std::nullopt;
  // Sizes are whole points in the document, which single precision has blurred.
  const auto points = [units](float length) {
    return std::round(length * units.pointsPerUnit * 1000) / 1000;
  };
  return Box{0, 0, points(size->width), points(size->height)};
}

std::optional<Box> Find(const std::map<std::uint32_t, Box>& boxes, std::uint32_t number) {
  const auto found = boxes.find(number);
  return found == boxes.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

PageAreas::PageAreas(Session& session, Area wantedArea, Units units,
                     const std::vector<std::uint32_t>& numbers)
    : area(wantedArea),
      documentBox(session.Source().Comments().box),
      pageBoxes(session.Source().Comments().pageBoxes),
      fineBox(session.Source().Comments().fineBox),
      finePageBoxes(session.Source().Comments().finePageBoxes) {
  const auto isStated = [this](std::uint32_t number) { return StatedAreaOf(number).has_value(); };
  if (area != Area::Drawing && !std::all_of(numbers.begin(), numbers.end(), isStated)) {
    AskForSizes(session, units, numbers);
  }
  needMeasuring = !std::all_of(numbers.begin(), numbers.end(), isStated);
}

// Without page boxes one page's answer is every page's.
void PageAreas::AskForSizes(Session& session, Units units, std::vector<std::uint32_t> numbers) {
  const bool differ = session.Source().Comments().MentionPageBoxes();
  numbers.resize(std::min<std::size_t>(numbers.size(), differ ? kMostAskedPages : 1));
  const PageAnswers answers = session.Ask([&numbers](const PageAnswers&) { return numbers; });
  documentSize = FromOrigin(answers.size, units);
  for (std::size_t i = 0; i < answers.pages.size(); ++i) {
    const std::optional<Box> own = FromOrigin(answers.pages[i].size, units);
    if (own && differ) pageSizes[numbers[i]] = *own;
    if (own && !differ) documentSize = own;
  }
}

void PageAreas::TakeExtent(std::uint32_t number, const std::optional<Box>& extent) {
  if (extent) extents[number] = orxdrawing::AtLeastVisible(*extent);
}

std::optional<Box> PageAreas::BoxOf(std::uint32_t number) const {
  const bool isFine = area == Area::HighResolution;
  for (const std::optional<Box>& box : {isFine ? Find(finePageBoxes, number) : std::nullopt,
                                        Find(pageBoxes, number), isFine ? fineBox : std::nullopt}) {
    if (box) return box;
  }
  return documentBox;
}

std::optional<Box> PageAreas::StatedAreaOf(std::uint32_t number) const {
  if (area == Area::Drawing) return std::nullopt;
  if (area != Area::Page) {
    if (const std::optional<Box> box = BoxOf(number)) return box;
  }
  const std::optional<Box> size = Find(pageSizes, number);
  return size ? size : documentSize;
}

std::optional<Box> PageAreas::Of(std::uint32_t number) const {
  if (const std::optional<Box> stated = StatedAreaOf(number)) return stated;
  const std::optional<Box> extent = Find(extents, number);
  return extent ? extent : BoxOf(number);
}

}  // namespace orxprint
