#include "image/ImageNotes.h"

#include <algorithm>
#include <cmath>

#include "ps/Dictionaries.h"
#include "ps/Operands.h"

namespace orxeps {

namespace {

constexpr double kOffPlace = 0.02;  // of the image's diagonal

// Whether the elements are these two, again and again.
bool IsRepeated(const ObjectList& elements, float even, float odd) noexcept {
  for (std::int32_t i = 1; i <= elements.Count(); ++i) {
    if (NumberOf(*elements.At(i)) != (i % 2 == 1 ? even : odd)) return false;
  }
  return true;
}

const CCITTFaxDecodeFilter* FaxFilterOf(std::span<void* const> filters) noexcept {
  for (void* const item : filters) {
    const auto* filter = static_cast<const DecodeFilter*>(item);
    if (filter->filterKind == FilterKind::CCITTFax) {
      return static_cast<const CCITTFaxDecodeFilter*>(filter);
    }
  }
  return nullptr;
}

}  // namespace

std::optional<std::array<double, 6>> MatrixOf(const PSObject* object) noexcept {
  if (!object || !object->Is(PSObjectType::Array)) return std::nullopt;
  const ObjectList& elements = object->Parts().arrayElements;
  std::array<double, 6> numbers{};
  if (elements.Count() < std::ssize(numbers)) return std::nullopt;
  for (std::int32_t i = 0; i < std::ssize(numbers); ++i) {
    numbers[static_cast<std::size_t>(i)] = NumberOf(*elements.At(i + 1));
  }
  return numbers;
}

void NotePlacement(const Machine& machine, const Canvas& canvas, ImageLanding landing,
                   const std::array<double, 6>& imageMatrix, double width, double height) noexcept {
  const auto [a, b, c, d, tx, ty] = imageMatrix;
  const double determinant = a * d - b * c;
  if (determinant == 0) return;
  const PointMap ctm(canvas.Current().ctm);
  double farthest = 0;
  for (const double u : {0.0, 1.0}) {
    for (const double v : {0.0, 1.0}) {
      const double column = u * width - tx;
      const double row = v * height - ty;
      const double x = (d * column - c * row) / determinant;
      const double y = (a * row - b * column) / determinant;
      const bool turnsX = landing == ImageLanding::Upright && ctm.a < 0;
      const bool turnsY = landing == ImageLanding::Upright && ctm.d < 0;
      farthest =
          std::max(farthest, std::hypot(ctm.a * x + ctm.c * y - ctm.a * (turnsX ? 1 - u : u),
                                        ctm.b * x + ctm.d * y - ctm.d * (turnsY ? v : 1 - v)));
    }
  }
  const double size = std::hypot(ctm.a + ctm.c, ctm.b + ctm.d);
  const double error = farthest / std::max(size, 1e-9);
  if (error > kOffPlace) NoteDeparture(machine, ORXNoteKind::ImageMisplaced, {}, error);
}

void NoteSampleCount(const Machine& machine, std::size_t there, std::size_t wanted) noexcept {
  if (there == wanted || wanted == 0) return;
  NoteDeparture(machine, there < wanted ? ORXNoteKind::SamplesMissing : ORXNoteKind::SamplesLeft,
                {}, static_cast<double>(there) / static_cast<double>(wanted));
}

void NoteDescription(const Machine& machine, const ORXHashDico& entries,
                     std::span<void* const> filters, int bitsPerComponent) {
  bool isInverted = false;
  const PSObject* decode = DictLocate(entries, "Decode");
  if (decode && decode->Is(PSObjectType::Array)) {
    const ObjectList& numbers = decode->Parts().arrayElements;
    isInverted = IsRepeated(numbers, 1, 0);
    const bool isKnown = isInverted || IsRepeated(numbers, 0, 1);
    const bool fits = numbers.Count() == 2 || (numbers.Count() == 6 && bitsPerComponent == 8);
    if (!isKnown || !fits) NoteDeparture(machine, ORXNoteKind::ImageColors);
  }
  const CCITTFaxDecodeFilter* fax = FaxFilterOf(filters);
  const bool blackIs1 = fax && fax->parameters.blackIs1 != 0;
  if (isInverted != blackIs1) NoteDeparture(machine, ORXNoteKind::ImageNegative);
  if (fax && fax->parameters.encodedByteAlign != 0) {
    NoteDeparture(machine, ORXNoteKind::FaxParameter, "EncodedByteAlign");
  }
}

}  // namespace orxeps
