// "image" in its dictionary form. The data source is not run: the filters attached to it say how
// the samples that follow in the input are decoded.

#include "image/DecodeFilters.h"
#include "image/ImageNotes.h"
#include "image/ImageOperators.h"
#include "image/ImagePlacement.h"
#include "ps/Dictionaries.h"
#include "ps/InputReader.h"
#include "ps/Operands.h"

namespace orxeps::operators {

namespace {

// What the dictionary says; a value of another type than expected counts as absent.
struct ImageDescription {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::int32_t bitsPerComponent = 0;
  std::int32_t decodeCount = 2;
  const PSObject* dataSource = nullptr;  // borrowed from the dictionary

  explicit ImageDescription(const ORXHashDico& entries) {
    TakeInteger(entries, "Width", width);
    TakeInteger(entries, "Height", height);
    TakeInteger(entries, "BitsPerComponent", bitsPerComponent);
    if (const PSObject* decode = Locate(entries, "Decode", PSObjectType::Array)) {
      decodeCount = decode->Parts().arrayElements.Count();
    }
    dataSource = Locate(entries, "DataSource", PSObjectType::File);
  }

private:
  static const PSObject* Locate(const ORXHashDico& entries, const char* key, PSObjectType type) {
    const PSObject* value = DictLocate(entries, key);
    return value && value->Is(type) ? value : nullptr;
  }
  static void TakeInteger(const ORXHashDico& entries, const char* key, std::int32_t& value) {
    if (const PSObject* entry = Locate(entries, key, PSObjectType::Integer))
      value = entry->intValue;
  }
};

// Reads the samples from the input through all filters of the data source; empty when that fails,
// when there are more filters than can be and when the run may not go on.
ByteBuffer ReadSamples(RunWatch& watch, const PSObject& dataSource) {
  if (!dataSource.Parts().fileSource) return {};
  const PlaceHold place(*dataSource.Parts().fileSource);
  const auto filters = dataSource.Parts().fileFilters.Items();
  ByteBuffer samples;
  for (std::size_t i = 0; i < filters.size(); ++i) {
    auto* filter = static_cast<DecodeFilter*>(filters[i]);
    ByteBuffer decoded;
    const FilterStatus status = i == 0
                                    ? filter->ReadAndDecode(dataSource.Parts().fileSource, decoded)
                                    : filter->Decode(samples.Bytes(), decoded);
    if (status < 0 || decoded.IsEmpty() || filters.size() > kMaxFilters) return {};
    samples = std::move(decoded);
    watch.CountBytes(samples.Length());
    if (!watch.MayTakeStep()) return {};
  }
  return samples;
}

std::optional<ORXPixelImageFormat> ChooseFormat(const ImageDescription& description) noexcept {
  if (description.bitsPerComponent == 1) return ORXPixelImageFormat::Bilevel1;
  if (description.bitsPerComponent != 8) return std::nullopt;
  return description.decodeCount == 2 ? ORXPixelImageFormat::Grey8 : ORXPixelImageFormat::Rgb24;
}

// Gives the samples the image's full layout and draws them.
void DrawSamples(Machine& machine, Canvas& canvas, const ImageDescription& description,
                 ByteBuffer samples) {
  const std::optional<ORXPixelImageFormat> format = ChooseFormat(description);
  if (!format || description.width <= 0 || description.height <= 0) {
    return NoteDeparture(machine, ORXNoteKind::ImageSkipped, format ? "its size" : "its depth");
  }
  const auto bytes = LayoutBytes(description.width, description.height, *format);
  if (!bytes) {
    RaiseError(machine, "limitcheck");
    return;
  }
  NoteSampleCount(machine, samples.Length(), *bytes);
  if (*format == ORXPixelImageFormat::Bilevel1) {
    for (unsigned char& byte : samples.Bytes()) byte = static_cast<unsigned char>(~byte);
  }
  if (!samples.Resize(*bytes)) {
    RaiseError(machine, "VMerror");
    return;
  }
  ORXPixelImage image(description.width, description.height, *format, samples.Data(),
                      ORXDeallocatePixels::KeepWithCaller);
  DrawPlaced(canvas, PlaceImage(canvas, description.width, description.height), image);
}

}  // namespace

namespace {

void NoteImage(const Machine& machine, const Canvas& canvas, const ORXHashDico& entries,
               const ImageDescription& description) {
  NoteDescription(machine, entries, description.dataSource->Parts().fileFilters.Items(),
                  description.bitsPerComponent);
  if (const auto matrix = MatrixOf(DictLocate(entries, "ImageMatrix"))) {
    NotePlacement(machine, canvas, ImageLanding::AsUsual, *matrix, description.width,
                  description.height);
  }
}

}  // namespace

// dictionary image ->; the samples are read whether or not they can be drawn
ResultCode Image(Machine& machine, Canvas& canvas) {
  if (!machine.operandStack.Top()->Is(PSObjectType::Dictionary)) {
    NoteDeparture(machine, ORXNoteKind::ImageSkipped, "its operands");
    return ResultCode::Ran;
  }
  const PSRef dictionary = TakeOperand(machine);
  const ImageDescription description(dictionary->Parts().dictEntries);
  if (!description.dataSource) {
    NoteDeparture(machine, ORXNoteKind::ImageSkipped, "its data source");
    return ResultCode::Ran;
  }
  ByteBuffer samples = ReadSamples(machine.watch, *description.dataSource);
  if (machine.watch.IsStopped()) return ResultCode::Ran;
  if (samples.IsEmpty()) NoteDeparture(machine, ORXNoteKind::ImageUndecodable);
  if (!samples.IsEmpty() && canvas.HasGenerator()) {
    if (machine.watch.HasListener()) {
      NoteImage(machine, canvas, dictionary->Parts().dictEntries, description);
    }
    DrawSamples(machine, canvas, description, std::move(samples));
  }
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
