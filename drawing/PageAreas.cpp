#include "drawing/PageAreas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/Extent.h"

namespace orxdrawing {

namespace {

std::optional<Box> FromOrigin(const std::optional<PageSize>& size, double pointsPerUnit) {
  if (!size || !(size->width > 0) || !(size->height > 0)) return std::nullopt;
  // Sizes are whole points in the document, which single precision has blurred.
  const auto points = [pointsPerUnit](float length) {
    return std::round(length * pointsPerUnit * 1000) / 1000;
  };
  return Box{0, 0, points(size->width), points(size->height)};
}

std::optional<Box> Find(const std::map<std::uint32_t, Box>& boxes, std::uint32_t number) {
  const auto found = boxes.find(number);
  return found == boxes.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

PageAreas::PageAreas(const DocumentComments& comments, Area wantedArea, double pointsPerUnit,
                     const std::vector<std::uint32_t>& numbers, const AskAboutPages& ask)
    : area(wantedArea),
      documentBox(comments.box),
      pageBoxes(comments.pageBoxes),
      fineBox(comments.fineBox),
      finePageBoxes(comments.finePageBoxes) {
  const auto isStated = [this](std::uint32_t number) { return StatedAreaOf(number).has_value(); };
  if (area != Area::Drawing && !std::all_of(numbers.begin(), numbers.end(), isStated)) {
    // Without page boxes one page's answer is every page's.
    const bool differ = comments.MentionPageBoxes();
    std::vector<std::uint32_t> asked = numbers;
    asked.resize(std::min<std::size_t>(asked.size(), differ ? kMostAskedPages : 1));
    TakeSizes(ask(asked), pointsPerUnit, asked, differ);
  }
  needMeasuring = !std::all_of(numbers.begin(), numbers.end(), isStated);
}

void PageAreas::TakeSizes(const PageAnswers& answers, double pointsPerUnit,
                          const std::vector<std::uint32_t>& numbers, bool differ) {
  documentSize = FromOrigin(answers.size, pointsPerUnit);
  for (std::size_t i = 0; i < answers.pages.size(); ++i) {
    const std::optional<Box> own = FromOrigin(answers.pages[i].size, pointsPerUnit);
    if (own && differ) pageSizes[numbers[i]] = *own;
    if (own && !differ) documentSize = own;
  }
}

void PageAreas::TakeExtent(std::uint32_t number, const std::optional<Box>& extent) {
  if (extent) extents[number] = AtLeastVisible(*extent);
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

}  // namespace orxdrawing
