#include "drawing/LossJudge.h"

#include "drawing/JudgedGraphics.h"
#include "drawing/ShapeNames.h"

namespace orxdrawing {

LossJudge::LossJudge() : origins(1), settingsOfMarks(1) {}

LossJudge::Origin LossJudge::MakeOrigin(Loss loss, const ORXNote& note,
                                        const ORXWatchable& interpreter) const {
  Origin origin;
  origin.loss = loss;
  origin.name = note.name.substr(0, 128);
  origin.place = PlaceIn(interpreter);
  return origin;
}

std::uint32_t LossJudge::Keep(Origin origin) {
  if (origins.size() >= kMostKept) return 0;
  origins.push_back(std::move(origin));
  return static_cast<std::uint32_t>(origins.size() - 1);
}

const LossJudge::Settings& LossJudge::SettingsOf(const ORXGraphics& graphics) const {
  return settingsOfMarks[graphics.mark < settingsOfMarks.size() ? graphics.mark : 0];
}

void LossJudge::Set(ORXWatchable& interpreter, const Settings& settings) {
  if (settingsOfMarks.back() != settings) {
    if (settingsOfMarks.size() >= kMostKept) return;
    settingsOfMarks.push_back(settings);
  }
  interpreter.SetMark(static_cast<std::uint32_t>(settingsOfMarks.size() - 1));
}

void LossJudge::Wait(Origin origin, bool countsAnyway) {
  if (pending.size() < kMostPending) pending.push_back({std::move(origin), countsAnyway});
}

// Inside a procedure only what makes a shape itself can make a wrong one.
void LossJudge::WaitForShape(Loss loss, const ORXNote& note, ORXWatchable& interpreter,
                             bool countsAtTopLevel) {
  const std::uint64_t definition = interpreter.Place().definition;
  if (definition == ORXPlace::kNone) {
    return Wait(MakeOrigin(loss, note, interpreter), countsAtTopLevel);
  }
  if (shapersAt.size() >= std::size_t{kMostSearches}) return;
  const auto [known, isNew] = shapersAt.try_emplace(definition, false);
  if (isNew) {
    ShapeTest shapes;
    known->second = interpreter.RunningRunsAny(shapes);
  }
  if (known->second) Wait(MakeOrigin(loss, note, interpreter), true);
}

// Behind a string in hexadecimal the next token is dropped, too.
void LossJudge::TakeDropped(const ORXNote& note, ORXWatchable& interpreter) {
  ShapeTest shapes;
  TextTest text;
  const auto runs = [&](ORXNameTest& test) {
    return test.Test(note.detail) || interpreter.NameRunsAny(note.detail, test);
  };
  if (note.name != ">") return CountAt(Loss::CharactersLost, note.name, interpreter);
  // A procedure that loses its brace takes what follows with it, or gives its body away.
  if (note.detail == "{" || note.detail == "}") {
    return CountAt(Loss::DataLost, note.detail, interpreter);
  }
  if (++searches > kMostSearches) return;
  if (runs(text)) return CountAt(Loss::TextLost, note.detail, interpreter);
  if (runs(shapes)) return CountAt(Loss::DataLost, note.detail, interpreter);
}

void LossJudge::Count(std::uint32_t number) {
  Origin& origin = origins[number];
  if (number == 0 || origin.isCounted) return;
  origin.isCounted = true;
  findings.Add(origin.loss, origin.name, origin.place);
}

void LossJudge::CountAt(Loss loss, std::string_view name, const ORXWatchable& interpreter) {
  findings.Add(loss, name, PlaceIn(interpreter));
}

void LossJudge::TakeNote(const ORXNote& note, ORXWatchable& interpreter) {
  switch (note.kind) {
    case ORXNoteKind::UnknownName:
      return TakeUnknownName(note, interpreter);
    case ORXNoteKind::Error:
      return TakeError(note, interpreter);
    case ORXNoteKind::Ignored:
      return TakeIgnored(note, interpreter);
    case ORXNoteKind::ChangedForAll:
    case ORXNoteKind::ChangedConstant:
      return TakeChange(note, interpreter);
    case ORXNoteKind::ComparedAsFalse:
      return WaitForShape(Loss::Compared, note, interpreter, true);
    case ORXNoteKind::IntegerMatrix:
      return Wait(MakeOrigin(Loss::IntegerMatrix, note, interpreter), true);
    case ORXNoteKind::DevicePoint:
      return WaitForShape(Loss::DevicePoint, note, interpreter, true);
    case ORXNoteKind::OutputWidth:
      return Wait(MakeOrigin(Loss::WidthAsked, note, interpreter), true);
    case ORXNoteKind::Hairline: {
      Settings settings = SettingsOf(interpreter.Graphics());
      settings.isHairline = true;
      return Set(interpreter, settings);
    }
    case ORXNoteKind::TextAfterAngle:
      return TakeDropped(note, interpreter);
    case ORXNoteKind::CharactersLost:
      return CountAt(Loss::CharactersLost, note.name, interpreter);
    case ORXNoteKind::FilterUnknown:
      return CountAt(Loss::FilterUnknown, note.detail, interpreter);
    case ORXNoteKind::ImageSkipped:
      findings.Add(Loss::ImageLost, note.name, PlaceIn(interpreter)).detail = note.detail;
      return;
    case ORXNoteKind::ImageUndecodable:
      return CountAt(Loss::ImageUndecodable, note.name, interpreter);
    case ORXNoteKind::SamplesMissing:
      if (note.value < 0.995) CountAt(Loss::SamplesMissing, note.name, interpreter);
      return;
    case ORXNoteKind::SamplesLeft:
      if (note.value > 1.02) CountAt(Loss::SamplesLeft, note.name, interpreter);
      return;
    case ORXNoteKind::ImageMisplaced:
      return CountAt(Loss::ImageMisplaced, note.name, interpreter);
    case ORXNoteKind::ImageNegative:
      return CountAt(Loss::ImageNegative, note.name, interpreter);
    case ORXNoteKind::ImageColors:
      return CountAt(Loss::ImageColors, note.name, interpreter);
    case ORXNoteKind::FaxParameter:
      return CountAt(Loss::ImageFax, note.detail, interpreter);
    case ORXNoteKind::PageBegun:
      ++findings.summary.pages;
      return;
  }
}

}  // namespace orxdrawing
