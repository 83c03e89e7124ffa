// What a document drew, kept compactly until it is painted: shapes in the order in which they were
// drawn, their points in one long array, images with samples of their own.
//
// Coordinates and pixel sizes are in the interpreter's units, y upwards; line widths are in
// millimetres. Points are kept as they came, whether finite or not. Every append may throw
// std::bad_alloc and then leaves a list that can still be painted.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

// Samples laid out as ORXPixelImage lays them out.
struct ImageSamples {
  enum class Layout : std::uint8_t { Grey8, Rgb24, Cmyk32, Bilevel1 };

  int width = 0;
  int height = 0;
  Layout layout = Layout::Grey8;
  std::size_t rowBytes = 0;
  std::vector<unsigned char> bytes;

  // REQUIRES: 0 <= row < height.
  [[nodiscard]] std::span<const unsigned char> Row(int row) const {
    return std::span(bytes).subspan(static_cast<std::size_t>(row) * rowBytes, rowBytes);
  }
};

// Samples fill the box from (x, y) to (x + width * xPixelSize, y + height * yPixelSize), the first
// row at the top when yPixelSize is positive; negative sizes mirror.
struct PlacedImage {
  ImageSamples samples;
  float x = 0;
  float y = 0;
  float xPixelSize = 0;
  float yPixelSize = 0;

  // None when the box has no area or is not finite.
  [[nodiscard]] std::optional<Box> Extent() const;
};

struct Shape {
  enum class Kind : std::uint8_t { Stroke, WindingFill, EvenOddFill, Image };

  Kind kind = Kind::Stroke;
  LineCap cap = LineCap::Butt;
  Colour colour;
  float lineWidth = 0;
  std::size_t firstPoint = 0;
  std::size_t firstContour = 0;  // of an image: its place among the images
  std::size_t contourCount = 0;
};

class DisplayList {
public:
  // The next page begins. The first needs no call.
  void NewPage();
  // A stroke without points; contours are added by MoveTo and LineTo.
  void BeginStroke(Colour colour, float lineWidth, LineCap cap);
  // REQUIRES, both: the last shape is a stroke. A line without a point before it starts a contour.
  void MoveTo(float x, float y);
  void LineTo(float x, float y);
  void AddFill(Shape::Kind rule, Colour colour, std::span<const int> pointCounts,
               std::span<const float> coordinates);
  void AddImage(PlacedImage image);

  [[nodiscard]] std::size_t PageCount() const { return pageStarts.size() + 1; }
  [[nodiscard]] std::size_t ShapeCount() const { return shapes.size(); }
  [[nodiscard]] std::size_t PointCount() const { return coordinates.size() / 2; }
  // Pages count from 0 here.
  [[nodiscard]] std::span<const Shape> ShapesOfPage(std::size_t page) const;
  [[nodiscard]] const PlacedImage& ImageOf(const Shape& shape) const {
    return images[shape.firstContour];
  }
  // Calls visit(std::span<const float> coordinates) for each contour.
  template <typename Visitor>
  void VisitContours(const Shape& shape, Visitor visit) const {
    std::size_t first = 2 * shape.firstPoint;
    for (std::size_t i = 0; i < shape.contourCount; ++i) {
      const std::size_t length = 2 * std::size_t{contours[shape.firstContour + i]};
      visit(std::span(coordinates).subspan(first, length));
      first += length;
    }
  }
  // What the page's shapes cover, strokes with their width, in points. None when that is nothing.
  [[nodiscard]] std::optional<Box> Extent(std::size_t page, double pointsPerUnit) const;

private:
  void AddPoint(float x, float y);

  std::vector<Shape> shapes;
  std::vector<std::uint32_t> contours;  // point counts
  std::vector<float> coordinates;       // x and y in turn
  std::vector<PlacedImage> images;
  std::vector<std::size_t> pageStarts;  // the first shape of the second page, of the third ...
};

}  // namespace orxdrawing
