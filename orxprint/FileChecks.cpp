#include "orxprint/FileChecks.h"

#include <algorithm>
#include <string_view>

namespace orxprint {

namespace {

using orxdrawing::DrawingSummary;
using orxdrawing::Findings;
using orxdrawing::Loss;

constexpr std::size_t kLongestCommentLine = 255;
// How far a drawing may reach beyond its box, for lines have widths: points, and a share of it.
constexpr double kBeyondPoints = 2;
constexpr double kBeyondShare = 0.02;

void CheckBeginning(const Document& document, Findings& findings) {
  const DrawingSummary& drawn = findings.summary;
  const bool isBlank = drawn.strokes + drawn.fills + drawn.images == 0;
  if (isBlank) findings.Add(Loss::NothingDrawn, "", {});
  if (document.Comments().startsLikePostScript) return;
  if (isBlank) findings.Add(Loss::NotPostScript, "", {});
  if (document.Offset() > 0) findings.Add(Loss::OddHeader, "", {});
}

bool IsBeyond(const Box& drawn, const Box& box) {
  const double x = std::max(kBeyondPoints, kBeyondShare * box.Width());
  const double y = std::max(kBeyondPoints, kBeyondShare * box.Height());
  return drawn.left < box.left - x || drawn.bottom < box.bottom - y ||
         drawn.right > box.right + x || drawn.top > box.top + y;
}

void CheckBox(const DocumentComments& comments, Units units, Findings& findings) {
  if (!comments.box) {
    const bool isThere = comments.lines.find("%%BoundingBox:") != std::string::npos;
    findings.Add(isThere ? Loss::OddBox : Loss::NoBox, "%%BoundingBox", {});
    return;
  }
  const DrawingSummary& drawn = findings.summary;
  if (!drawn.hasExtent || !comments.pageBoxes.empty()) return;
  const double scale = units.pointsPerUnit;
  const Box& extent = drawn.extent;
  if (IsBeyond(
          {extent.left * scale, extent.bottom * scale, extent.right * scale, extent.top * scale},
          *comments.box)) {
    findings.Add(Loss::OutsideBox, "%%BoundingBox", {});
  }
}

void CheckPages(const DocumentComments& comments, const PageAnswers& answers, Findings& findings) {
  const std::uint32_t stated = answers.count.value_or(0);
  const std::uint32_t met = comments.pageComments;
  if (stated > 0 && stated != met && std::max(stated, met) > 1) {
    findings.Add(Loss::PageCount, "%%Pages", {}).detail =
        std::to_string(stated) + " stated, " + std::to_string(met) + " met";
  }
  const auto labelled = std::ranges::count_if(
      answers.pages, [](const PageAnswers::Page& page) { return page.label.has_value(); });
  if (labelled > 0 && labelled < std::ssize(answers.pages)) {
    findings.Add(Loss::LabelList, "%%Page", {});
  }
}

void CheckCommentLines(std::string_view lines, Findings& findings) {
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find_first_of("\r\n"), lines.size());
    if (end > kLongestCommentLine) findings.Add(Loss::LongLine, lines.substr(0, 20), {});
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
}

}  // namespace

void CheckFile(const Document& document, const PageAnswers& answers, Units units,
               Findings& findings) {
  const DocumentComments& comments = document.Comments();
  CheckBeginning(document, findings);
  CheckBox(comments, units, findings);
  CheckPages(comments, answers, findings);
  CheckCommentLines(comments.lines, findings);
}

}  // namespace orxprint
