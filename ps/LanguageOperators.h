// The operators of the language: one small function each, in the files of their families. Each
// takes its operands from the operand stack, of which its row says how many are there at least,
// acts, pushes its results and answers how it went. To add one, write the function and its row.
#pragma once

#include "ps/Machine.h"

namespace orxeps {

namespace operators {

// Operand stack.
ResultCode Pop(Machine& machine);
ResultCode Exch(Machine& machine);
ResultCode Dup(Machine& machine);
ResultCode Roll(Machine& machine);
ResultCode Copy(Machine& machine);
ResultCode Index(Machine& machine);
ResultCode Mark(Machine& machine);
ResultCode CountToMark(Machine& machine);
ResultCode ClearToMark(Machine& machine);

// Arithmetic.
ResultCode Add(Machine& machine);
ResultCode Sub(Machine& machine);
ResultCode Mul(Machine& machine);
ResultCode Div(Machine& machine);
ResultCode IDiv(Machine& machine);
ResultCode Mod(Machine& machine);
ResultCode Abs(Machine& machine);
ResultCode Neg(Machine& machine);
ResultCode Ceiling(Machine& machine);
ResultCode Floor(Machine& machine);
ResultCode Round(Machine& machine);

// Relations and constants.
ResultCode Eq(Machine& machine);
ResultCode Lt(Machine& machine);
ResultCode True(Machine& machine);
ResultCode False(Machine& machine);
ResultCode Null(Machine& machine);

// Control.
ResultCode Exec(Machine& machine);
ResultCode If(Machine& machine);
ResultCode IfElse(Machine& machine);
ResultCode Bind(Machine& machine);

// Arrays.
ResultCode Array(Machine& machine);
ResultCode EndArray(Machine& machine);
ResultCode ALoad(Machine& machine);
ResultCode AStore(Machine& machine);

// Access to strings, arrays and dictionaries.
ResultCode Length(Machine& machine);
ResultCode Get(Machine& machine);
ResultCode Put(Machine& machine);
ResultCode ForAll(Machine& machine);

// Dictionaries.
ResultCode Dict(Machine& machine);
ResultCode EndDictionary(Machine& machine);
ResultCode Begin(Machine& machine);
ResultCode End(Machine& machine);
ResultCode Def(Machine& machine);
ResultCode Load(Machine& machine);
ResultCode Where(Machine& machine);
ResultCode CurrentDict(Machine& machine);
ResultCode SystemDict(Machine& machine);
ResultCode UserDict(Machine& machine);
ResultCode GlobalDict(Machine& machine);
ResultCode ErrorDict(Machine& machine);
ResultCode StatusDict(Machine& machine);

// Resources.
ResultCode DefineResource(Machine& machine);
ResultCode FindResource(Machine& machine);
ResultCode UndefineResource(Machine& machine);

}  // namespace operators

// clang-format off
template <typename Owner>
inline constexpr OperatorRow kLanguageOperators[] = {
    Row<Owner, operators::Def>({.name = "def", .position = 1, .operands = 2, .systemNameIndex = 51}),
    Row<Owner, operators::Load>({.name = "load", .position = 2, .operands = 1, .systemNameIndex = 100}),
    Row<Owner, operators::Where>({.name = "where", .position = 3, .systemNameIndex = 186}),
    Row<Owner, operators::Get>({.name = "get", .position = 4, .operands = 2, .systemNameIndex = 75}),
    Row<Owner, operators::Add>({.name = "add", .position = 5, .operands = 2, .systemNameIndex = 1}),
    Row<Owner, operators::Sub>({.name = "sub", .position = 6, .operands = 2, .systemNameIndex = 169}),
    Row<Owner, operators::Mul>({.name = "mul", .position = 7, .operands = 2, .systemNameIndex = 108}),
    Row<Owner, operators::Div>({.name = "div", .position = 8, .operands = 2, .systemNameIndex = 54}),
    Row<Owner, operators::Round>({.name = "round", .position = 9, .operands = 1, .systemNameIndex = 137}),
    Row<Owner, operators::Mod>({.name = "mod", .position = 10, .operands = 2, .systemNameIndex = 106}),
    Row<Owner, operators::Abs>({.name = "abs", .position = 11, .operands = 1, .systemNameIndex = 0}),
    Row<Owner, operators::IDiv>({.name = "idiv", .position = 12, .operands = 2, .systemNameIndex = 82}),
    Row<Owner, operators::Neg>({.name = "neg", .position = 13, .operands = 1, .systemNameIndex = 110}),
    Row<Owner, operators::Ceiling>({.name = "ceiling", .position = 14, .operands = 1, .systemNameIndex = 16}),
    Row<Owner, operators::Floor>({.name = "floor", .position = 15, .operands = 1, .systemNameIndex = 69}),
    Row<Owner, operators::Array>({.name = "array", .position = 16, .operands = 1, .systemNameIndex = 9}),
    Row<Owner, operators::AStore>({.name = "astore", .position = 17, .operands = 1, .systemNameIndex = 11}),
    Row<Owner, operators::ALoad>({.name = "aload", .position = 18, .operands = 1, .systemNameIndex = 2}),
    Row<Owner, operators::Eq>({.name = "eq", .position = 19, .operands = 2, .systemNameIndex = 61}),
    Row<Owner, operators::IfElse>({.name = "ifelse", .position = 20, .operands = 3, .systemNameIndex = 85}),
    Row<Owner, operators::Pop>({.name = "pop", .position = 45, .operands = 1, .systemNameIndex = 117}),
    Row<Owner, operators::Exch>({.name = "exch", .position = 46, .operands = 2, .systemNameIndex = 62}),
    Row<Owner, operators::Dup>({.name = "dup", .position = 47, .operands = 1, .systemNameIndex = 56}),
    Row<Owner, operators::Roll>({.name = "roll", .position = 48, .operands = 2, .systemNameIndex = 135}),
    Row<Owner, operators::Copy>({.name = "copy", .position = 49, .operands = 1, .systemNameIndex = 25}),
    Row<Owner, operators::Index>({.name = "index", .position = 50, .operands = 1, .systemNameIndex = 88}),
    Row<Owner, operators::Lt>({.name = "lt", .position = 60, .operands = 2, .systemNameIndex = 102}),
    Row<Owner, operators::Mark>({.name = "mark", .position = 63}),
    Row<Owner, operators::CountToMark>({.name = "counttomark", .position = 64, .systemNameIndex = 27}),
    Row<Owner, operators::ClearToMark>({.name = "cleartomark", .position = 65, .systemNameIndex = 19}),
    Row<Owner, operators::Mark>({.name = "[", .position = 66}),
    Row<Owner, operators::EndArray>({.name = "]", .position = 67}),
    Row<Owner, operators::False>({.name = "false", .position = 68}),
    Row<Owner, operators::True>({.name = "true", .position = 69}),
    Row<Owner, operators::Null>({.name = "null", .position = 70}),
    Row<Owner, operators::If>({.name = "if", .position = 71, .operands = 2, .systemNameIndex = 84}),
    Row<Owner, operators::Mark>({.name = "<<", .position = 72}),
    Row<Owner, operators::EndDictionary>({.name = ">>", .position = 73}),
    Row<Owner, operators::Length>({.name = "length", .position = 76, .operands = 1}),
    Row<Owner, operators::Dict>({.name = "dict", .position = 77, .operands = 1}),
    Row<Owner, operators::Begin>({.name = "begin", .position = 78, .operands = 1}),
    Row<Owner, operators::End>({.name = "end", .position = 79}),
    Row<Owner, operators::Bind>({.name = "bind", .position = 80, .operands = 1}),
    Row<Owner, operators::CurrentDict>({.name = "currentdict", .position = 81}),
    Row<Owner, operators::Exec>({.name = "exec", .position = 82, .operands = 1}),
    Row<Owner, operators::DefineResource>({.name = "defineresource", .position = 83, .operands = 3}),
    Row<Owner, operators::UndefineResource>({.name = "undefineresource", .position = 84, .operands = 2}),
    Row<Owner, operators::FindResource>({.name = "findresource", .position = 85, .operands = 2}),
    Row<Owner, operators::Put>({.name = "put", .position = 86, .operands = 3}),
    Row<Owner, operators::ForAll>({.name = "forall", .position = 87, .operands = 2}),
    Row<Owner, operators::SystemDict>({.name = "systemdict", .position = 88}),
    Row<Owner, operators::GlobalDict>({.name = "globaldict", .position = 89}),
    Row<Owner, operators::ErrorDict>({.name = "errordict", .position = 90}),
    Row<Owner, operators::StatusDict>({.name = "statusdict", .position = 91}),
    Row<Owner, operators::UserDict>({.name = "userdict", .position = 92}),
};
// clang-format on

}  // namespace orxeps
