#include "graphics/Canvas.h"

#include <string_view>

#include "graphics/Units.h"
#include "host/ORXSystem.h"
#include "ps/HostCalls.h"

namespace orxeps {

namespace {

// Every colour goes out under this index.
constexpr int kColorIndex = 255;
// Contours of more coordinates give their memory back.
constexpr std::size_t kCoordinatesKept = std::size_t{1} << 16;

// Device space to output units: in double precision, rounded to single.
FloatPoint ToOutput(const PathPoint& point, double unitScale) noexcept {
  return {static_cast<float>(point.x * unitScale), static_cast<float>(point.y * unitScale)};
}

// Millimetres, whatever the unit of coordinates.
float LineWidthToSend(const GraphicsState& state) noexcept {
  return UnitsAreMillimetres() ? state.lineWidth : state.lineWidth * 25.4F / 72.0F;
}

}  // namespace

bool UnitsAreMillimetres() noexcept {
  const char* setting = ORXGetEnv("ORXPrintOpenPSToMM");
  return !setting || std::string_view(setting) != "0";
}

Canvas::Canvas(MemoryBudget& budget) noexcept
    : states(budget), unitScale(UnitsAreMillimetres() ? kMillimetresPerUnit : 1.0F) {}

void Canvas::NewPage() {
  CallHost([this] { return generator->NewPage(); });
}

void Canvas::DefineColor() const {
  generator->DefineColor(kColorIndex, states.current.red, states.current.green,
                         states.current.blue);
}

void Canvas::SendPath() {
  const double scale = unitScale;
  states.VisitPath([this, scale](std::span<const PathPoint> points) {
    for (const PathPoint& point : points) {
      const FloatPoint output = ToOutput(point, scale);
      if (point.kind == PathPointKind::Move) {
        generator->MoveTo(output.x, output.y);
      } else {
        generator->LineTo(output.x, output.y);
      }
    }
  });
}

void Canvas::Stroke() {
  CallHost([this] {
    DefineColor();
    generator->SetLineColor(kColorIndex);
    generator->SetLineCap(states.current.lineCap);
    generator->SetLineWidth(LineWidthToSend(states.current));
    SendPath();
  });
  states.ClearPath();
}

// A Move begins a contour.
void Canvas::MakeContours() {
  coordinates.resize(states.PathCount() * 2);
  pointCounts.clear();
  float* next = coordinates.data();
  const double scale = unitScale;
  states.VisitPath([&](std::span<const PathPoint> points) {
    for (const PathPoint& point : points) {
      if (point.kind == PathPointKind::Move || pointCounts.empty()) pointCounts.push_back(0);
      ++pointCounts.back();
      const FloatPoint output = ToOutput(point, scale);
      *next++ = output.x;
      *next++ = output.y;
    }
  });
}

bool Canvas::Fill(FillRule rule) {
  CallHost([this] {
    DefineColor();
    return generator->SetFillColor(kColorIndex);
  });
  if (states.PathCount() == 0) return false;
  MakeContours();
  CallHost([this, rule] {
    generator->SetFillRule(static_cast<int>(rule));
    return generator->FillArea(static_cast<int>(pointCounts.size()), pointCounts.data(),
                               coordinates.data());
  });
  states.ClearPath();
  if (coordinates.size() > kCoordinatesKept) {
    coordinates = {};
    pointCounts = {};
  }
  return true;
}

void Canvas::DrawImage(FloatPoint origin, ORXPixelImage& image) const {
  CallHost(
      [&] { return generator->DrawImage(unitScale * origin.x, unitScale * origin.y, 0, &image); });
}

}  // namespace orxeps
