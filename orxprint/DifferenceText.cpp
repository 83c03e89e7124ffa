#include "orxprint/DifferenceText.h"

#include <algorithm>

#include "drawing/ShapeWords.h"
#include "orxprint/ShapeText.h"

namespace orxprint {

namespace {

using orxdrawing::Difference;

std::string Line(const char* sign, ComparedDrawing drawing, std::size_t shape) {
  const orxdrawing::ShapeRecord& record = drawing.shapes.Shapes()[shape].record;
  return sign + DescribePlace(record, drawing.places) + ": " + orxdrawing::Describe(record) + "\n";
}

std::string ForPeople(const Difference& difference, ComparedDrawing before, ComparedDrawing after) {
  if (!difference.before) return Line("+ ", after, *difference.after);
  if (!difference.after) return Line("- ", before, *difference.before);
  std::string text = "! ";
  for (const std::string& name : orxdrawing::NamesOf(difference.what)) {
    text += (text.size() > 2 ? ", " : "") + name;
  }
  return text + "\n" + Line("  - ", before, *difference.before) +
         Line("  + ", after, *difference.after);
}

Json ForPrograms(const Difference& difference, ComparedDrawing before, ComparedDrawing after) {
  const auto shape = [](ComparedDrawing drawing, const std::optional<std::size_t>& place) {
    return place ? ShapeForPrograms(drawing.shapes.Shapes()[*place].record, drawing.places)
                 : Json();
  };
  const bool isChange = difference.before && difference.after;
  Json object = {{"kind", isChange ? "changed" : difference.after ? "added" : "removed"}};
  if (isChange) object["what"] = orxdrawing::NamesOf(difference.what);
  object["before"] = shape(before, difference.before);
  object["after"] = shape(after, difference.after);
  return object;
}

}  // namespace

std::string DifferencesForPeople(const std::vector<Difference>& differences, ComparedDrawing before,
                                 ComparedDrawing after) {
  std::string text;
  const std::size_t listed = std::min(differences.size(), kMostListedDifferences);
  for (std::size_t i = 0; i < listed; ++i) text += ForPeople(differences[i], before, after);
  if (differences.empty()) return text;
  const orxdrawing::DifferenceNumbers numbers = orxdrawing::Count(differences);
  return text + std::to_string(numbers.added) + " added, " + std::to_string(numbers.removed) +
         " removed, " + std::to_string(numbers.changed) + " changed\n";
}

Json DifferencesForPrograms(const std::vector<Difference>& differences, ComparedDrawing before,
                            ComparedDrawing after) {
  const orxdrawing::DifferenceNumbers numbers = orxdrawing::Count(differences);
  Json list = Json::array();
  const std::size_t listed = std::min(differences.size(), kMostListedDifferences);
  for (std::size_t i = 0; i < listed; ++i) {
    list.push_back(ForPrograms(differences[i], before, after));
  }
  return {{"added", numbers.added},
          {"removed", numbers.removed},
          {"changed", numbers.changed},
          {"differences", std::move(list)}};
}

}  // namespace orxprint
