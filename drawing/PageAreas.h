// Which part of the plane each page of a drawing shows.
//
// Made for a document before it is drawn, from its comments and the interpreter's answers; it keeps
// copies of the boxes, so that a run may look after the session has ended.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "drawing/DocumentComments.h"
#include "drawing/Geometry.h"
#include "drawing/PageAnswers.h"

namespace orxdrawing {

// What a drawing shows.
enum class Area { Box, HighResolution, Page, Drawing };

// Asks about the document and the pages of these numbers.
using AskAboutPages = std::function<PageAnswers(const std::vector<std::uint32_t>& numbers)>;

// The box is that of the page or the document, the high-resolution one where that is wanted and
// stated; without one the page from its origin serves, and without that the extent of what is
// drawn, which somebody has to measure.
class PageAreas {
public:
  // Of the pages of these numbers, from 1. Asks, at once, where the comments say too little.
  PageAreas(const DocumentComments& comments, Area wantedArea, double pointsPerUnit,
            const std::vector<std::uint32_t>& numbers, const AskAboutPages& ask);

  // Whether a page of these numbers has no area until it is measured.
  [[nodiscard]] bool NeedMeasuring() const { return needMeasuring; }
  // Takes what the page's shapes cover, in points.
  void TakeExtent(std::uint32_t number, const std::optional<Box>& extent);
  // In points; none for a page that nothing gives an area.
  [[nodiscard]] std::optional<Box> Of(std::uint32_t number) const;

private:
  [[nodiscard]] std::optional<Box> BoxOf(std::uint32_t number) const;
  [[nodiscard]] std::optional<Box> StatedAreaOf(std::uint32_t number) const;
  void TakeSizes(const PageAnswers& answers, double pointsPerUnit,
                 const std::vector<std::uint32_t>& numbers, bool differ);

  Area area;
  std::optional<Box> documentBox;
  std::map<std::uint32_t, Box> pageBoxes;
  std::optional<Box> fineBox;
  std::map<std::uint32_t, Box> finePageBoxes;
  std::optional<Box> documentSize;  // as the library answers
  std::map<std::uint32_t, Box> pageSizes;
  std::map<std::uint32_t, Box> extents;
  bool needMeasuring = false;
};

}  // namespace orxdrawing
