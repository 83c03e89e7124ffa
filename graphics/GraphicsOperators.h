// The operators of the page: paths, painting, graphics states and matrices. To add one, write the
// function, which names what it touches, and its row.
#pragma once

#include "graphics/Canvas.h"
#include "graphics/Counters.h"
#include "ps/Machine.h"

namespace orxeps {

namespace operators {

// Paths.
ResultCode NewPath(Canvas& canvas);
ResultCode MoveTo(Machine& machine, Canvas& canvas);
ResultCode RMoveTo(Machine& machine, Canvas& canvas);
ResultCode LineTo(Machine& machine, Canvas& canvas);
ResultCode RLineTo(Machine& machine, Canvas& canvas);
ResultCode CurveTo(Machine& machine, Canvas& canvas);
ResultCode Arc(Machine& machine, Canvas& canvas);
ResultCode ArcN(Machine& machine, Canvas& canvas);
ResultCode ClosePath(Machine& machine, Canvas& canvas);
ResultCode CurrentPoint(Machine& machine, Canvas& canvas);

// Painting and its attributes.
ResultCode Stroke(Machine& machine, Canvas& canvas);
ResultCode Fill(Machine& machine, Canvas& canvas);
ResultCode EoFill(Machine& machine, Canvas& canvas);
ResultCode SetLineWidth(Machine& machine, Canvas& canvas);
ResultCode CurrentLineWidth(Machine& machine, Canvas& canvas);
ResultCode SetLineCap(Machine& machine, Canvas& canvas);
ResultCode SetGray(Machine& machine, Canvas& canvas);
ResultCode SetRgbColor(Machine& machine, Canvas& canvas);
ResultCode RectClip(Machine& machine);
ResultCode IgnoreSetting(Machine& machine);

// Graphics state and matrices.
ResultCode GSave(Machine& machine, Canvas& canvas);
ResultCode GRestore(Canvas& canvas);
ResultCode Concat(Machine& machine, Canvas& canvas);
ResultCode Matrix(Machine& machine);
ResultCode CurrentMatrix(Machine& machine, Canvas& canvas);
ResultCode SetMatrix(Machine& machine, Canvas& canvas);
ResultCode Rotate(Machine& machine, Canvas& canvas);
ResultCode Scale(Machine& machine, Canvas& canvas);
ResultCode Translate(Machine& machine, Canvas& canvas);
ResultCode Transform(Machine& machine, Canvas& canvas);
ResultCode ITransform(Machine& machine, Canvas& canvas);

}  // namespace operators

// clang-format off
template <typename Owner>
inline constexpr OperatorRow kGraphicsOperators[] = {
    Row<Owner, operators::SetLineWidth>({.name = "setlinewidth", .position = 21, .operands = 1, .systemNameIndex = 155}),
    Row<Owner, operators::SetLineCap>({.name = "setlinecap", .position = 22, .operands = 1, .systemNameIndex = 153}),
    Row<Owner, operators::IgnoreSetting>({.name = "setlinejoin", .position = 23, .operands = 1, .systemNameIndex = 154}),
    Row<Owner, operators::IgnoreSetting>({.name = "setmiterlimit", .position = 24, .operands = 1}),
    Row<Owner, operators::RectClip>({.name = "rectclip", .position = 25, .operands = 4, .systemNameIndex = 127}),
    Row<Owner, operators::SetRgbColor>({.name = "setrgbcolor", .position = 26, .operands = 3, .systemNameIndex = 157}),
    Row<Owner, operators::SetGray>({.name = "setgray", .position = 27, .operands = 1, .systemNameIndex = 150}),
    Row<Owner, operators::IgnoreSetting>({.name = "setpagedevice", .position = 28, .operands = 1}),
    Row<Owner, operators::GSave>({.name = "gsave", .position = 29, .systemNameIndex = 78}),
    Row<Owner, operators::GRestore>({.name = "grestore", .position = 30, .systemNameIndex = 77}),
    Row<Owner, operators::CurrentLineWidth>({.name = "currentlinewidth", .position = 31, .systemNameIndex = 38}),
    Row<Owner, operators::CurrentPoint>({.name = "currentpoint", .position = 32, .systemNameIndex = 40}),
    Row<Owner, operators::NewPath>({.name = "newpath", .position = 33, .systemNameIndex = 111}),
    Row<Owner, operators::MoveTo>({.name = "moveto", .position = 34, .operands = 2, .systemNameIndex = 107}),
    Row<Owner, operators::RMoveTo>({.name = "rmoveto", .position = 35, .operands = 2, .systemNameIndex = 134}),
    Row<Owner, operators::CurveTo>({.name = "curveto", .position = 36, .operands = 6, .systemNameIndex = 43, .counter = kCurves}),
    Row<Owner, operators::Arc>({.name = "arc", .position = 37, .operands = 5, .systemNameIndex = 5, .counter = kArcs}),
    Row<Owner, operators::ArcN>({.name = "arcn", .position = 38, .operands = 5, .systemNameIndex = 6, .counter = kArcs}),
    Row<Owner, operators::LineTo>({.name = "lineto", .position = 39, .operands = 2, .systemNameIndex = 99, .counter = kLines}),
    Row<Owner, operators::RLineTo>({.name = "rlineto", .position = 40, .operands = 2, .systemNameIndex = 133, .counter = kLines}),
    Row<Owner, operators::ClosePath>({.name = "closepath", .position = 41, .systemNameIndex = 22, .counter = kClosedPaths}),
    Row<Owner, operators::Stroke>({.name = "stroke", .position = 42, .systemNameIndex = 167}),
    Row<Owner, operators::Fill>({.name = "fill", .position = 44, .systemNameIndex = 66}),
    Row<Owner, operators::Scale>({.name = "scale", .position = 51, .operands = 1, .systemNameIndex = 139}),
    Row<Owner, operators::Translate>({.name = "translate", .position = 52, .operands = 2, .systemNameIndex = 173}),
    Row<Owner, operators::Rotate>({.name = "rotate", .position = 53, .operands = 1, .systemNameIndex = 136}),
    Row<Owner, operators::CurrentMatrix>({.name = "currentmatrix", .position = 54, .operands = 1, .systemNameIndex = 39}),
    Row<Owner, operators::Matrix>({.name = "matrix", .position = 55, .systemNameIndex = 104}),
    Row<Owner, operators::SetMatrix>({.name = "setmatrix", .position = 56, .operands = 1, .systemNameIndex = 156}),
    Row<Owner, operators::Transform>({.name = "transform", .position = 57, .operands = 1, .systemNameIndex = 172}),
    Row<Owner, operators::ITransform>({.name = "itransform", .position = 58, .operands = 1, .systemNameIndex = 95}),
    Row<Owner, operators::EoFill>({.name = "eofill", .position = 61, .systemNameIndex = 59}),
    Row<Owner, operators::Concat>({.name = "concat", .position = 62, .operands = 1, .systemNameIndex = 23}),
};
// clang-format on

}  // namespace orxeps
