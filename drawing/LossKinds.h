// Every kind of loss that can be found in a document: its name for programs, which stays, how
// serious it is, what it belongs to, and what it means, in words for people.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace orxdrawing {

// The gravest last.
enum class Severity { NoEffect, Style, Missing, Wrong, Nothing };

enum class Loss {
  NotPostScript,
  NothingDrawn,
  LimitMet,
  MatrixLost,
  StateKept,
  PathLost,
  Negated,
  DevicePoint,
  IntegerMatrix,
  ColorLost,
  ClipLost,
  WidthWrong,
  ImageMisplaced,
  ImageNegative,
  ImageColors,
  ImageFax,
  SamplesLeft,
  ValueLost,
  Compared,
  Failed,
  TextLost,
  PaintLost,
  ImageLost,
  ImageUndecodable,
  ImageThin,
  SamplesMissing,
  FilterUnknown,
  LoopLost,
  DataLost,
  OutsideBox,
  WidthOff,
  WidthAsked,
  NotRounded,
  DashesLost,
  JoinsLost,
  NoBox,
  OddBox,
  PageCount,
  OddHeader,
  LabelList,
  LongLine,
  CharactersLost,
  NameUnknown,
};

struct LossKind {
  Loss loss;
  std::string_view name;  // for programs
  Severity severity;
  std::string_view group;  // for people
  std::string_view means;  // what was met and what it means for the picture
};

// In the order of the enumeration.
[[nodiscard]] std::span<const LossKind> LossKinds() noexcept;
[[nodiscard]] const LossKind& KindOf(Loss loss) noexcept;

// "picture wrong", ...
[[nodiscard]] std::string_view TextOf(Severity severity) noexcept;

}  // namespace orxdrawing
