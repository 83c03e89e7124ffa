// Two documents, the pages on which they differ, and the differences.
//
// It borrows the documents. Drawn once, then asked; shapes are told by their places in the index of
// their document.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "drawing/Comparison.h"
#include "web/OpenDocument.h"
#include "web/PageSink.h"

namespace orxweb {

class ComparedDocuments {
public:
  ComparedDocuments(OpenDocument& documentBefore, OpenDocument& documentAfter)
      : before(documentBefore), after(documentAfter) {}

  // Draws both, and one page for each that differs. Throws what drawing a document throws.
  void Draw(PageReceiver& receiver, const OpenDocument::Progress& progress);

  [[nodiscard]] const std::vector<orxdrawing::Difference>& Differences() const {
    return differences;
  }
  // The numbers of the pages that were drawn.
  [[nodiscard]] const std::vector<std::uint32_t>& Pages() const { return pages; }
  // The uppermost of the differences that has ink within `reach` of the point, in points.
  [[nodiscard]] std::optional<std::size_t> At(std::uint32_t page, orxdrawing::Point point,
                                              double reach) const;

private:
  void DrawPages(PageReceiver& receiver, const OpenDocument::Progress& progress);
  [[nodiscard]] orxdrawing::Box AreaOf(std::uint32_t page) const;

  OpenDocument& before;
  OpenDocument& after;
  std::vector<orxdrawing::Difference> differences;
  std::vector<std::uint32_t> pages;
};

}  // namespace orxweb
