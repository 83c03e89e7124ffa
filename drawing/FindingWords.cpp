#include "drawing/FindingWords.h"

#include <cmath>

#include "drawing/Text.h"

namespace orxdrawing {

namespace {

std::string Tenths(double value) { return ShortNumber(std::round(value * 10) / 10); }

std::string Counted(std::uint64_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

bool IsVisible(const Finding& finding) {
  return KindOf(finding.loss).severity > Severity::NoEffect;
}

std::string MeaningOf(const Finding& finding) {
  std::string text(KindOf(finding.loss).means);
  if (finding.ratio > 0) {
    text =
        finding.ratio >= 1
            ? "lines are up to " + Tenths(finding.ratio) + " times as wide as meant: " + text
            : "lines are down to 1/" + Tenths(1 / finding.ratio) + " of the width meant: " + text;
  }
  if (!finding.detail.empty()) text += " (" + finding.detail + ")";
  return text;
}

std::string DescribeDrawing(const DrawingSummary& summary, double millimetresPerUnit) {
  std::string text = Counted(summary.strokes, "stroke") + ", " + Counted(summary.fills, "fill") +
                     ", " + Counted(summary.images, "image");
  if (!summary.hasExtent) return text;
  const auto length = [=](double value) { return Tenths(value * millimetresPerUnit); };
  const Box& extent = summary.extent;
  return text + ", " + length(extent.left) + ".." + length(extent.right) + " x " +
         length(extent.bottom) + ".." + length(extent.top) + " mm";
}

}  // namespace orxdrawing
