// The way from a place on the paper back to the document, and from the document to the paper.
//
// Keeps everything that was drawn, with the place in the document that drew it, up to a bound on
// its memory. Places on the paper are in points, y upwards; pages count from 1.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "drawing/Geometry.h"
#include "drawing/ShapeList.h"

namespace orxweb {

class ShapeIndex final : public orxdrawing::PlacedSink {
public:
  explicit ShapeIndex(double unitInPoints) : list(unitInPoints) {}

  [[nodiscard]] const orxdrawing::ShapeList& List() const { return list; }
  // False when there were more points than are kept: what came then cannot be found.
  [[nodiscard]] bool IsComplete() const { return isComplete; }

  // The uppermost shape of the page that has ink within `reach` of the point.
  [[nodiscard]] std::optional<std::size_t> At(std::uint32_t page, orxdrawing::Point point,
                                              double reach) const;
  // Whether that shape has.
  [[nodiscard]] bool IsHit(const orxdrawing::ListedShape& shape, orxdrawing::Point point,
                           double reach) const;
  // Its contours as the data of an SVG path.
  [[nodiscard]] std::string OutlineOf(const orxdrawing::ListedShape& shape) const;

  void BeginPage(std::uint32_t number) override {
    PlacedSink::BeginPage(number);
    list.BeginPage(number);
  }
  void Draw(const orxdrawing::StrokeShape& stroke) override;
  void Draw(const orxdrawing::FillShape& fill) override;
  void Draw(const orxdrawing::ImageShape& image) override;

private:
  template <typename AnyShape>
  void Keep(const AnyShape& shape, const orxdrawing::Contours& contours);

  orxdrawing::ShapeList list;
  std::size_t kept = 0;  // bytes
  bool isComplete = true;
};

}  // namespace orxweb
