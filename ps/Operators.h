// The operators: one small function each, in the files of their families. Each takes its operands
// from the operand stack, acts, pushes its results and answers how it went.
#pragma once

#include "ps/Errors.h"

namespace orxeps::operators {

// Operand stack.
ResultCode Pop(ORXPrintEPSInterpreter& interpreter);
ResultCode Exch(ORXPrintEPSInterpreter& interpreter);
ResultCode Dup(ORXPrintEPSInterpreter& interpreter);
ResultCode Roll(ORXPrintEPSInterpreter& interpreter);
ResultCode Copy(ORXPrintEPSInterpreter& interpreter);
ResultCode Index(ORXPrintEPSInterpreter& interpreter);
ResultCode Mark(ORXPrintEPSInterpreter& interpreter);
ResultCode CountToMark(ORXPrintEPSInterpreter& interpreter);
ResultCode ClearToMark(ORXPrintEPSInterpreter& interpreter);

// Arithmetic.
ResultCode Add(ORXPrintEPSInterpreter& interpreter);
ResultCode Sub(ORXPrintEPSInterpreter& interpreter);
ResultCode Mul(ORXPrintEPSInterpreter& interpreter);
ResultCode Div(ORXPrintEPSInterpreter& interpreter);
ResultCode IDiv(ORXPrintEPSInterpreter& interpreter);
ResultCode Mod(ORXPrintEPSInterpreter& interpreter);
ResultCode Abs(ORXPrintEPSInterpreter& interpreter);
ResultCode Neg(ORXPrintEPSInterpreter& interpreter);
ResultCode Ceiling(ORXPrintEPSInterpreter& interpreter);
ResultCode Floor(ORXPrintEPSInterpreter& interpreter);
ResultCode Round(ORXPrintEPSInterpreter& interpreter);

// Relations and constants.
ResultCode Eq(ORXPrintEPSInterpreter& interpreter);
ResultCode Lt(ORXPrintEPSInterpreter& interpreter);
ResultCode True(ORXPrintEPSInterpreter& interpreter);
ResultCode False(ORXPrintEPSInterpreter& interpreter);
ResultCode Null(ORXPrintEPSInterpreter& interpreter);

// Control.
ResultCode Exec(ORXPrintEPSInterpreter& interpreter);
ResultCode If(ORXPrintEPSInterpreter& interpreter);
ResultCode IfElse(ORXPrintEPSInterpreter& interpreter);
ResultCode Bind(ORXPrintEPSInterpreter& interpreter);

// Arrays.
ResultCode Array(ORXPrintEPSInterpreter& interpreter);
ResultCode EndArray(ORXPrintEPSInterpreter& interpreter);
ResultCode ALoad(ORXPrintEPSInterpreter& interpreter);
ResultCode AStore(ORXPrintEPSInterpreter& interpreter);

// Access to strings, arrays and dictionaries.
ResultCode Length(ORXPrintEPSInterpreter& interpreter);
ResultCode Get(ORXPrintEPSInterpreter& interpreter);
ResultCode Put(ORXPrintEPSInterpreter& interpreter);
ResultCode ForAll(ORXPrintEPSInterpreter& interpreter);

// Dictionaries.
ResultCode Dict(ORXPrintEPSInterpreter& interpreter);
ResultCode EndDictionary(ORXPrintEPSInterpreter& interpreter);
ResultCode Begin(ORXPrintEPSInterpreter& interpreter);
ResultCode End(ORXPrintEPSInterpreter& interpreter);
ResultCode Def(ORXPrintEPSInterpreter& interpreter);
ResultCode Load(ORXPrintEPSInterpreter& interpreter);
ResultCode Where(ORXPrintEPSInterpreter& interpreter);
ResultCode CurrentDict(ORXPrintEPSInterpreter& interpreter);
ResultCode SystemDict(ORXPrintEPSInterpreter& interpreter);
ResultCode UserDict(ORXPrintEPSInterpreter& interpreter);
ResultCode GlobalDict(ORXPrintEPSInterpreter& interpreter);
ResultCode ErrorDict(ORXPrintEPSInterpreter& interpreter);
ResultCode StatusDict(ORXPrintEPSInterpreter& interpreter);

// Resources.
ResultCode DefineResource(ORXPrintEPSInterpreter& interpreter);
ResultCode FindResource(ORXPrintEPSInterpreter& interpreter);
ResultCode UndefineResource(ORXPrintEPSInterpreter& interpreter);

// Paths.
ResultCode NewPath(ORXPrintEPSInterpreter& interpreter);
ResultCode MoveTo(ORXPrintEPSInterpreter& interpreter);
ResultCode RMoveTo(ORXPrintEPSInterpreter& interpreter);
ResultCode LineTo(ORXPrintEPSInterpreter& interpreter);
ResultCode RLineTo(ORXPrintEPSInterpreter& interpreter);
ResultCode CurveTo(ORXPrintEPSInterpreter& interpreter);
ResultCode Arc(ORXPrintEPSInterpreter& interpreter);
ResultCode ArcN(ORXPrintEPSInterpreter& interpreter);
ResultCode ClosePath(ORXPrintEPSInterpreter& interpreter);
ResultCode CurrentPoint(ORXPrintEPSInterpreter& interpreter);

// Painting and its attributes.
ResultCode Stroke(ORXPrintEPSInterpreter& interpreter);
ResultCode Fill(ORXPrintEPSInterpreter& interpreter);
ResultCode EoFill(ORXPrintEPSInterpreter& interpreter);
ResultCode SetLineWidth(ORXPrintEPSInterpreter& interpreter);
ResultCode CurrentLineWidth(ORXPrintEPSInterpreter& interpreter);
ResultCode SetLineCap(ORXPrintEPSInterpreter& interpreter);
ResultCode SetGray(ORXPrintEPSInterpreter& interpreter);
ResultCode SetRgbColor(ORXPrintEPSInterpreter& interpreter);
ResultCode RectClip(ORXPrintEPSInterpreter& interpreter);
ResultCode IgnoreSetting(ORXPrintEPSInterpreter& interpreter);

// Graphics state and matrices.
ResultCode GSave(ORXPrintEPSInterpreter& interpreter);
ResultCode GRestore(ORXPrintEPSInterpreter& interpreter);
ResultCode Concat(ORXPrintEPSInterpreter& interpreter);
ResultCode Matrix(ORXPrintEPSInterpreter& interpreter);
ResultCode CurrentMatrix(ORXPrintEPSInterpreter& interpreter);
ResultCode SetMatrix(ORXPrintEPSInterpreter& interpreter);
ResultCode Rotate(ORXPrintEPSInterpreter& interpreter);
ResultCode Scale(ORXPrintEPSInterpreter& interpreter);
ResultCode Translate(ORXPrintEPSInterpreter& interpreter);
ResultCode Transform(ORXPrintEPSInterpreter& interpreter);
ResultCode ITransform(ORXPrintEPSInterpreter& interpreter);

// Images and files.
ResultCode Image(ORXPrintEPSInterpreter& interpreter);
ResultCode ColorImage(ORXPrintEPSInterpreter& interpreter);
ResultCode CurrentFile(ORXPrintEPSInterpreter& interpreter);
ResultCode Filter(ORXPrintEPSInterpreter& interpreter);
ResultCode EExec(ORXPrintEPSInterpreter& interpreter);

}  // namespace orxeps::operators
