// What the judge makes of names that mean nothing, of what is ignored and of errors.
#include <algorithm>
#include <cmath>

#include "drawing/JudgedGraphics.h"
#include "drawing/LossJudge.h"
#include "drawing/ShapeNames.h"

namespace orxdrawing {

namespace {

// Points of paths to be clipped, so that no document makes the judge slow.
constexpr std::uint64_t kMostClipPoints = 100'000'000;

// Whether vectors are the same in user and device space.
bool IsUnturned(const ORXGraphics& graphics) {
  const auto& m = graphics.matrix;
  return m[0] == 1 && m[1] == 0 && m[2] == 0 && m[3] == 1;
}

bool IsIdentity(const ORXGraphics& graphics) {
  constexpr double kIdentity[] = {1, 0, 0, 1, 0, 0};
  return std::ranges::equal(graphics.matrix, kIdentity);
}

ORXExtent MapBox(const ORXGraphics& graphics, double x0, double y0, double x1, double y1) {
  const auto& m = graphics.matrix;
  ORXExtent extent;
  bool isFirst = true;
  for (const double x : {x0, x1}) {
    for (const double y : {y0, y1}) {
      const Point p{m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]};
      if (isFirst) extent = {p.x, p.y, p.x, p.y};
      isFirst = false;
      extent = {std::min(extent.left, p.x), std::min(extent.bottom, p.y),
                std::max(extent.right, p.x), std::max(extent.top, p.y)};
    }
  }
  return extent;
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// Operators without which the picture lacks something at once.
bool IsDrawingOperator(std::string_view name) {
  static const std::unordered_set<std::string_view> names = {
      "moveto", "rmoveto", "lineto", "rlineto", "curveto",   "arc",    "arcn",  "stroke",
      "fill",   "eofill",  "image",  "concat",  "translate", "rotate", "scale", "colorimage"};
  return names.contains(name);
}

bool IsLimit(std::string_view error) {
  return error == "limitcheck" || error == "VMerror" || error == "stackoverflow" ||
         error == "execstackoverflow" || error == "dictstackoverflow";
}

}  // namespace

void LossJudge::TakeUnknownName(const ORXNote& note, ORXWatchable& interpreter) {
  switch (MeaningOf(note.name)) {
    case NameMeaning::Bookkeeping:
      return;
    case NameMeaning::Unknown:
      return CountAt(Loss::NameUnknown, note.name, interpreter);
    case NameMeaning::Text:
      return TakeText(note, interpreter);
    case NameMeaning::Paint:
      return TakePaint(note, interpreter);
    case NameMeaning::Image:
      return CountAt(Loss::ImageLost, note.name, interpreter);
    case NameMeaning::Path:
      return Wait(MakeOrigin(Loss::PathLost, note, interpreter), true);
    case NameMeaning::Color:
      return TakeColor(note, interpreter);
    case NameMeaning::Loop:
      return TakeLoop(note, interpreter);
    case NameMeaning::Value:
      return WaitForShape(Loss::ValueLost, note, interpreter,
                          interpreter.Graphics().pathPoints > 0);
    case NameMeaning::Number:
      return WaitForShape(Loss::ValueLost, note, interpreter, true);
    case NameMeaning::Rounding: {
      const double number = interpreter.Operand(0).number;
      if (number == std::floor(number)) return;
      return WaitForShape(Loss::NotRounded, note, interpreter, true);
    }
    case NameMeaning::Device: {
      const ORXGraphics graphics = interpreter.Graphics();
      if (IsUnturned(graphics)) return;
      return WaitForShape(Loss::ValueLost, note, interpreter, true);
    }
    case NameMeaning::Restore:
      return TakeRestore(note, interpreter);
    case NameMeaning::Save:
      if (saved.size() < kMostPending) saved.push_back(interpreter.Graphics());
      return;
    case NameMeaning::Clip: {
      const ORXGraphics graphics = interpreter.Graphics();
      clipPoints += graphics.pathPoints;
      if (clipPoints > kMostClipPoints) return;
      const ORXExtent extent = interpreter.PathExtent();
      return TakeClip(note, interpreter, {extent.left, extent.bottom, extent.right, extent.top},
                      graphics.pathPoints >= 4 && graphics.pathPoints <= 5);
    }
    case NameMeaning::InitClip: {
      Settings settings = SettingsOf(interpreter.Graphics());
      settings.clip = 0;
      return Set(interpreter, settings);
    }
    case NameMeaning::Dash: {
      Settings settings = SettingsOf(interpreter.Graphics());
      const bool isSolid = interpreter.Operand(1).count == 0;
      settings.dash = isSolid ? 0 : Keep(MakeOrigin(Loss::DashesLost, note, interpreter));
      return Set(interpreter, settings);
    }
    case NameMeaning::Matrix: {
      const ORXGraphics graphics = interpreter.Graphics();
      if (IsIdentity(graphics)) return;
      Settings settings = SettingsOf(graphics);
      settings.matrix = Keep(MakeOrigin(Loss::MatrixLost, note, interpreter));
      return Set(interpreter, settings);
    }
  }
}

void LossJudge::TakeText(const ORXNote& note, ORXWatchable& interpreter) {
  for (const std::int32_t place : {0, 1}) {
    const ORXOperand operand = interpreter.Operand(place);
    if (operand.type == ORXOperandType::Text) {
      if (IsBlank(operand.text)) return;
      break;
    }
    if (operand.type == ORXOperandType::Name && operand.text == "space") return;
  }
  CountAt(Loss::TextLost, note.name, interpreter);
}

// White on paper that is still white is nothing.
void LossJudge::TakePaint(const ORXNote& note, ORXWatchable& interpreter) {
  const DrawingSummary& drawn = findings.summary;
  const bool isFirst = drawn.strokes + drawn.fills + drawn.images == 0;
  if (note.name == "erasepage" ? isFirst : isFirst && IsWhite(interpreter.Graphics())) return;
  CountAt(Loss::PaintLost, note.name, interpreter);
}

void LossJudge::TakeColor(const ORXNote& note, ORXWatchable& interpreter) {
  const auto number = [&](std::int32_t place) {
    return static_cast<float>(interpreter.Operand(place).number);
  };
  const ORXGraphics graphics = interpreter.Graphics();
  Origin origin = MakeOrigin(Loss::ColorLost, note, interpreter);
  origin.instead = ColorIn(graphics);
  const float black = number(0);
  const Color subtractive = {1 - std::min(1.0F, number(3) + black),
                             1 - std::min(1.0F, number(2) + black),
                             1 - std::min(1.0F, number(1) + black)};
  if (note.name == "setcmykcolor") {
    origin.wanted = subtractive;
    origin.isKnown = true;
  } else if (note.name == "setcolor") {
    // How many operands there are depends on a colour space that nobody keeps: what looks like the
    // colour that stays is taken for it.
    const Color grey = {black, black, black};
    const Color additive = {number(2), number(1), black};
    for (const Color& color : {grey, additive, subtractive}) {
      if (IsNear(color, origin.instead)) return;
    }
  } else if (note.name == "sethsbcolor" && number(1) == 0) {
    origin.wanted = {black, black, black};
    origin.isKnown = true;
  }
  Settings settings = SettingsOf(graphics);
  settings.color = Keep(std::move(origin));
  Set(interpreter, settings);
}

void LossJudge::TakeLoop(const ORXNote& note, ORXWatchable& interpreter) {
  const auto number = [&](std::int32_t place) { return interpreter.Operand(place).number; };
  if (note.name == "repeat" && number(1) < 1) return;
  if (note.name == "forall" && interpreter.Operand(1).count == 0 &&
      interpreter.Operand(1).text.empty()) {
    return;
  }
  const double step = number(2);
  if (note.name == "for" && (step > 0 ? number(3) > number(1) : number(3) < number(1))) return;
  if (++searches > kMostSearches) return;
  ShapeTest shapes;
  TextTest text;
  if (interpreter.RunsAny(0, shapes)) return CountAt(Loss::LoopLost, note.name, interpreter);
  if (interpreter.RunsAny(0, text)) CountAt(Loss::TextLost, note.name, interpreter);
}

void LossJudge::TakeRestore(const ORXNote& note, ORXWatchable& interpreter) {
  if (saved.empty()) return;
  const ORXGraphics before = saved.back();
  saved.pop_back();
  const ORXGraphics now = interpreter.Graphics();
  Settings settings = SettingsOf(now);
  if (!std::ranges::equal(before.matrix, now.matrix)) {
    settings.matrix = Keep(MakeOrigin(Loss::StateKept, note, interpreter));
  }
  if (!IsNear(ColorIn(before), ColorIn(now))) {
    Origin origin = MakeOrigin(Loss::ColorLost, note, interpreter);
    origin.wanted = ColorIn(before);
    origin.instead = ColorIn(now);
    origin.isKnown = true;
    settings.color = Keep(std::move(origin));
  }
  const Settings& old = SettingsOf(before);
  settings.clip = old.clip;
  settings.dash = old.dash;
  Set(interpreter, settings);
}

void LossJudge::TakeClip(const ORXNote& note, ORXWatchable& interpreter, Box extent,
                         bool isRectangle) {
  Settings settings = SettingsOf(interpreter.Graphics());
  Origin origin = MakeOrigin(Loss::ClipLost, note, interpreter);
  origin.extent = extent;
  origin.isRectangle = isRectangle;
  origin.outer = settings.clip;
  settings.clip = Keep(std::move(origin));
  Set(interpreter, settings);
}

void LossJudge::TakeIgnored(const ORXNote& note, ORXWatchable& interpreter) {
  const auto number = [&](std::int32_t place) { return interpreter.Operand(place).number; };
  if (note.name == "forall") return TakeLoop(note, interpreter);
  if (note.name == "rectclip") {
    if (interpreter.Operand(0).type != ORXOperandType::Number) return;
    const ORXExtent extent = MapBox(interpreter.Graphics(), number(3), number(2),
                                    number(3) + number(1), number(2) + number(0));
    return TakeClip(note, interpreter, {extent.left, extent.bottom, extent.right, extent.top},
                    true);
  }
  if (note.name != "setlinejoin") return;
  Settings settings = SettingsOf(interpreter.Graphics());
  settings.join = number(0) == 0 ? 0 : Keep(MakeOrigin(Loss::JoinsLost, note, interpreter));
  Set(interpreter, settings);
}

void LossJudge::TakeError(const ORXNote& note, ORXWatchable& interpreter) {
  if (IsLimit(note.detail)) {
    return CountAt(Loss::LimitMet, note.detail, interpreter);
  }
  Origin origin = MakeOrigin(Loss::Failed, note, interpreter);
  Wait(std::move(origin), IsDrawingOperator(note.name));
}

// A number that is 0 is the same after "neg", and one that is whole after "round". A constant of a
// procedure is right the first time.
void LossJudge::TakeChange(const ORXNote& note, ORXWatchable& interpreter) {
  const ORXOperand operand = interpreter.Operand(0);
  const bool stays =
      note.name == "neg" ? operand.number == 0 : operand.number == std::floor(operand.number);
  if (stays) return;
  if (note.kind == ORXNoteKind::ChangedConstant) {
    if (changedConstants.size() >= kMostKept) return;
    if (changedConstants.insert(operand.identity).second) return;
  }
  Wait(MakeOrigin(Loss::Negated, note, interpreter), true);
}

}  // namespace orxdrawing
