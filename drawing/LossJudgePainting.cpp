// What the judge makes of what was lost when something is painted: then it shows, or never.
#include <algorithm>
#include <cmath>

#include "drawing/JudgedGraphics.h"
#include "drawing/LossJudge.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72.0;
constexpr double kClipTolerance = 0.5;  // points
// Lines below this width all look alike, and corners of lines below that one.
constexpr double kHairlineMillimetres = 0.12;
constexpr double kCornerMillimetres = 1.2;
// Less than half a pixel of a hundredth of an inch is not seen.
constexpr double kLeastMillimetres = 0.127;
constexpr double kThinPoints = 0.001;

bool IsOutside(const ORXExtent& extent, const Box& box) {
  return extent.left < box.left - kClipTolerance || extent.bottom < box.bottom - kClipTolerance ||
         extent.right > box.right + kClipTolerance || extent.top > box.top + kClipTolerance;
}

// The largest box of the same middle and shape inside an ellipse that fills the box.
Box CoreOf(const Box& box) {
  constexpr double kCut = (1 - 0.7071) / 2;
  return {box.left + kCut * box.Width(), box.bottom + kCut * box.Height(),
          box.right - kCut * box.Width(), box.top - kCut * box.Height()};
}

}  // namespace

void LossJudge::CountPending(const ORXWatchable& interpreter) {
  if (pending.empty()) return;
  const LossPlace now = PlaceIn(interpreter);
  for (const Pending& waiting : pending) {
    if (!waiting.countsAnyway && waiting.origin.place.token != now.token) continue;
    findings.Add(waiting.origin.loss, waiting.origin.name, waiting.origin.place);
  }
  pending.clear();
}

void LossJudge::JudgeColor(const Settings& settings, const ORXGraphics& graphics) {
  const Origin& origin = origins[settings.color];
  if (settings.color == 0 || origin.isCounted) return;
  const Color now = ColorIn(graphics);
  const bool isOverruled = !IsNear(now, origin.instead);
  if (isOverruled || (origin.isKnown && IsNear(now, origin.wanted))) return;
  Count(settings.color);
}

void LossJudge::JudgeClips(const Settings& settings, const ORXExtent& extent) {
  if (extent.left > extent.right) return;
  int depth = 0;
  for (std::uint32_t clip = settings.clip; clip != 0 && ++depth < 64; clip = origins[clip].outer) {
    const Origin& origin = origins[clip];
    if (IsOutside(extent, origin.isRectangle ? origin.extent : CoreOf(origin.extent))) Count(clip);
  }
}

void LossJudge::JudgeWidth(const Settings& settings, const ORXGraphics& graphics,
                           const ORXWatchable& interpreter) {
  constexpr float kDefaultWidth = 0.1F;
  const bool isDefault = graphics.lineWidth == kDefaultWidth;
  if (isDefault && settings.isHairline) return;
  const auto& m = graphics.matrix;
  const double scale = std::sqrt(std::fabs(m[0] * m[3] - m[1] * m[2]));
  const double asked = isDefault ? 1.0 : graphics.lineWidth / graphics.unitScale;
  const double meant = asked * scale * kMillimetresPerPoint;
  const double drawn =
      graphics.unitScale == 1.0F ? graphics.lineWidth * kMillimetresPerPoint : graphics.lineWidth;
  if (settings.join != 0 && drawn >= kCornerMillimetres && graphics.pathPoints > 2) {
    Count(settings.join);
  }
  if (meant <= 0 || std::max(drawn, meant) < kHairlineMillimetres) return;
  const double ratio = drawn / meant;
  const double away = std::max(ratio, 1 / ratio);
  if (away < 1.1 || std::fabs(drawn - meant) < kLeastMillimetres) return;
  Finding& finding = findings.Add(away >= 2 ? Loss::WidthWrong : Loss::WidthOff, "setlinewidth",
                                  PlaceIn(interpreter));
  const double before = finding.ratio > 0 ? std::max(finding.ratio, 1 / finding.ratio) : 0;
  if (away > before) finding.ratio = ratio;
}

void LossJudge::Painting(const ORXGraphics& graphics, const ORXExtent& extent,
                         ORXWatchable& interpreter) {
  CountPending(interpreter);
  const Settings& settings = SettingsOf(graphics);
  JudgeClips(settings, extent);
  Count(settings.matrix);
  Extend(extent, graphics.unitScale);
}

void LossJudge::Stroking(ORXWatchable& interpreter) {
  const ORXGraphics graphics = interpreter.Graphics();
  if (graphics.pathPoints < 1) return;
  ++findings.summary.strokes;
  Painting(graphics, interpreter.PathExtent(), interpreter);
  const Settings& settings = SettingsOf(graphics);
  JudgeColor(settings, graphics);
  Count(settings.dash);
  JudgeWidth(settings, graphics, interpreter);
}

void LossJudge::Filling(ORXWatchable& interpreter) {
  const ORXGraphics graphics = interpreter.Graphics();
  ++findings.summary.fills;
  Painting(graphics, interpreter.PathExtent(), interpreter);
  JudgeColor(SettingsOf(graphics), graphics);
}

void LossJudge::DrawingImage(float x, float y, const ORXPixelImage& image,
                             ORXWatchable& interpreter) {
  const ORXGraphics graphics = interpreter.Graphics();
  ++findings.summary.images;
  const double scale = graphics.unitScale;
  const double width = std::fabs(double{image.GetXPixelSize()} * image.Width()) / scale;
  const double height = std::fabs(double{image.GetYPixelSize()} * image.Height()) / scale;
  if (width < kThinPoints || height < kThinPoints) {
    CountAt(Loss::ImageThin, "image", interpreter);
  }
  const double left = x / scale;
  const double bottom = y / scale;
  Painting(graphics, {left, bottom, left + width, bottom + height}, interpreter);
}

void LossJudge::Extend(const ORXExtent& extent, double unitScale) {
  const Box box = {extent.left * unitScale, extent.bottom * unitScale, extent.right * unitScale,
                   extent.top * unitScale};
  const bool isFinite = std::isfinite(box.Width()) && std::isfinite(box.Height());
  if (extent.left > extent.right || !isFinite) return;
  DrawingSummary& summary = findings.summary;
  if (!summary.hasExtent) {
    summary.extent = box;
    summary.hasExtent = true;
  }
  Box& all = summary.extent;
  all = {std::min(all.left, box.left), std::min(all.bottom, box.bottom),
         std::max(all.right, box.right), std::max(all.top, box.top)};
}

}  // namespace orxdrawing
