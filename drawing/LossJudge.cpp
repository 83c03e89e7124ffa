#include "drawing/LossJudge.h"

#include <algorithm>
#include <cmath>

#include "host/ORXPixelImage.h"

namespace orxdrawing {

namespace {

// Beyond these nothing more is kept, so that no document makes the judge large.
constexpr std::size_t kMostKept = std::size_t{1} << 16;
constexpr std::size_t kMostPending = 1000;
// Looks into procedures, and points of paths to be clipped, so that no document makes it slow.
constexpr int kMostSearches = 2000;
constexpr std::uint64_t kMostClipPoints = 100'000'000;

constexpr double kMillimetresPerPoint = 25.4 / 72.0;
constexpr double kClipTolerance = 0.5;  // points
constexpr double kColorTolerance = 0.02;
// Lines below this width all look alike, and corners of lines below that one.
constexpr double kHairlineMillimetres = 0.12;
constexpr double kCornerMillimetres = 1.2;
// Less than half a pixel of a hundredth of an inch is not seen.
constexpr double kLeastMillimetres = 0.127;
constexpr double kThinPoints = 0.001;

LossPlace PlaceIn(const ORXWatchable& interpreter) {
  const ORXPlace place = interpreter.Place();
  return {place.token, place.definition};
}

bool IsNear(std::array<float, 3> a, std::array<float, 3> b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::fabs(a[i] - b[i]) > kColorTolerance) return false;
  }
  return true;
}

std::array<float, 3> ColorIn(const ORXGraphics& graphics) {
  return {graphics.red, graphics.green, graphics.blue};
}

bool IsWhite(const ORXGraphics& graphics) { return IsNear(ColorIn(graphics), {1, 1, 1}); }

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

bool IsOutside(const ORXExtent& extent, const Box& box) {
  return extent.left < box.left - kClipTolerance || extent.bottom < box.bottom - kClipTolerance ||
         extent.right > box.right + kClipTolerance || extent.top > box.top + kClipTolerance;
}

// The largest box of the same middle and shape inside an ellipse that fills the box.
Box CoreOf(const Box& box) {
  constexpr double kCut = (1 - 0.7071) / 2;
  return {box.left + kCut * box.Width(), box.bottom + kCut * box.Height(),
          box.right - kCut * box.Width(), box.top - kCut * box.Height()};
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

// What leaves something on the page; moving and measuring do not.
class ShapeTest final : public ORXNameTest {
public:
  bool Test(std::string_view name) noexcept override {
    static const std::unordered_set<std::string_view> names = {
        "lineto", "rlineto", "curveto", "arc",   "arcn",
        "stroke", "fill",    "eofill",  "image", "colorimage"};
    const NameMeaning meaning = MeaningOf(name);
    return meaning == NameMeaning::Paint || meaning == NameMeaning::Image ||
           meaning == NameMeaning::Path || names.contains(name);
  }
};

class TextTest final : public ORXNameTest {
public:
  bool Test(std::string_view name) noexcept override {
    return MeaningOf(name) == NameMeaning::Text;
  }
};

bool IsLimit(std::string_view error) {
  return error == "limitcheck" || error == "VMerror" || error == "stackoverflow" ||
         error == "execstackoverflow" || error == "dictstackoverflow";
}

}  // namespace

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

void LossJudge::CountPending(const ORXWatchable& interpreter) {
  if (pending.empty()) return;
  const LossPlace now = PlaceIn(interpreter);
  for (const Pending& waiting : pending) {
    if (!waiting.countsAnyway && waiting.origin.place.token != now.token) continue;
    findings.Add(waiting.origin.loss, waiting.origin.name, waiting.origin.place);
  }
  pending.clear();
}

void LossJudge::JudgeColor(const Settings& settings, const ORXGraphics& graphics) {
  const Origin& origin = origins[settings.color];
  if (settings.color == 0 || origin.isCounted) return;
  const Color now = ColorIn(graphics);
  const bool isOverruled = !IsNear(now, origin.instead);
  if (isOverruled || (origin.isKnown && IsNear(now, origin.wanted))) return;
  Count(settings.color);
}

void LossJudge::JudgeClips(const Settings& settings, const ORXExtent& extent) {
  if (extent.left > extent.right) return;
  int depth = 0;
  for (std::uint32_t clip = settings.clip; clip != 0 && ++depth < 64; clip = origins[clip].outer) {
    const Origin& origin = origins[clip];
    if (IsOutside(extent, origin.isRectangle ? origin.extent : CoreOf(origin.extent))) Count(clip);
  }
}

void LossJudge::JudgeWidth(const Settings& settings, const ORXGraphics& graphics,
                           const ORXWatchable& interpreter) {
  constexpr float kDefaultWidth = 0.1F;
  const bool isDefault = graphics.lineWidth == kDefaultWidth;
  if (isDefault && settings.isHairline) return;
  const auto& m = graphics.matrix;
  const double scale = std::sqrt(std::fabs(m[0] * m[3] - m[1] * m[2]));
  const double asked = isDefault ? 1.0 : graphics.lineWidth / graphics.unitScale;
  const double meant = asked * scale * kMillimetresPerPoint;
  const double drawn =
      graphics.unitScale == 1.0F ? graphics.lineWidth * kMillimetresPerPoint : graphics.lineWidth;
  if (settings.join != 0 && drawn >= kCornerMillimetres && graphics.pathPoints > 2) {
    Count(settings.join);
  }
  if (meant <= 0 || std::max(drawn, meant) < kHairlineMillimetres) return;
  const double ratio = drawn / meant;
  const double away = std::max(ratio, 1 / ratio);
  if (away < 1.1 || std::fabs(drawn - meant) < kLeastMillimetres) return;
  Finding& finding = findings.Add(away >= 2 ? Loss::WidthWrong : Loss::WidthOff, "setlinewidth",
                                  PlaceIn(interpreter));
  const double before = finding.ratio > 0 ? std::max(finding.ratio, 1 / finding.ratio) : 0;
  if (away > before) finding.ratio = ratio;
}

void LossJudge::Painting(const ORXGraphics& graphics, const ORXExtent& extent,
                         ORXWatchable& interpreter) {
  CountPending(interpreter);
  const Settings& settings = SettingsOf(graphics);
  JudgeClips(settings, extent);
  Count(settings.matrix);
  Extend(extent, graphics.unitScale);
}

void LossJudge::Stroking(ORXWatchable& interpreter) {
  const ORXGraphics graphics = interpreter.Graphics();
  if (graphics.pathPoints < 1) return;
  ++findings.summary.strokes;
  Painting(graphics, interpreter.PathExtent(), interpreter);
  const Settings& settings = SettingsOf(graphics);
  JudgeColor(settings, graphics);
  Count(settings.dash);
  JudgeWidth(settings, graphics, interpreter);
}

void LossJudge::Filling(ORXWatchable& interpreter) {
  const ORXGraphics graphics = interpreter.Graphics();
  ++findings.summary.fills;
  Painting(graphics, interpreter.PathExtent(), interpreter);
  JudgeColor(SettingsOf(graphics), graphics);
}

void LossJudge::DrawingImage(float x, float y, const ORXPixelImage& image,
                             ORXWatchable& interpreter) {
  const ORXGraphics graphics = interpreter.Graphics();
  ++findings.summary.images;
  const double scale = graphics.unitScale;
  const double width = std::fabs(image.Width() * image.GetXPixelSize()) / scale;
  const double height = std::fabs(image.Height() * image.GetYPixelSize()) / scale;
  if (width < kThinPoints || height < kThinPoints) {
    CountAt(Loss::ImageThin, "image", interpreter);
  }
  const double left = x / scale;
  const double bottom = y / scale;
  Painting(graphics, {left, bottom, left + width, bottom + height}, interpreter);
}

void LossJudge::Extend(const ORXExtent& extent, double unitScale) {
  const Box box = {extent.left * unitScale, extent.bottom * unitScale, extent.right * unitScale,
                   extent.top * unitScale};
  const bool isFinite = std::isfinite(box.Width()) && std::isfinite(box.Height());
  if (extent.left > extent.right || !isFinite) return;
  DrawingSummary& summary = findings.summary;
  if (!summary.hasExtent) {
    summary.extent = box;
    summary.hasExtent = true;
  }
  Box& all = summary.extent;
  all = {std::min(all.left, box.left), std::min(all.bottom, box.bottom),
         std::max(all.right, box.right), std::max(all.top, box.top)};
}

}  // namespace orxdrawing
