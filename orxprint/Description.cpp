#include "orxprint/Description.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>

#include "drawing/Text.h"
#include "orxprint/PageChoice.h"
#include "orxprint/ShapeRuns.h"

namespace orxprint {

namespace {

using orxdrawing::DrawnExtents;

// Sizes come as single precision in the interpreter's unit.
constexpr double kSameSizePoints = 0.01;
// Half of a line may lie outside of a box without harm.
constexpr double kToleratedPoints = 1;

// A report line reads "NAME = NUMBER"; counters without a line are 0.
Statistics ReadStatistics(const ORXListValORXUnicodeString& lines) {
  constexpr std::string_view kEquals = " = ";
  Statistics statistics{};
  for (std::size_t position = 1; position <= lines.Count(); ++position) {
    const std::string_view line = lines.At(position).Bytes().View();
    const std::size_t equals = line.find(kEquals);
    if (equals == std::string_view::npos) continue;
    for (std::size_t i = 0; i < kCounters.size(); ++i) {
      if (kCounters[i].inReport != line.substr(0, equals)) continue;
      std::from_chars(line.data() + equals + kEquals.size(), line.data() + line.size(),
                      statistics[i]);
    }
  }
  return statistics;
}

std::vector<std::uint32_t> PagesToAskAbout(const PageAnswers& answers) {
  std::vector<std::uint32_t> pages(std::min(answers.count.value_or(0), kMostAskedPages));
  std::iota(pages.begin(), pages.end(), 1U);
  return pages;
}

std::string Shortened(const std::string& label) {
  return std::string(orxdrawing::Shortened(label, Statements::kMostTextBytes));
}

bool Holds(const Box& outer, const Box& inner, double tolerance) {
  return inner.left >= outer.left - tolerance && inner.bottom >= outer.bottom - tolerance &&
         inner.right <= outer.right + tolerance && inner.top <= outer.top + tolerance;
}

void JudgeBoxes(Description& description) {
  const StatedBox* first = nullptr;
  std::vector<InfoWarning>& warnings = description.warnings;
  for (const StatedBox& stated : description.statements.boxes) {
    if (!stated.box) {
      warnings.push_back({"badBox",
                          std::string(stated.comment) + " is not four numbers with an area",
                          stated.line});
    } else if (stated.comment == "%%BoundingBox") {
      if (first && first->box != stated.box) {
        warnings.push_back(
            {"severalBoxes",
             "another %%BoundingBox says something else than line " + std::to_string(first->line),
             stated.line});
      }
      if (!first) first = &stated;
    }
  }
  if (!first) {
    warnings.push_back({"noBoundingBox", "no %%BoundingBox says what the drawing covers", 0});
    return;
  }
  const StatedBox* fine = description.BoxOf("%%HiResBoundingBox", 0);
  if (fine && !Holds(*first->box, *fine->box, kSameSizePoints)) {
    warnings.push_back(
        {"hiResBoxOutside", "%%HiResBoundingBox reaches beyond %%BoundingBox", fine->line});
  }
}

void JudgePages(Description& description) {
  const std::uint32_t comments = description.pageComments;
  const std::optional<std::uint32_t>& stated = description.answers.count;
  if (!stated || comments == 0 || *stated == comments) return;
  description.warnings.push_back(
      {"pageCountDiffers",
       std::to_string(*stated) + " pages are stated, " + std::to_string(comments) + " begin", 0});
}

void JudgeDrawing(Description& description) {
  if (!description.drawn) return;
  if (!description.drawn->OfAll()) {
    description.warnings.push_back({"nothingDrawn", "nothing is drawn", 0});
    return;
  }
  const StatedBox* whole = description.BoxOf("%%BoundingBox", 0);
  for (std::uint32_t page = 1; page <= std::max<std::size_t>(1, description.answers.pages.size());
       ++page) {
    const StatedBox* own = description.BoxOf("%%PageBoundingBox", page);
    const StatedBox* stated = own ? own : whole;
    const std::optional<Box> extent = description.drawn->OfPage(page);
    if (!stated || !extent || Holds(*stated->box, *extent, kToleratedPoints)) continue;
    description.warnings.push_back({"drawingOutsideBox",
                                    "what page " + std::to_string(page) +
                                        " draws reaches beyond its " + std::string(stated->comment),
                                    stated->line});
  }
}

// Many boxes may be bad in one way: so many warnings are enough.
void Judge(Description& description) {
  constexpr std::size_t kMostWarnings = 100;
  if (!description.statements.isPostScript) {
    description.warnings.push_back(
        {"notPostScript", "does not begin with %! as PostScript does", 0});
  }
  JudgePages(description);
  JudgeDrawing(description);
  JudgeBoxes(description);
  if (description.warnings.size() > kMostWarnings) description.warnings.resize(kMostWarnings);
}

}  // namespace

bool Description::HasPageBoxes() const {
  return !firstBoxes.empty() && firstBoxes.rbegin()->first.first > 0;
}

const StatedBox* Description::BoxOf(std::string_view comment, std::uint32_t page) const {
  const auto found = firstBoxes.find({page, comment});
  return found == firstBoxes.end() ? nullptr : &statements.boxes[found->second];
}

const StatedBox* Description::SourceOf(const PageSize& size, std::uint32_t page,
                                       Units units) const {
  const auto fits = [&](const StatedBox* stated) {
    return stated &&
           std::abs(stated->box->right - size.width * units.pointsPerUnit) < kSameSizePoints &&
           std::abs(stated->box->top - size.height * units.pointsPerUnit) < kSameSizePoints;
  };
  const StatedBox* own = page > 0 ? BoxOf("%%PageBoundingBox", page) : nullptr;
  if (fits(own)) return own;
  const StatedBox* whole = BoxOf("%%BoundingBox", 0);
  if (fits(whole)) return whole;
  for (const StatedBox& other : statements.otherBoxes) {
    if (fits(&other)) return &other;
  }
  return nullptr;
}

Description DescribeDocument(Session& session, bool isQuick) {
  Description description;
  const Document& document = session.Source();
  description.file = session.Name();
  description.isQuick = isQuick;
  description.preview = document.Preview();
  description.pageComments = document.Comments().pageComments;
  description.statements =
      ReadStatements([&document](std::uint64_t place, char* buffer, std::size_t count) {
        return document.Read(place, buffer, count);
      });
  const std::vector<StatedBox>& boxes = description.statements.boxes;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (boxes[i].box) description.firstBoxes.try_emplace({boxes[i].page, boxes[i].comment}, i);
  }
  description.answers = session.Ask(PagesToAskAbout);
  for (PageAnswers::Page& page : description.answers.pages) {
    if (page.label) page.label = Shortened(*page.label);
  }
  if (!isQuick) {
    if (const auto lines = session.Count()) description.statistics = ReadStatistics(*lines);
  }
  if (!isQuick && !session.Stopping()) {
    const auto drawn =
        std::make_shared<DrawnExtents>(kMostAskedPages, Units::FromEnvironment().pointsPerUnit);
    DrawShapes(session, {PageSelection::All()}, drawn);
    description.drawn = drawn;
  }
  description.stop = session.Stopping();
  description.limitMet = session.LimitMet();
  Judge(description);
  return description;
}

}  // namespace orxprint
