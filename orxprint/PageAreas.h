// Which part of the plane each page of a drawing shows.
//
// Made for a document before it is drawn, from its comments and the interpreter's answers; it keeps
// copies of the boxes, so that a run may look after the session has ended.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "drawing/Geometry.h"
#include "orxprint/CommandLine.h"
#include "orxprint/Session.h"

namespace orxprint {

// The box is that of the page or the document, the high-resolution one where that is wanted and
// stated; without one the page from its origin serves, and without that the extent of what is
// drawn, which somebody has to measure.
class PageAreas {
public:
  // Asks the interpreter about the pages of these numbers where their comments say too little.
  PageAreas(Session& session, Area wantedArea, Units units,
            const std::vector<std::uint32_t>& numbers);

  // Whether a page of these numbers has no area until it is measured.
  [[nodiscard]] bool NeedMeasuring() const { return needMeasuring; }
  // Takes what the page's shapes cover, in points.
  void TakeExtent(std::uint32_t number, const std::optional<Box>& extent);
  // In points; none for a page that nothing gives an area.
  [[nodiscard]] std::optional<Box> Of(std::uint32_t number) const;

private:
  [[nodiscard]] std::optional<Box> BoxOf(std::uint32_t number) const;
  [[nodiscard]] std::optional<Box> StatedAreaOf(std::uint32_t number) const;
  void AskForSizes(Session& session, Units units, std::vector<std::uint32_t> numbers);

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

}  // namespace orxprint
