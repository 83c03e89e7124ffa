#include "orxprint/CairoPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/ORXPrintPropertiesManager.h"

namespace orxprint {

using orxdrawing::kPointsPerMillimetre;

namespace {

// How far from the origin Cairo still rasterizes lines without fault; pages reach half as far.
constexpr double kSafePixels = 60'000;
// What 24.8 fixed point holds, with room for wide strokes and their joins.
constexpr double kSafePoints = 2'000'000;
constexpr double kMiterLimit = 10;
// Sizes are taken as equal when they differ by no more than this share.
constexpr double kSameSize = 0.001;
// How many shapes are painted between two looks at the clock.
constexpr unsigned kShapesPerLook = 64;

double Clamped(float component) {
  return std::isnan(component) ? 0.0 : std::clamp<double>(component, 0, 1);
}

cairo_line_cap_t CairoCap(LineCap cap) {
  switch (cap) {
    case LineCap::Square:
      return CAIRO_LINE_CAP_SQUARE;
    case LineCap::Round:
      return CAIRO_LINE_CAP_ROUND;
    case LineCap::Butt:
      break;
  }
  return CAIRO_LINE_CAP_BUTT;
}

// The greatest whole number of samples that fit into one pixel, at least 1.
int SamplesInPixel(double pixelsPerSample) {
  return static_cast<int>(std::clamp(1 / pixelsPerSample, 1.0, 1e9));
}

// Whether four points, or five that end where they began, are a rectangle along the axes.
bool IsUprightRectangle(std::span<const Point> line) {
  if (line.size() != 4 && !(line.size() == 5 && line.front() == line.back())) return false;
  const auto [a, b, c, d] = std::array{line[0], line[1], line[2], line[3]};
  return (a.x == b.x && b.y == c.y && c.x == d.x && d.y == a.y) ||
         (a.y == b.y && b.x == c.x && c.y == d.y && d.x == a.x);
}

// The border of whole pixels nearest to a place, in points.
double Snapped(double place, double pixelsPerPoint) {
  return std::round(place * pixelsPerPoint) / pixelsPerPoint;
}

class SavedContext {
public:
  explicit SavedContext(cairo_t* context) : cairo(context) { cairo_save(cairo); }
  SavedContext(const SavedContext&) = delete;
  SavedContext& operator=(const SavedContext&) = delete;
  ~SavedContext() { cairo_restore(cairo); }

private:
  cairo_t* cairo;
};

}  // namespace

void CairoPainter::PaintPage(cairo_t* context, const DisplayList& list, std::size_t page,
                             double pointsPerUnit, const Box& area) {
  cairo = context;
  scale = pointsPerUnit;
  pageArea = area;
  cairo_set_miter_limit(cairo, kMiterLimit);
  unsigned untilLook = 0;
  for (const Shape& shape : list.ShapesOfPage(page)) {
    if (untilLook-- == 0) {
      untilLook = kShapesPerLook;
      LookAtLimits();
    }
    if (losses.stop) return;
    PaintShape(list, shape);
  }
}

void CairoPainter::LookAtLimits() {
  if (losses.stop) return;
  if (deadline && Clock::now() >= *deadline) losses.stop = Stop::TimeLimit;
  // Pixels take no more memory however much is painted on them.
  if (canvas == Canvas::Pixels) return;
  if (ORXPrintPropertiesManager::IsLowMemory(kMemoryShare)) losses.stop = Stop::MemoryLimit;
}

void CairoPainter::PaintShape(const DisplayList& list, const Shape& shape) {
  switch (shape.kind) {
    case Shape::Kind::Stroke:
      return PaintStroke(list, shape);
    case Shape::Kind::WindingFill:
    case Shape::Kind::EvenOddFill:
      return PaintFill(list, shape);
    case Shape::Kind::Image:
      return PaintImage(list.ImageOf(shape));
  }
}

Point CairoPainter::ToPage(float x, float y) const {
  return {x * scale - pageArea.left, pageArea.top - y * scale};
}

double CairoPainter::Reach() const {
  return canvas == Canvas::Pixels ? kSafePixels / pixelsPerPoint : kSafePoints;
}

Box CairoPainter::SafeRange() const { return {-Reach(), -Reach(), Reach(), Reach()}; }

bool CairoPainter::GatherContour(std::span<const float> coordinates) {
  const double reach = Reach();
  bool isSafe = true;
  contour.clear();
  for (std::size_t i = 0; i < coordinates.size(); i += 2) {
    const Point point = ToPage(coordinates[i], coordinates[i + 1]);
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
      ++losses.points;
      continue;
    }
    if (std::abs(point.x) > reach || std::abs(point.y) > reach) isSafe = false;
    contour.push_back(point);
  }
  return isSafe;
}

void CairoPainter::AddLine(std::span<const Point> line) {
  if (line.empty()) return;
  const bool isClosed = line.size() > 2 && line.front() == line.back();
  cairo_move_to(cairo, line.front().x, line.front().y);
  for (const Point& point : line.subspan(1, line.size() - (isClosed ? 2 : 1))) {
    cairo_line_to(cairo, point.x, point.y);
  }
  if (isClosed) cairo_close_path(cairo);
}

void CairoPainter::PaintStroke(const DisplayList& list, const Shape& shape) {
  cairo_new_path(cairo);
  list.VisitContours(shape, [this](std::span<const float> coordinates) {
    if (GatherContour(coordinates)) return AddLine(contour);
    for (const Polyline& piece : ClipLine(contour, SafeRange())) AddLine(piece);
  });
  SetColour(shape.colour);
  const double leastWidth = canvas == Canvas::Pixels ? 1 / pixelsPerPoint : 0;
  const double width = std::isnan(shape.lineWidth) ? 0 : shape.lineWidth * kPointsPerMillimetre;
  cairo_set_line_width(cairo, std::clamp(width, leastWidth, Reach()));
  cairo_set_line_cap(cairo, CairoCap(shape.cap));
  cairo_stroke(cairo);
}

void CairoPainter::PaintFill(const DisplayList& list, const Shape& shape) {
  cairo_new_path(cairo);
  list.VisitContours(shape, [this](std::span<const float> coordinates) {
    if (!GatherContour(coordinates)) contour = ClipArea(contour, SafeRange());
    if (canvas == Canvas::Pixels && IsUprightRectangle(contour)) return AddPixelRectangle();
    AddLine(contour);
    cairo_close_path(cairo);
  });
  SetColour(shape.colour);
  const bool isWinding = shape.kind == Shape::Kind::WindingFill;
  cairo_set_fill_rule(cairo, isWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
  cairo_fill(cairo);
}

void CairoPainter::AddPixelRectangle() {
  const auto [left, right] = std::minmax(contour[0].x, contour[2].x);
  const auto [top, bottom] = std::minmax(contour[0].y, contour[2].y);
  const double x = Snapped(left, pixelsPerPoint);
  const double y = Snapped(top, pixelsPerPoint);
  const double width = std::max(Snapped(right, pixelsPerPoint) - x, 1 / pixelsPerPoint);
  const double height = std::max(Snapped(bottom, pixelsPerPoint) - y, 1 / pixelsPerPoint);
  const bool isClockwise = (contour[1].x - contour[0].x) * (contour[2].y - contour[1].y) >
                           (contour[1].y - contour[0].y) * (contour[2].x - contour[1].x);
  const std::array<Point, 4> corners = {
      {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}};
  cairo_move_to(cairo, x, y);
  for (int step = 1; step < 4; ++step) {
    const Point& corner = corners[static_cast<std::size_t>(isClockwise ? step : 4 - step)];
    cairo_line_to(cairo, corner.x, corner.y);
  }
  cairo_close_path(cairo);
}

void CairoPainter::SetColour(const Colour& colour) {
  cairo_set_source_rgb(cairo, Clamped(colour.red), Clamped(colour.green), Clamped(colour.blue));
}

void CairoPainter::PaintImage(const PlacedImage& image) {
  const std::optional<Box> extent = image.Extent();
  const bool isPaintable =
      extent &&
      std::max({-extent->left, -extent->bottom, extent->right, extent->top}) * scale < kSafePoints;
  if (!isPaintable) {
    ++losses.images;
    return;
  }
  const double pixelsPerUnit = scale * pixelsPerPoint;
  const double pixelsX = std::abs(image.xPixelSize) * pixelsPerUnit;
  const double pixelsY = std::abs(image.yPixelSize) * pixelsPerUnit;
  const bool onPixels = canvas == Canvas::Pixels;
  const Reduction reduction = BoundedReduction(
      image.samples,
      onPixels ? Reduction{SamplesInPixel(pixelsX), SamplesInPixel(pixelsY)} : Reduction{},
      onPixels ? BilevelAs::Colour : BilevelAs::OneBit);
  const SavedContext saved(cairo);
  FillWithImage(image, reduction, std::min(pixelsX * reduction.x, pixelsY * reduction.y));
}

// The image's box as the path.
void CairoPainter::AddOutline(const PlacedImage& image) {
  const double left = image.x * scale - pageArea.left;
  const double bottom = pageArea.top - image.y * scale;
  const double right = left + image.samples.width * double{image.xPixelSize} * scale;
  const double top = bottom - image.samples.height * double{image.yPixelSize} * scale;
  cairo_new_path(cairo);
  AddLine(
      ClipArea(Polyline{{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}},
               SafeRange()));
}

// Works in a space whose unit is a sample, first row at y 0. A surface pixel whose block of samples
// reaches over the image's edge is cut off there.
void CairoPainter::FillWithImage(const PlacedImage& image, Reduction reduction,
                                 double pixelsPerSurfacePixel) {
  const ImageSamples& samples = image.samples;
  const double left = image.x * scale - pageArea.left;
  const double top = pageArea.top - (image.y + samples.height * double{image.yPixelSize}) * scale;
  AddOutline(image);
  cairo_translate(cairo, left, top);
  cairo_scale(cairo, image.xPixelSize * scale, image.yPixelSize * scale);
  if (canvas == Canvas::Pixels) {
    FillWithPixels(samples, reduction, pixelsPerSurfacePixel);
  } else if (canvas == Canvas::Stencils && StaysBilevel(samples, reduction)) {
    FillWithStencil(samples);
  } else {
    FillWithPicture(samples, reduction);
  }
}

// Enlarged samples keep sharp edges; what is finer than the pixels is smoothed.
void CairoPainter::FillWithPixels(const ImageSamples& samples, Reduction reduction,
                                  double pixelsPerSurfacePixel) {
  const SurfacePointer surface = MakeColourSurface(samples, reduction);
  cairo_scale(cairo, reduction.x, reduction.y);
  cairo_set_source_surface(cairo, surface.get(), 0, 0);
  cairo_pattern_t* source = cairo_get_source(cairo);
  const bool isFiner = pixelsPerSurfacePixel < 1 - kSameSize;
  cairo_pattern_set_filter(source, isFiner ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
  cairo_pattern_set_extend(source, CAIRO_EXTEND_PAD);
  cairo_fill(cairo);
}

void CairoPainter::FillWithStencil(const ImageSamples& samples) {
  cairo_set_source_rgb(cairo, 1, 1, 1);
  cairo_fill(cairo);
  const SurfacePointer mask = MakeBlackMask(samples);
  cairo_pattern_t* pattern = cairo_pattern_create_for_surface(mask.get());
  cairo_pattern_set_filter(pattern, CAIRO_FILTER_NEAREST);
  cairo_set_source_rgb(cairo, 0, 0, 0);
  cairo_mask(cairo, pattern);
  cairo_pattern_destroy(pattern);
}

void CairoPainter::FillWithPicture(const ImageSamples& samples, Reduction reduction) {
  if (reduction.IsNone()) {
    cairo_new_path(cairo);
  } else {
    cairo_clip(cairo);
  }
  const SurfacePointer surface = canvas == Canvas::Pictures ? MakePictureSurface(samples, reduction)
                                                            : MakeColourSurface(samples, reduction);
  cairo_scale(cairo, reduction.x, reduction.y);
  cairo_set_source_surface(cairo, surface.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_paint(cairo);
}

}  // namespace orxprint
