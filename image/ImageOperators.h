// The operators of images and of the document's own file. To add one, write the function, which
// names what it touches, and its row.
#pragma once

#include "graphics/Canvas.h"
#include "graphics/Counters.h"
#include "image/DecodeFilters.h"
#include "ps/Machine.h"

namespace orxeps {

namespace operators {

ResultCode Image(Machine& machine, Canvas& canvas);
ResultCode ColorImage(Machine& machine, Canvas& canvas, FilterSet& filters);
ResultCode CurrentFile(Machine& machine, FilterSet& filters);
ResultCode Filter(Machine& machine, FilterSet& filters);
ResultCode EExec(FilterSet& filters);

}  // namespace operators

// clang-format off
template <typename Owner>
inline constexpr OperatorRow kImageOperators[] = {
    Row<Owner, operators::Image>({.name = "image", .position = 43, .operands = 1, .systemNameIndex = 86, .counter = kImages}),
    Row<Owner, operators::EExec>({.name = "eexec", .position = 59}),
    Row<Owner, operators::CurrentFile>({.name = "currentfile", .position = 74}),
    Row<Owner, operators::Filter>({.name = "filter", .position = 75, .operands = 2}),
    Row<Owner, operators::ColorImage>({.name = "colorimage", .position = 93, .operands = 1}),
};
// clang-format on

}  // namespace orxeps
