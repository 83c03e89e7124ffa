#include "drawing/LossKinds.h"

#include <algorithm>
#include <array>

namespace orxdrawing {

namespace {

using enum Severity;

// clang-format off
constexpr std::array kKinds = {
    LossKind{Loss::NotPostScript, "not-postscript", Nothing, "file", "the file does not begin with %!: it is no PostScript"},
    LossKind{Loss::NothingDrawn, "nothing-drawn", Nothing, "file", "nothing is drawn at all"},
    LossKind{Loss::LimitMet, "limit-met", Missing, "limit", "a limit of the interpreter was met: what ran there is missing"},
    LossKind{Loss::MatrixLost, "matrix-lost", Wrong, "geometry", "what follows is drawn at another place or size: the matrix is not set"},
    LossKind{Loss::StateKept, "state-kept", Wrong, "geometry", "what follows is drawn at another place or size: the matrix is not brought back"},
    LossKind{Loss::PathLost, "path-lost", Wrong, "geometry", "outlines lack a piece: a segment is not added to the path"},
    LossKind{Loss::Negated, "changed-for-all", Wrong, "geometry", "shapes are bent, rectangles come out as triangles: a number is changed for all its holders"},
    LossKind{Loss::DevicePoint, "device-point", Wrong, "geometry", "what is placed by the current point lands elsewhere: its transformation is not undone"},
    LossKind{Loss::IntegerMatrix, "integer-matrix", Wrong, "geometry", "what follows is drawn at another place or size: integers in a matrix count as 0"},
    LossKind{Loss::ColorLost, "color-lost", Wrong, "colour", "shapes come out in the colour set before"},
    LossKind{Loss::ClipLost, "clip-lost", Wrong, "clipping", "parts that should be cut off are drawn"},
    LossKind{Loss::WidthWrong, "width-wrong", Wrong, "width", "widths do not follow the scale"},
    LossKind{Loss::ImageMisplaced, "image-misplaced", Wrong, "image", "an image is mirrored, not turned, or lies elsewhere: only the usual image matrix counts"},
    LossKind{Loss::ImageNegative, "image-negative", Wrong, "image", "an image comes out as a negative"},
    LossKind{Loss::ImageColors, "image-colors", Wrong, "image", "an image comes out in other colours: its Decode values or components do not count"},
    LossKind{Loss::ImageFax, "image-fax", Wrong, "image", "a fax image is garbled: a parameter of its encoding does not count"},
    LossKind{Loss::SamplesLeft, "samples-left", Wrong, "image", "an image comes out as noise or in part: it has more samples than its size and colours take"},
    LossKind{Loss::ValueLost, "value-lost", Wrong, "program", "shapes that depend on it may be wrong or missing: a value is not computed"},
    LossKind{Loss::Compared, "compared-false", Wrong, "program", "the program takes another way: a comparison of two reals is always false"},
    LossKind{Loss::Failed, "failed", Wrong, "program", "what the operator should have done is missing: it failed"},
    LossKind{Loss::TextLost, "text-lost", Missing, "text", "text is not drawn"},
    LossKind{Loss::PaintLost, "paint-lost", Missing, "shapes", "shapes are not drawn"},
    LossKind{Loss::ImageLost, "image-lost", Missing, "image", "an image is not drawn"},
    LossKind{Loss::ImageUndecodable, "image-undecodable", Missing, "image", "an image is missing or partly black: its data could not be decoded"},
    LossKind{Loss::ImageThin, "image-thin", Missing, "image", "an image is thinner than a thousandth of a point: nobody sees it"},
    LossKind{Loss::SamplesMissing, "samples-missing", Missing, "image", "an image is black in part: it has too few samples"},
    LossKind{Loss::FilterUnknown, "filter-unknown", Missing, "image", "an image is not drawn: its encoding is not known"},
    LossKind{Loss::LoopLost, "loop-lost", Missing, "program", "what the procedure would have drawn is missing: it does not run"},
    LossKind{Loss::DataLost, "data-lost", Missing, "program", "data in angle brackets is dropped or run as a program"},
    LossKind{Loss::OutsideBox, "outside-box", Style, "file", "the drawing reaches beyond its box and is cut off there"},
    LossKind{Loss::WidthOff, "width-off", Style, "width", "widths do not follow the scale"},
    LossKind{Loss::WidthAsked, "width-asked", Style, "width", "widths computed from the current one come out otherwise: it is answered in millimetres"},
    LossKind{Loss::NotRounded, "not-rounded", Style, "width", "widths or places that should be rounded to whole units are not"},
    LossKind{Loss::DashesLost, "dashes-lost", Style, "line style", "lines come out solid"},
    LossKind{Loss::JoinsLost, "joins-lost", Style, "line style", "corners of wide lines come out pointed"},
    LossKind{Loss::NoBox, "no-box", Style, "file", "no bounding box: the drawing's own extent is shown"},
    LossKind{Loss::OddBox, "odd-box", Style, "file", "the bounding box is no four numbers with an area"},
    LossKind{Loss::PageCount, "page-count", Style, "file", "the page count and the page comments disagree"},
    LossKind{Loss::OddHeader, "odd-header", Style, "file", "the preview header does not tell where the PostScript section lies"},
    LossKind{Loss::LabelList, "label-list", NoEffect, "file", "pages without a label in a document that labels pages"},
    LossKind{Loss::LongLine, "long-line", NoEffect, "file", "a structure comment is longer than 255 bytes"},
    LossKind{Loss::CharactersLost, "characters-lost", NoEffect, "program", "brackets in a string are dropped"},
    LossKind{Loss::NameUnknown, "name-unknown", NoEffect, "program", "a name that means nothing: bookkeeping"},
};
// clang-format on

static_assert(std::ranges::is_sorted(kKinds, {}, &LossKind::loss) &&
              kKinds.size() == static_cast<std::size_t>(Loss::NameUnknown) + 1);

}  // namespace

std::span<const LossKind> LossKinds() noexcept { return kKinds; }

const LossKind& KindOf(Loss loss) noexcept { return kKinds[static_cast<std::size_t>(loss)]; }

std::string_view TextOf(Severity severity) noexcept {
  switch (severity) {
    case NoEffect:
      return "no visible effect";
    case Style:
      return "style differs";
    case Missing:
      return "content missing";
    case Wrong:
      return "picture wrong";
    case Nothing:
      return "nothing remains";
  }
  return "";
}

}  // namespace orxdrawing
