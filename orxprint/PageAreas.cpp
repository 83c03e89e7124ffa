#include "orxprint/PageAreas.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "orxprint/PageAnswers.h"

namespace orxprint {

namespace {

constexpr double kLeastSide = 1;  // points

std::optional<Box> FromOrigin(const std::optional<PageSize>& size, Units units) {
  if (!size || !(size->width > 0) || !(size->height > 0)) return std::nullopt;
  // Sizes are whole points in the document, which single precision has blurred.
  const auto points = [units](float length) {
    return std::round(length * units.pointsPerUnit * 1000) / 1000;
  };
  return Box{0, 0, points(size->width), points(size->height)};
}

// The library's page sizes: those of single pages, and the one that serves where they are missing.
class PageSizes {
public:
  PageSizes(const Session& session, const std::vector<PageToWrite>& pages, Units sizeUnits)
      : units(sizeUnits), differ(session.Source().Comments().MentionPageBoxes()) {
    std::vector<std::uint32_t> numbers;
    const std::size_t count = differ ? std::min<std::size_t>(pages.size(), kMostAskedPages) : 1;
    for (std::size_t i = 0; i < count; ++i) numbers.push_back(pages[i].number);
    answers = session.Ask([numbers](const PageAnswers&) { return numbers; });
  }

  // REQUIRES: `index` is the page's place among the pages asked about.
  [[nodiscard]] std::optional<Box> Of(std::size_t index) const {
    std::optional<Box> own;
    if (!differ) index = 0;
    if (index < answers.pages.size()) own = FromOrigin(answers.pages[index].size, units);
    return own ? own : FromOrigin(answers.size, units);
  }

private:
  Units units;
  bool differ;  // without page boxes one page's answer is every page's
  PageAnswers answers;
};

// A line without width and a single dot have an extent, too.
Box AtLeastVisible(Box box) {
  box.right = std::max(box.right, box.left + kLeastSide);
  box.top = std::max(box.top, box.bottom + kLeastSide);
  return box;
}

}  // namespace

void ChooseAreas(const Session& session, Area area, Units units, std::vector<PageToWrite>& pages) {
  const DocumentComments& comments = session.Source().Comments();
  std::optional<PageSizes> sizes;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    PageToWrite& page = pages[i];
    std::optional<Box> chosen;
    if (area == Area::Box) chosen = comments.BoxOfPage(page.number);
    if (!chosen && area != Area::Drawing) {
      if (!sizes) sizes.emplace(session, pages, units);
      chosen = sizes->Of(i);
    }
    if (!chosen) {
      chosen = page.list->Extent(page.page, units.pointsPerUnit);
      if (chosen) chosen = AtLeastVisible(*chosen);
    }
    if (!chosen) chosen = comments.BoxOfPage(page.number);
    if (!chosen) throw Failure("the document says no size and draws nothing");
    page.area = *chosen;
  }
}

}  // namespace orxprint
