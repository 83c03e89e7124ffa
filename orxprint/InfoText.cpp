#include "orxprint/InfoText.h"

#include <cmath>

#include "drawing/Text.h"

namespace orxprint {

namespace {

using orxdrawing::EscapeForTerminal;
using orxdrawing::ShortNumber;

std::string Line(std::string_view key, std::string_view value) {
  return std::string(key) + ": " + EscapeForTerminal(value) + "\n";
}

std::string Stated(std::string_view key, const std::optional<Statement>& statement) {
  return statement ? Line(key, statement->text) : "";
}

double InMillimetres(float value, Units units) {
  return units.pointsPerUnit == 1.0 ? value * units.MillimetresPerUnit() : value;
}

std::string Describe(const PageSize& size, Units units) {
  const auto points = [&](float value) {
    return ShortNumber(Rounded(value * units.pointsPerUnit));
  };
  return ShortNumber(InMillimetres(size.width, units)) + " x " +
         ShortNumber(InMillimetres(size.height, units)) + " mm (" + points(size.width) + " x " +
         points(size.height) + " pt)";
}

std::string SizeLine(std::string_view key, const Description& description,
                     const std::optional<PageSize>& size, std::uint32_t page, Units units) {
  if (!size) return Line(key, "not stated");
  std::string text = Describe(*size, units);
  if (const StatedBox* source = description.SourceOf(*size, page, units)) {
    text += ", from " + std::string(source->comment) + " in line " + std::to_string(source->line);
  }
  return Line(key, text);
}

std::string Describe(const Box& box) {
  const auto points = [](double value) { return ShortNumber(Rounded(value)); };
  return points(box.left) + " " + points(box.bottom) + " to " + points(box.right) + " " +
         points(box.top) + " pt";
}

std::string BoxLine(std::string_view key, const StatedBox* stated) {
  if (!stated) return "";
  return Line(key, Describe(*stated->box) + ", line " + std::to_string(stated->line));
}

std::string DrawnLine(std::string_view key, const std::optional<Box>& drawn) {
  return Line(key, drawn ? Describe(*drawn) : "nothing");
}

std::string NamesLine(std::string_view key, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "" : Line(key, text);
}

std::string Heading(const Description& description) {
  const Statements& statements = description.statements;
  std::string text = Line("File", description.file);
  if (!statements.isPostScript) text += Line("Kind", "no PostScript");
  text += Stated("Title", statements.title);
  text += Stated("Creator", statements.creator);
  text += Stated("For", statements.madeFor);
  text += Stated("Date", statements.date);
  if (!statements.dscVersion.empty()) {
    const std::string epsf =
        statements.epsfVersion.empty() ? "" : ", EPSF " + statements.epsfVersion;
    text += Line("DSC version", statements.dscVersion + epsf);
  }
  text += Stated("Language level", statements.languageLevel);
  if (description.preview == "wmf" || description.preview == "tiff") {
    text += Line("Preview", description.preview);
  } else if (statements.hasBitmapPreview) {
    text += Line("Preview", "bitmap");
  }
  return text;
}

std::string PageLines(const Description& description, std::uint32_t number, Units units) {
  const PageAnswers::Page& page = description.answers.pages[number - 1];
  const std::string prefix = "Page " + std::to_string(number);
  std::string text = Line(prefix + " label", page.label.value_or("none"));
  if (description.HasPageBoxes()) {
    text += SizeLine(prefix + " size", description, page.size, number, units);
    text += BoxLine(prefix + " box", description.BoxOf("%%PageBoundingBox", number));
    text += BoxLine(prefix + " high-resolution box",
                    description.BoxOf("%%PageHiResBoundingBox", number));
  }
  if (description.drawn && description.answers.pages.size() > 1) {
    text += DrawnLine(prefix + " drawn", description.drawn->OfPage(number));
  }
  return text;
}

}  // namespace

std::string ForPeople(const Description& description, Units units) {
  const PageAnswers& answers = description.answers;
  const std::uint32_t count = answers.count.value_or(0);
  std::string text = Heading(description);
  text += Line("Pages", answers.count ? std::to_string(count) : "not stated");
  text += SizeLine("Page size", description, answers.size, 0, units);
  text += BoxLine("Box", description.BoxOf("%%BoundingBox", 0));
  text += BoxLine("High-resolution box", description.BoxOf("%%HiResBoundingBox", 0));
  if (description.drawn) text += DrawnLine("Drawn", description.drawn->OfAll());
  for (std::uint32_t page = 1; page <= answers.pages.size(); ++page) {
    text += PageLines(description, page, units);
  }
  if (count > answers.pages.size()) {
    text += Line("Pages asked about", std::to_string(answers.pages.size()));
  }
  text += NamesLine("Fonts wanted", description.statements.fonts);
  text += NamesLine("Resources wanted", description.statements.resources);
  for (std::size_t i = 0; description.statistics && i < kCounters.size(); ++i) {
    text += Line(kCounters[i].inReport, std::to_string((*description.statistics)[i]));
  }
  for (const InfoWarning& warning : description.warnings) {
    const std::string place = warning.line > 0 ? ", line " + std::to_string(warning.line) : "";
    text += Line("Warning", std::string(warning.name) + place + ": " + warning.text);
  }
  return text;
}

}  // namespace orxprint
