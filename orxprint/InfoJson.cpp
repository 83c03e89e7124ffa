// What info prints for programs.
#include <cstdlib>

#include "drawing/Text.h"
#include "orxprint/InfoText.h"

namespace orxprint {

namespace {

constexpr int kJsonVersion = 1;

// The number that the shortest text of a float stands for, so that it prints as that text.
double AsWritten(float value) {
  std::string text;
  orxdrawing::AppendFloat(text, value);
  return std::strtod(text.c_str(), nullptr);
}

double Millimetres(float value, Units units) {
  if (units.pointsPerUnit != 1.0) return AsWritten(value);
  return AsWritten(static_cast<float>(value * units.MillimetresPerUnit()));
}

Json SizeInMillimetres(const std::optional<PageSize>& size, Units units) {
  if (!size) return nullptr;
  return {{"width", Millimetres(size->width, units)}, {"height", Millimetres(size->height, units)}};
}

Json StatisticsOf(const std::optional<Statistics>& statistics) {
  if (!statistics) return nullptr;
  Json object;
  for (std::size_t i = 0; i < kCounters.size(); ++i) object[kCounters[i].inJson] = (*statistics)[i];
  return object;
}

Json PointsOf(const Box& box) {
  return {{"leftPt", Rounded(box.left)},
          {"bottomPt", Rounded(box.bottom)},
          {"rightPt", Rounded(box.right)},
          {"topPt", Rounded(box.top)}};
}

Json BoxOf(const StatedBox* stated) {
  if (!stated) return nullptr;
  Json object = PointsOf(*stated->box);
  object["line"] = stated->line;
  return object;
}

Json TextOf(const std::optional<Statement>& statement) {
  return statement ? Json(statement->text) : Json();
}

Json TextOf(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json SourceOf(const Description& description, const std::optional<PageSize>& size,
              std::uint32_t page, Units units) {
  const StatedBox* source = size ? description.SourceOf(*size, page, units) : nullptr;
  if (!source) return nullptr;
  return {{"comment", std::string(source->comment)}, {"line", source->line}};
}

Json DrawnOf(const Description& description, std::uint32_t page) {
  if (!description.drawn) return nullptr;
  const std::optional<Box> box =
      page == 0 ? description.drawn->OfAll() : description.drawn->OfPage(page);
  return box ? PointsOf(*box) : Json();
}

Json PageOf(const Description& description, std::uint32_t number, Units units) {
  const PageAnswers::Page& page = description.answers.pages[number - 1];
  return {{"number", number},
          {"label", page.label ? Json(*page.label) : Json()},
          {"sizeFrom", SourceOf(description, page.size, number, units)},
          {"box", BoxOf(description.BoxOf("%%PageBoundingBox", number))},
          {"hiResBox", BoxOf(description.BoxOf("%%PageHiResBoundingBox", number))},
          {"drawn", DrawnOf(description, number)}};
}

Json PreviewOf(const Description& description) {
  if (description.preview == "wmf" || description.preview == "tiff") {
    return std::string(description.preview);
  }
  return description.statements.hasBitmapPreview ? Json("bitmap") : Json();
}

Json WarningsOf(const Description& description) {
  Json list = Json::array();
  for (const InfoWarning& warning : description.warnings) {
    Json object = {{"name", std::string(warning.name)}, {"text", warning.text}};
    if (warning.line > 0) object["line"] = warning.line;
    list.push_back(std::move(object));
  }
  return list;
}

void AddStatements(Json& object, const Description& description, Units units) {
  const Statements& statements = description.statements;
  object["isPostScript"] = statements.isPostScript;
  object["dscVersion"] = TextOf(statements.dscVersion);
  object["epsfVersion"] = TextOf(statements.epsfVersion);
  object["languageLevel"] = TextOf(statements.languageLevel);
  object["title"] = TextOf(statements.title);
  object["creator"] = TextOf(statements.creator);
  object["for"] = TextOf(statements.madeFor);
  object["date"] = TextOf(statements.date);
  object["preview"] = PreviewOf(description);
  object["fontsWanted"] = statements.fonts;
  object["resourcesWanted"] = statements.resources;
  object["boxes"] = {{"document", BoxOf(description.BoxOf("%%BoundingBox", 0))},
                     {"hiRes", BoxOf(description.BoxOf("%%HiResBoundingBox", 0))},
                     {"drawn", DrawnOf(description, 0)}};
  object["pageSizeFrom"] = SourceOf(description, description.answers.size, 0, units);
  Json pages = Json::array();
  for (std::uint32_t page = 1; page <= description.answers.pages.size(); ++page) {
    pages.push_back(PageOf(description, page, units));
  }
  object["pageDetails"] = std::move(pages);
  object["warnings"] = WarningsOf(description);
}

}  // namespace

Json ForPrograms(const Description& description, Units units) {
  const PageAnswers& answers = description.answers;
  Json labels = Json::array();
  Json sizes = Json::array();
  for (const PageAnswers::Page& page : answers.pages) {
    labels.push_back(page.label ? Json(*page.label) : Json());
    sizes.push_back(SizeInMillimetres(page.size, units));
  }
  Json object = {{"version", kJsonVersion},
                 {"file", description.file},
                 {"pages", answers.count ? Json(*answers.count) : Json()},
                 {"pageSize", SizeInMillimetres(answers.size, units)},
                 {"labels", std::move(labels)},
                 {"pageSizes", std::move(sizes)},
                 {"statistics", StatisticsOf(description.statistics)}};
  if (answers.count.value_or(0) > answers.pages.size()) object["pagesAsked"] = answers.pages.size();
  if (description.stop) object["stopped"] = Describe(*description.stop);
  if (const auto& met = description.limitMet) {
    object["limitMet"] = {{"error", met->error}, {"byte", met->position}};
  }
  if (description.error.empty()) {
    AddStatements(object, description, units);
  } else {
    object["error"] = description.error;
  }
  return object;
}

}  // namespace orxprint
