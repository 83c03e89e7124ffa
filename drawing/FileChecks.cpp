#include "drawing/FileChecks.h"

#include <algorithm>
#include <numeric>
#include <string_view>

namespace orxdrawing {

namespace {

constexpr std::uint32_t kMostLabelsAsked = 100;
constexpr std::size_t kLongestCommentLine = 255;
// How far a drawing may reach beyond its box, for lines have widths: points, and a share of it.
constexpr double kBeyondPoints = 2;
constexpr double kBeyondShare = 0.02;

void CheckBeginning(const CheckedFile& file, Findings& findings) {
  const DrawingSummary& drawn = findings.summary;
  const bool isBlank = drawn.strokes + drawn.fills + drawn.images == 0;
  if (isBlank) findings.Add(Loss::NothingDrawn, "", {});
  if (file.comments.startsLikePostScript) return;
  if (isBlank) findings.Add(Loss::NotPostScript, "", {});
  if (file.hasPreview) findings.Add(Loss::OddHeader, "", {});
}

bool IsBeyond(const Box& drawn, const Box& box) {
  const double x = std::max(kBeyondPoints, kBeyondShare * box.Width());
  const double y = std::max(kBeyondPoints, kBeyondShare * box.Height());
  return drawn.left < box.left - x || drawn.bottom < box.bottom - y ||
         drawn.right > box.right + x || drawn.top > box.top + y;
}

void CheckBox(const DocumentComments& comments, double scale, Findings& findings) {
  if (!comments.box) {
    const bool isThere = comments.lines.find("%%BoundingBox:") != std::string::npos;
    findings.Add(isThere ? Loss::OddBox : Loss::NoBox, "%%BoundingBox", {});
    return;
  }
  const DrawingSummary& drawn = findings.summary;
  if (!drawn.hasExtent || !comments.pageBoxes.empty()) return;
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

std::vector<std::uint32_t> PagesToCheck(const PageAnswers& answers) {
  std::vector<std::uint32_t> pages(std::min(answers.count.value_or(0), kMostLabelsAsked));
  std::iota(pages.begin(), pages.end(), 1U);
  return pages;
}

void CheckFile(const CheckedFile& file, double pointsPerUnit, Findings& findings) {
  CheckBeginning(file, findings);
  CheckBox(file.comments, pointsPerUnit, findings);
  CheckPages(file.comments, file.answers, findings);
  CheckCommentLines(file.comments.lines, findings);
}

}  // namespace orxdrawing
