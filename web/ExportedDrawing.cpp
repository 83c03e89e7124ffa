// What the worker's script asks about a drawing.
//
// A side is the number of a document: 0 for the only one, and for the earlier one of a comparison.
#include "web/ExportedDrawing.h"

#include <emscripten.h>

#include <string>

#include "drawing/FindingWords.h"
#include "drawing/ShapeWords.h"
#include "drawing/Text.h"

namespace orxweb {

namespace {

std::string answer;  // what was answered last

using orxdrawing::ListedShape;

// REQUIRES: there is such a shape.
const ListedShape& ShapeAt(int side, int shape) {
  const auto& shapes = ExportedDrawing::Open().Side(side).Index().List().Shapes();
  return shapes.at(static_cast<std::size_t>(shape));
}

const orxdrawing::Difference& DifferenceAt(int difference) {
  const auto& differences = ExportedDrawing::Open().comparison->Differences();
  return differences.at(static_cast<std::size_t>(difference));
}

const orxdrawing::Finding& FindingAt(int finding) {
  return ExportedDrawing::Open().Side(0).Findings().at(static_cast<std::size_t>(finding));
}

int Numbered(const std::optional<std::size_t>& found) {
  return found ? static_cast<int>(*found) : -1;
}

}  // namespace

ExportedDrawing& ExportedDrawing::Open() {
  static ExportedDrawing drawing;
  return drawing;
}

double ExportedDrawing::InFile(int side, std::uint64_t place) const {
  if (place == ORXPlace::kNone) return -1;
  return static_cast<double>(place + Side(side).Offset());
}

const char* Answer(std::string_view text) {
  answer = text;
  return answer.c_str();
}

const char* AnswerEscaped(std::string_view text) {
  return Answer(orxdrawing::EscapeForTerminal(text));
}

extern "C" {

// How the drawing ended: the number of an ORXPassResult, its error and its place in the file.
EMSCRIPTEN_KEEPALIVE int EndResult(int side) {
  return static_cast<int>(ExportedDrawing::Open().Side(side).End().result);
}
EMSCRIPTEN_KEEPALIVE const char* EndError(int side) {
  return ExportedDrawing::Open().Side(side).End().error;
}
EMSCRIPTEN_KEEPALIVE double EndPlace(int side) {
  const ExportedDrawing& open = ExportedDrawing::Open();
  return open.InFile(side, open.Side(side).End().position);
}
EMSCRIPTEN_KEEPALIVE int StartsLikePostScript(int side) {
  return ExportedDrawing::Open().Side(side).Comments().startsLikePostScript ? 1 : 0;
}
EMSCRIPTEN_KEEPALIVE int IndexIsComplete(int side) {
  return ExportedDrawing::Open().Side(side).Index().IsComplete() ? 1 : 0;
}
EMSCRIPTEN_KEEPALIVE double LostPoints(int side) {
  return static_cast<double>(ExportedDrawing::Open().Side(side).LostPoints());
}

// The uppermost shape at a place of a page, which counts from 1, in points; -1 for none.
EMSCRIPTEN_KEEPALIVE int FindShape(unsigned page, double x, double y, double reach) {
  return Numbered(ExportedDrawing::Open().Side(0).Index().At(page, {x, y}, reach));
}
EMSCRIPTEN_KEEPALIVE int ShapeCount(int side) {
  return static_cast<int>(ExportedDrawing::Open().Side(side).Index().List().Shapes().size());
}
EMSCRIPTEN_KEEPALIVE const char* KindOfShape(int side, int shape) {
  return Answer(orxdrawing::NameOf(ShapeAt(side, shape).record.kind));
}
EMSCRIPTEN_KEEPALIVE const char* DescriptionOfShape(int side, int shape) {
  return Answer(orxdrawing::Describe(ShapeAt(side, shape).record));
}
EMSCRIPTEN_KEEPALIVE unsigned PageOfShape(int side, int shape) {
  return ShapeAt(side, shape).record.page;
}
// In points.
EMSCRIPTEN_KEEPALIVE double WidthOfShape(int side, int shape) {
  return ShapeAt(side, shape).record.width * orxdrawing::kPointsPerMillimetre;
}
// Where the file draws it, and the procedure that does; -1 for none.
EMSCRIPTEN_KEEPALIVE double PlaceOfShape(int side, int shape) {
  return ExportedDrawing::Open().InFile(side, ShapeAt(side, shape).record.place.token);
}
EMSCRIPTEN_KEEPALIVE double DefinitionOfShape(int side, int shape) {
  return ExportedDrawing::Open().InFile(side, ShapeAt(side, shape).record.place.definition);
}
EMSCRIPTEN_KEEPALIVE const char* OutlineOfShape(int side, int shape) {
  return Answer(ExportedDrawing::Open().Side(side).Index().OutlineOf(ShapeAt(side, shape)));
}

// What tells two documents apart; a shape is -1 on the side that lacks it.
EMSCRIPTEN_KEEPALIVE int DifferenceCount() {
  return static_cast<int>(ExportedDrawing::Open().comparison->Differences().size());
}
EMSCRIPTEN_KEEPALIVE int ShapeOfDifference(int difference, int side) {
  const orxdrawing::Difference& found = DifferenceAt(difference);
  return Numbered(side == 0 ? found.before : found.after);
}
EMSCRIPTEN_KEEPALIVE const char* WhatDiffers(int difference) {
  std::string text;
  for (const std::string& name : orxdrawing::NamesOf(DifferenceAt(difference).what)) {
    text += (text.empty() ? "" : ", ") + name;
  }
  return Answer(text);
}
EMSCRIPTEN_KEEPALIVE int FindDifference(unsigned page, double x, double y, double reach) {
  return Numbered(ExportedDrawing::Open().comparison->At(page, {x, y}, reach));
}
EMSCRIPTEN_KEEPALIVE unsigned AddedCount() {
  return Count(ExportedDrawing::Open().comparison->Differences()).added;
}
EMSCRIPTEN_KEEPALIVE unsigned RemovedCount() {
  return Count(ExportedDrawing::Open().comparison->Differences()).removed;
}
EMSCRIPTEN_KEEPALIVE int PageCount() {
  return static_cast<int>(ExportedDrawing::Open().comparison->Pages().size());
}
// The number of a page that was drawn, by its place among them.
EMSCRIPTEN_KEEPALIVE unsigned NumberOfPage(int page) {
  return ExportedDrawing::Open().comparison->Pages().at(static_cast<std::size_t>(page));
}

// What was drawn, in a line.
EMSCRIPTEN_KEEPALIVE const char* DrawingInWords() {
  return Answer(orxdrawing::DescribeDrawing(ExportedDrawing::Open().Side(0).Summary(), 1));
}
// What is lost or different, the gravest first.
EMSCRIPTEN_KEEPALIVE int FindingCount() {
  return static_cast<int>(ExportedDrawing::Open().Side(0).Findings().size());
}
EMSCRIPTEN_KEEPALIVE const char* SeverityOfFinding(int finding) {
  return Answer(orxdrawing::TextOf(orxdrawing::KindOf(FindingAt(finding).loss).severity));
}
EMSCRIPTEN_KEEPALIVE const char* MeaningOfFinding(int finding) {
  return AnswerEscaped(orxdrawing::MeaningOf(FindingAt(finding)));
}
EMSCRIPTEN_KEEPALIVE const char* NameOfFinding(int finding) {
  return AnswerEscaped(FindingAt(finding).name);
}
EMSCRIPTEN_KEEPALIVE double TimesOfFinding(int finding) {
  return static_cast<double>(FindingAt(finding).count);
}
// Its first places in the file.
EMSCRIPTEN_KEEPALIVE int PlacesOfFinding(int finding) {
  return static_cast<int>(FindingAt(finding).places.size());
}
EMSCRIPTEN_KEEPALIVE double PlaceOfFinding(int finding, int place) {
  return ExportedDrawing::Open().InFile(
      0, FindingAt(finding).places.at(static_cast<std::size_t>(place)).token);
}

}  // extern "C"

}  // namespace orxweb
