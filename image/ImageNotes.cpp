#include "image/ImageNotes.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "ps/Dictionaries.h"
#include "ps/Operands.h"

namespace orxeps {

namespace {

constexpr double kOffPlace = 0.02;  // of the image's diagonal

std::vector<float> NumbersOf(const PSObject& array) {
  std::vector<float> numbers;
  for (std::int32_t i = 1; i <= array.Parts().arrayElements.Count(); ++i) {
    numbers.push_back(NumberOf(*array.Parts().arrayElements.At(i)));
  }
  return numbers;
}

bool IsRepeated(const std::vector<float>& numbers, float even, float odd) noexcept {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] != (i % 2 == 0 ? even : odd)) return false;
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

void NotePlacement(const Machine& machine, const Canvas& canvas,
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
      farthest = std::max(farthest, std::hypot(ctm.a * x + ctm.c * y - ctm.a * u,
                                               ctm.b * x + ctm.d * y - ctm.d * (1 - v)));
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
    const std::vector<float> numbers = NumbersOf(*decode);
    isInverted = IsRepeated(numbers, 1, 0);
    const bool isKnown = isInverted || IsRepeated(numbers, 0, 1);
    const bool fits = numbers.size() == 2 || (numbers.size() == 6 && bitsPerComponent == 8);
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
