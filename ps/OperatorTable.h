// The one list of the operators. Everything that must know them is derived from it: the contents of
// systemdict, execution, the names of binary tokens and the counting.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "plugin/StatisticsRecord.h"
#include "ps/Operators.h"

namespace orxeps {

inline constexpr int kNoIndex = -1;
inline constexpr std::int32_t StatisticsRecord::*kNotCounted = nullptr;

struct OperatorRow {
  std::string_view name;
  ResultCode (*handler)(ORXPrintEPSInterpreter&);
  int systemNameIndex;  // in the binary encoding of the PostScript language, or kNoIndex
  std::int32_t StatisticsRecord::*counter;  // raised after each run, or kNotCounted
};

inline constexpr std::size_t kOperatorCount = 93;

// clang-format off
inline constexpr std::array<OperatorRow, kOperatorCount> OperatorTable = {{
    {"def", operators::Def, 51, kNotCounted},
    {"load", operators::Load, 100, kNotCounted},
    {"where", operators::Where, 186, kNotCounted},
    {"get", operators::Get, 75, kNotCounted},
    {"add", operators::Add, 1, kNotCounted},
    {"sub", operators::Sub, 169, kNotCounted},
    {"mul", operators::Mul, 108, kNotCounted},
    {"div", operators::Div, 54, kNotCounted},
    {"round", operators::Round, 137, kNotCounted},
    {"mod", operators::Mod, 106, kNotCounted},
    {"abs", operators::Abs, 0, kNotCounted},
    {"idiv", operators::IDiv, 82, kNotCounted},
    {"neg", operators::Neg, 110, kNotCounted},
    {"ceiling", operators::Ceiling, 16, kNotCounted},
    {"floor", operators::Floor, 69, kNotCounted},
    {"array", operators::Array, 9, kNotCounted},
    {"astore", operators::AStore, 11, kNotCounted},
    {"aload", operators::ALoad, 2, kNotCounted},
    {"eq", operators::Eq, 61, kNotCounted},
    {"ifelse", operators::IfElse, 85, kNotCounted},
    {"setlinewidth", operators::SetLineWidth, 155, kNotCounted},
    {"setlinecap", operators::SetLineCap, 153, kNotCounted},
    {"setlinejoin", operators::IgnoreSetting, 154, kNotCounted},
    {"setmiterlimit", operators::IgnoreSetting, kNoIndex, kNotCounted},
    {"rectclip", operators::RectClip, 127, kNotCounted},
    {"setrgbcolor", operators::SetRgbColor, 157, kNotCounted},
    {"setgray", operators::SetGray, 150, kNotCounted},
    {"setpagedevice", operators::IgnoreSetting, kNoIndex, kNotCounted},
    {"gsave", operators::GSave, 78, kNotCounted},
    {"grestore", operators::GRestore, 77, kNotCounted},
    {"currentlinewidth", operators::CurrentLineWidth, 38, kNotCounted},
    {"currentpoint", operators::CurrentPoint, 40, kNotCounted},
    {"newpath", operators::NewPath, 111, kNotCounted},
    {"moveto", operators::MoveTo, 107, kNotCounted},
    {"rmoveto", operators::RMoveTo, 134, kNotCounted},
    {"curveto", operators::CurveTo, 43, &StatisticsRecord::curves},
    {"arc", operators::Arc, 5, &StatisticsRecord::arcs},
    {"arcn", operators::ArcN, 6, &StatisticsRecord::arcs},
    {"lineto", operators::LineTo, 99, &StatisticsRecord::lines},
    {"rlineto", operators::RLineTo, 133, &StatisticsRecord::lines},
    {"closepath", operators::ClosePath, 22, &StatisticsRecord::closedPaths},
    {"stroke", operators::Stroke, 167, kNotCounted},
    {"image", operators::Image, 86, &StatisticsRecord::images},
    {"fill", operators::Fill, 66, kNotCounted},
    {"pop", operators::Pop, 117, kNotCounted},
    {"exch", operators::Exch, 62, kNotCounted},
    {"dup", operators::Dup, 56, kNotCounted},
    {"roll", operators::Roll, 135, kNotCounted},
    {"copy", operators::Copy, 25, kNotCounted},
    {"index", operators::Index, 88, kNotCounted},
    {"scale", operators::Scale, 139, kNotCounted},
    {"translate", operators::Translate, 173, kNotCounted},
    {"rotate", operators::Rotate, 136, kNotCounted},
    {"currentmatrix", operators::CurrentMatrix, 39, kNotCounted},
    {"matrix", operators::Matrix, 104, kNotCounted},
    {"setmatrix", operators::SetMatrix, 156, kNotCounted},
    {"transform", operators::Transform, 172, kNotCounted},
    {"itransform", operators::ITransform, 95, kNotCounted},
    {"eexec", operators::EExec, kNoIndex, kNotCounted},
    {"lt", operators::Lt, 102, kNotCounted},
    {"eofill", operators::EoFill, 59, kNotCounted},
    {"concat", operators::Concat, 23, kNotCounted},
    {"mark", operators::Mark, kNoIndex, kNotCounted},
    {"counttomark", operators::CountToMark, 27, kNotCounted},
    {"cleartomark", operators::ClearToMark, 19, kNotCounted},
    {"[", operators::Mark, kNoIndex, kNotCounted},
    {"]", operators::EndArray, kNoIndex, kNotCounted},
    {"false", operators::False, kNoIndex, kNotCounted},
    {"true", operators::True, kNoIndex, kNotCounted},
    {"null", operators::Null, kNoIndex, kNotCounted},
    {"if", operators::If, 84, kNotCounted},
    {"<<", operators::Mark, kNoIndex, kNotCounted},
    {">>", operators::EndDictionary, kNoIndex, kNotCounted},
    {"currentfile", operators::CurrentFile, kNoIndex, kNotCounted},
    {"filter", operators::Filter, kNoIndex, kNotCounted},
    {"length", operators::Length, kNoIndex, kNotCounted},
    {"dict", operators::Dict, kNoIndex, kNotCounted},
    {"begin", operators::Begin, kNoIndex, kNotCounted},
    {"end", operators::End, kNoIndex, kNotCounted},
    {"bind", operators::Bind, kNoIndex, kNotCounted},
    {"currentdict", operators::CurrentDict, kNoIndex, kNotCounted},
    {"exec", operators::Exec, kNoIndex, kNotCounted},
    {"defineresource", operators::DefineResource, kNoIndex, kNotCounted},
    {"undefineresource", operators::UndefineResource, kNoIndex, kNotCounted},
    {"findresource", operators::FindResource, kNoIndex, kNotCounted},
    {"put", operators::Put, kNoIndex, kNotCounted},
    {"forall", operators::ForAll, kNoIndex, kNotCounted},
    {"systemdict", operators::SystemDict, kNoIndex, kNotCounted},
    {"globaldict", operators::GlobalDict, kNoIndex, kNotCounted},
    {"errordict", operators::ErrorDict, kNoIndex, kNotCounted},
    {"statusdict", operators::StatusDict, kNoIndex, kNotCounted},
    {"userdict", operators::UserDict, kNoIndex, kNotCounted},
    {"colorimage", operators::ColorImage, kNoIndex, kNotCounted},
}};
// clang-format on

namespace checks {

constexpr bool NamesAreUnique() {
  for (std::size_t i = 0; i < kOperatorCount; ++i) {
    for (std::size_t j = i + 1; j < kOperatorCount; ++j) {
      if (OperatorTable[i].name == OperatorTable[j].name) return false;
    }
  }
  return true;
}

static_assert(NamesAreUnique());
static_assert(std::ranges::all_of(OperatorTable, [](const OperatorRow& row) {
  return !row.name.empty() && row.handler && row.systemNameIndex < 256;
}));
static_assert(std::ranges::count_if(OperatorTable, [](const OperatorRow& row) {
                return row.systemNameIndex != kNoIndex;
              }) == 62);

}  // namespace checks

// The row of a name, or null.
[[nodiscard]] constexpr const OperatorRow* FindOperator(std::string_view name) noexcept {
  const auto* row = std::ranges::find(OperatorTable, name, &OperatorRow::name);
  return row == OperatorTable.end() ? nullptr : row;
}

// The row that a binary token names by its index, or null.
[[nodiscard]] constexpr const OperatorRow* FindSystemName(int index) noexcept {
  const auto* row = std::ranges::find(OperatorTable, index, &OperatorRow::systemNameIndex);
  return row == OperatorTable.end() ? nullptr : row;
}

}  // namespace orxeps
