#include "drawing/ShapeBatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "drawing/LineThinner.h"

namespace orxdrawing {

namespace {

// Wider lines than this paint no other pixels.
constexpr double kMostWidth = 4 << 20;
constexpr double kSquareDiagonal = 1.5;
constexpr std::size_t kManyCoordinates = 100'000;

// Whether four points, or five that end where they began, are a rectangle along the axes.
bool IsUprightRectangle(std::span<const Point> line) {
  if (line.size() != 4 && !(line.size() == 5 && line.front() == line.back())) return false;
  const auto [a, b, c, d] = std::array{line[0], line[1], line[2], line[3]};
  return (a.x == b.x && b.y == c.y && c.x == d.x && d.y == a.y) ||
         (a.y == b.y && b.x == c.x && c.y == d.y && d.x == a.x);
}

void Widen(Box& box, const Point& point) {
  box.left = std::min(box.left, point.x);
  box.right = std::max(box.right, point.x);
  box.bottom = std::min(box.bottom, point.y);
  box.top = std::max(box.top, point.y);
}

// A place so near to `from` that nobody sees the difference.
Point Towards(const Point& from, const Point& to) {
  constexpr double kUnseen = 1.0 / 128;
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const double share = length > kUnseen ? kUnseen / length : 1;
  return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

int PixelAt(double place, int most) { return static_cast<int>(std::clamp<double>(place, 0, most)); }

}  // namespace

std::uint64_t ShapeBatch::Add(const StrokeShape& stroke, PixelColour colour) {
  BatchedShape shape = Begin(BatchedShape::Kind::Stroke, colour);
  const double width =
      std::isnan(stroke.width) ? 0 : stroke.width * kPointsPerMillimetre * frame.pixelsPerPoint;
  shape.width = std::clamp<double>(width, 1, kMostWidth);
  shape.cap = stroke.cap;
  drawn.Clear();
  const Cover cover = AddContours(stroke.contours, shape.width,
                                  [this](std::size_t first, Cover&) { EndLine(first); });
  const bool hasJoins =
      points.size() - shape.firstPoint > 2 * (contours.size() - shape.firstContour);
  End(shape, cover, shape.width / 2 * (hasJoins ? kMiterLimit : kSquareDiagonal));
  return cover.lost;
}

std::uint64_t ShapeBatch::Add(const FillShape& fill, PixelColour colour) {
  BatchedShape shape = Begin(BatchedShape::Kind::Area, colour);
  shape.rule = fill.rule;
  Cover cover = AddContours(
      fill.contours, 0, [this](std::size_t first, Cover& covered) { EndOutline(first, covered); });
  const auto own = std::span(points).subspan(shape.firstPoint);
  if (contours.size() == shape.firstContour + 1 && IsUprightRectangle(own)) {
    shape.kind = BatchedShape::Kind::Rectangle;
    cover.box = {own[0].x, own[0].y, own[2].x, own[2].y};
  }
  End(shape, cover, 0);
  return cover.lost;
}

BatchedShape ShapeBatch::Begin(BatchedShape::Kind kind, PixelColour colour) const {
  BatchedShape shape;
  shape.kind = kind;
  shape.colour = colour;
  shape.firstPoint = points.size();
  shape.firstContour = contours.size();
  return shape;
}

template <typename Ending>
ShapeBatch::Cover ShapeBatch::AddContours(const Contours& from, double width, Ending end) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  Cover cover{{kFar, kFar, -kFar, -kFar}};
  std::size_t next = 0;
  for (const std::size_t length : from.lengths) {
    const std::size_t first = points.size();
    AddContour(from.coordinates.subspan(2 * next, 2 * length), width, cover);
    next += length;
    end(first, cover);
  }
  return cover;
}

void ShapeBatch::AddContour(std::span<const float> coordinates, double width, Cover& cover) {
  const std::size_t most = points.size() + coordinates.size() / 2;
  // Room that doubled as it is needed would be twice as much as a long line takes.
  if (coordinates.size() > kManyCoordinates && most > points.capacity()) {
    points.reserve(std::max(most, points.capacity() / 4 * 5));
  }
  LineThinner line(points, {tolerance, width, frame.Rounding()});
  bool isEmpty = true;
  for (std::size_t i = 0; i < coordinates.size(); i += 2) {
    const Point point = frame.ToPixels(coordinates[i], coordinates[i + 1]);
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
      ++cover.lost;
      continue;
    }
    Widen(cover.box, point);
    if (isEmpty) {
      line.Begin(point);
    } else {
      line.Add(point);
    }
    isEmpty = false;
  }
  line.End();
}

void ShapeBatch::EndLine(std::size_t first) {
  const std::size_t count = points.size() - first;
  if (count < 2) return points.resize(first);
  isNew.clear();
  bool isAllNew = true;
  for (std::size_t i = first + 1; i < points.size(); ++i) {
    isNew.push_back(drawn.Insert(points[i - 1], points[i]));
    isAllNew = isAllNew && isNew.back();
  }
  if (isAllNew) return contours.push_back({count});
  wholeLine.assign(points.begin() + static_cast<std::ptrdiff_t>(first), points.end());
  points.resize(first);
  AddNewPieces(wholeLine);
}

// Where a piece was joined to a segment that is left out, it begins or ends with a bit of that, too
// short to be seen, so that the join stays.
void ShapeBatch::AddNewPieces(std::span<const Point> line) {
  const bool isClosed = line.size() > 2 && line.front() == line.back();
  const std::size_t segments = line.size() - 1;
  for (std::size_t begin = 0; begin < segments;) {
    if (!isNew[begin]) {
      ++begin;
      continue;
    }
    std::size_t end = begin;  // the piece's last point
    while (end < segments && isNew[end]) ++end;
    const bool isCutFirst = begin > 0 || isClosed;
    const bool isCutLast = end < segments || isClosed;
    const std::size_t before = points.size();
    if (isCutFirst)
      points.push_back(Towards(line[begin], line[begin > 0 ? begin - 1 : segments - 1]));
    points.insert(points.end(), line.begin() + static_cast<std::ptrdiff_t>(begin),
                  line.begin() + static_cast<std::ptrdiff_t>(end) + 1);
    if (isCutLast) points.push_back(Towards(line[end], line[end < segments ? end + 1 : 1]));
    contours.push_back({points.size() - before, isCutFirst, isCutLast});
    begin = end;
  }
}

void ShapeBatch::EndOutline(std::size_t first, Cover& cover) {
  if (IsUprightRectangle(std::span(points).subspan(first))) SnapRectangle(first, cover);
  if (points.size() - first < 3) return points.resize(first);
  contours.push_back({points.size() - first});
}

void ShapeBatch::SnapRectangle(std::size_t first, Cover& cover) {
  const auto [a, b, c] = std::array{points[first], points[first + 1], points[first + 2]};
  const auto [left, right] = std::minmax(a.x, c.x);
  const auto [top, bottom] = std::minmax(a.y, c.y);
  const double x = std::round(left);
  const double y = std::round(top);
  const double farX = std::max(std::round(right), x + 1);
  const double farY = std::max(std::round(bottom), y + 1);
  const bool isClockwise = (b.x - a.x) * (c.y - b.y) > (b.y - a.y) * (c.x - b.x);
  points.resize(first);
  points.push_back({x, y});
  points.push_back(isClockwise ? Point{farX, y} : Point{x, farY});
  points.push_back({farX, farY});
  points.push_back(isClockwise ? Point{x, farY} : Point{farX, y});
  Widen(cover.box, {x, y});
  Widen(cover.box, {farX, farY});
}

void ShapeBatch::End(BatchedShape shape, const Cover& cover, double margin) {
  shape.contourCount = contours.size() - shape.firstContour;
  shape.reach = {PixelAt(std::floor(cover.box.left - margin), frame.width),
                 PixelAt(std::floor(cover.box.bottom - margin), frame.height),
                 PixelAt(std::ceil(cover.box.right + margin), frame.width),
                 PixelAt(std::ceil(cover.box.top + margin), frame.height)};
  if (shape.contourCount > 0 && shape.reach.Width() > 0 && shape.reach.Height() > 0) {
    shapes.push_back(shape);
    return;
  }
  points.resize(shape.firstPoint);
  contours.resize(shape.firstContour);
}

void ShapeBatch::Clear() {
  shapes.clear();
  contours.clear();
  points.clear();
  if (points.capacity() > 4 * kMostPoints) points.shrink_to_fit();
  if (contours.capacity() > 4 * kMostPoints) contours.shrink_to_fit();
}

}  // namespace orxdrawing
