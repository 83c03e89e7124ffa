// "colorimage" with procedures as data sources. The procedures are not run: their second and fourth
// elements name the filters through which the samples that follow in the input are read, one
// encoded block per source and row.

#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "image/ImageNotes.h"
#include "image/ImageOperators.h"
#include "image/ImagePlacement.h"
#include "ps/InputReader.h"
#include "ps/Operands.h"

namespace orxeps::operators {

namespace {

constexpr std::size_t kMaxSources = 4;
constexpr int kMaxOperandsTaken = 10;

// The filters of one data source; either may be missing.
struct SampleSource {
  DecodeFilter* reader = nullptr;
  DecodeFilter* decoder = nullptr;
};

struct SampleLayout {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::int32_t components = 0;   // 1, 3 or 4; 0 for any other number
  std::int32_t sourceCount = 0;  // 0 to 4
};

// What the operands say, gathered from the top of the stack down.
struct ColorImageOperands {
  SampleLayout layout;
  std::int32_t bitsPerComponent = 0;
  std::array<SampleSource, kMaxSources> sources;  // the one nearest the top first
  std::int32_t integersMet = 0;
  int limit = kMaxOperandsTaken;
  std::optional<std::array<double, 6>> matrix;  // matters to watchers only
};

DecodeFilter* FilterOfElement(FilterSet& filters, const PSObject& procedure,
                              std::int32_t position) {
  const ObjectList& elements = procedure.Parts().procElements;
  if (elements.Count() < position) return nullptr;
  return filters.ForName(elements.At(position)->nameText.View());
}

void NoteInteger(ColorImageOperands& operands, std::int32_t value) noexcept {
  std::int32_t* const places[] = {&operands.bitsPerComponent, &operands.layout.height,
                                  &operands.layout.width};
  if (operands.integersMet < 3) *places[operands.integersMet++] = value;
}

// The flag that tells several sources from one also tells how many operands there are.
int OperandLimit(bool severalSources, const ColorImageOperands& operands) noexcept {
  if (!severalSources) return 7;
  switch (operands.layout.components) {
    case 1:
      return 7;
    case 3:
      return 9;
    case 4:
      return kMaxOperandsTaken;
    default:
      return operands.limit;
  }
}

void NoteOperand(FilterSet& filters, ColorImageOperands& operands, const PSObject& operand) {
  SampleLayout& layout = operands.layout;
  if (operand.Is(PSObjectType::Integer)) {
    NoteInteger(operands, operand.intValue);
  } else if (operand.Is(PSObjectType::Array)) {
    operands.matrix = MatrixOf(&operand);
  } else if (operand.Is(PSObjectType::Boolean)) {
    operands.limit = OperandLimit(operand.boolValue != 0, operands);
  } else if (operand.Is(PSObjectType::Procedure) &&
             layout.sourceCount < std::ssize(operands.sources)) {
    operands.sources[static_cast<std::size_t>(layout.sourceCount++)] = {
        FilterOfElement(filters, operand, 2), FilterOfElement(filters, operand, 4)};
  }
}

// Takes the operands off the stack but for the last one it looks at, normally the width. False when
// the stack runs out before.
bool TakeOperands(Machine& machine, FilterSet& filters, ColorImageOperands& operands) {
  const std::int32_t n = machine.operandStack.Top()->intValue;
  operands.layout.components = n == 1 || n == 3 || n == 4 ? n : 0;
  for (int i = 1; i < operands.limit; ++i) {
    machine.operandStack.Drop(1);
    const PSObject* operand = machine.operandStack.Top();
    if (!operand) return false;
    NoteOperand(filters, operands, *operand);
  }
  return true;
}

// Reads the rows of an image and puts their samples in place.
class RowReader {
public:
  RowReader(InputReader& document, std::span<const SampleSource> sampleSources)
      : input(document), sources(sampleSources) {}

  // Reads the next row. False when there is nothing to read it from.
  [[nodiscard]] bool ReadRow() {
    bool canRead = false;
    for (std::size_t k = 0; k < sources.size(); ++k) {
      blocks[k] = {};
      if (CanRead(sources[k].reader) && input.IsReadable()) {
        canRead = true;
        ReadBlock(sources[k], blocks[k]);
      }
      gaveAll = gaveAll && !blocks[k].IsEmpty();
    }
    return canRead;
  }

  // Whether every source gave something each time.
  [[nodiscard]] bool GaveAll() const noexcept { return gaveAll; }
  [[nodiscard]] std::size_t LengthOfRow() const noexcept { return rowLength; }
  // Byte i of source k goes to place (row * row length + i) * step + k, if that lies in `samples`.
  void StoreRow(std::span<unsigned char> samples, std::size_t row, std::size_t step) const {
    for (std::size_t k = 0; k < sources.size(); ++k) {
      const auto block = blocks[k].Bytes().first(std::min(blocks[k].Length(), rowLength));
      if (row > samples.size()) return;
      std::size_t place = row * rowLength * step + k;
      for (const unsigned char byte : block) {
        if (place >= samples.size()) break;
        samples[place] = byte;
        place += step;
      }
    }
  }

private:
  // Only base-85 text is read from the input; waiting for anything else would go on for ever.
  static bool CanRead(const DecodeFilter* filter) noexcept {
    return filter && filter->filterKind == FilterKind::ASCII85;
  }

  // A source without a second filter contributes nothing.
  void ReadBlock(const SampleSource& source, ByteBuffer& block) {
    ByteBuffer encoded;
    if (source.reader->ReadAndDecode(&input, encoded) < 0) return;
    if (encoded.IsEmpty() || !source.decoder) return;
    ByteBuffer decoded;
    if (source.decoder->Decode(encoded.Bytes(), decoded) < 0) return;
    rowLength = decoded.Length();
    block = std::move(decoded);
  }

  InputReader& input;
  const std::span<const SampleSource> sources;
  std::array<ByteBuffer, kMaxSources> blocks;
  bool gaveAll = true;
  std::size_t rowLength = 0;  // of the last block that was decoded, in this row or an earlier one
};

std::optional<ORXPixelImageFormat> FormatOf(std::int32_t components) noexcept {
  switch (components) {
    case 1:
      return ORXPixelImageFormat::Grey8;
    case 3:
      return ORXPixelImageFormat::Rgb24;
    case 4:
      return ORXPixelImageFormat::Cmyk32;
    default:
      return std::nullopt;
  }
}

// The samples of an image with what became of them.
struct ColorSamples {
  bool handedBack = false;  // there is an image, even if it has no layout that could be drawn
  ByteBuffer bytes;         // empty for an image that cannot be drawn
  bool isComplete = false;  // every row of every source could be decoded
};

// Makes room for the samples. One source may bring any components, several bring one each; three
// that do not fit their components still count as an image, four do not.
ColorSamples PrepareSamples(Machine& machine, const SampleLayout& layout) {
  ColorSamples samples;
  const bool sourcesFit = layout.sourceCount == 1 || layout.sourceCount == layout.components;
  if (layout.width <= 0 || layout.height <= 0) return samples;
  samples.handedBack = sourcesFit || layout.sourceCount == 3;
  const auto format = FormatOf(layout.components);
  if (!sourcesFit || !format) return samples;
  const auto bytes = LayoutBytes(layout.width, layout.height, *format);
  if (bytes) samples.bytes = ByteBuffer::Zeroed(machine.heap.Budget(), *bytes);
  samples.handedBack = !samples.bytes.IsEmpty();
  if (!samples.handedBack) RaiseError(machine, bytes ? "VMerror" : "limitcheck");
  return samples;
}

// Reads all rows from the input, whether or not they make an image.
ColorSamples ReadColorImageSamples(Machine& machine, InputReader& input, const SampleLayout& layout,
                                   std::span<const SampleSource> sources) {
  if (layout.sourceCount == 0 || layout.sourceCount == 2) return {};
  ColorSamples samples = PrepareSamples(machine, layout);
  const auto step =
      layout.sourceCount == 1 ? std::size_t{1} : static_cast<std::size_t>(layout.components);
  RowReader reader(input, sources);
  for (std::int32_t row = 0; row < layout.height && reader.ReadRow(); ++row) {
    reader.StoreRow(samples.bytes.Bytes(), static_cast<std::size_t>(row), step);
    machine.watch.CountBytes(reader.LengthOfRow());
    if (!machine.watch.MayTakeStep()) break;
  }
  samples.isComplete = reader.GaveAll();
  return samples;
}

// Turns the image around its vertical axis. False when memory or the budget runs out.
bool MirrorLeftToRight(ORXPixelImage& image, std::size_t bytes, MemoryBudget& budget) {
  MemoryShare copy(budget);
  if (!copy.Resize(bytes)) return false;
  image.InvertLineProgression();
  ORXPixelImage* turned = image.CreateRotatedImage(180);
  if (!turned) return false;
  image = *turned;
  turned->Release();
  return true;
}

// Draws the image, of so many bytes, upright: a negative direction of the matrix moves its origin
// and mirrors it.
void DrawUpright(Machine& machine, Canvas& canvas, const SampleLayout& layout, std::size_t bytes,
                 ORXPixelImage& image) {
  const ORXMath3x3Matrix& ctm = canvas.Current().ctm;
  const double a = ctm.GetFirstColumn().x;
  const double d = ctm.GetSecondColumn().y;
  ImagePlacement placement = PlaceImage(canvas, layout.width, layout.height);
  if (a < 0.0) {
    placement.x = static_cast<float>(static_cast<double>(placement.x) + a);
    if (!MirrorLeftToRight(image, bytes, machine.heap.Budget())) {
      RaiseError(machine, "VMerror");
      return;
    }
  }
  if (d < 0.0) {
    placement.y = static_cast<float>(static_cast<double>(placement.y) + d);
    image.InvertLineProgression();
  }
  placement.xPixelSize = std::fabs(placement.xPixelSize);
  placement.yPixelSize = std::fabs(placement.yPixelSize);
  DrawPlaced(canvas, placement, image);
}

}  // namespace

namespace {

void NoteColorImage(const Machine& machine, const Canvas& canvas,
                    const ColorImageOperands& operands, const ColorSamples& samples) {
  if (!machine.watch.HasListener()) return;
  const SampleLayout& layout = operands.layout;
  if (samples.bytes.IsEmpty() || operands.bitsPerComponent != 8) {
    return NoteDeparture(machine, ORXNoteKind::ImageSkipped, "its layout");
  }
  if (!samples.isComplete) NoteDeparture(machine, ORXNoteKind::ImageUndecodable);
  if (operands.matrix) {
    NotePlacement(machine, canvas, ImageLanding::Upright, *operands.matrix, layout.width,
                  layout.height);
  }
}

}  // namespace

// width height bits matrix proc1 ... procn bool n colorimage ->; when it fails, the last operand
// that it looked at stays
ResultCode ColorImage(Machine& machine, Canvas& canvas, FilterSet& filters) {
  if (!machine.operandStack.Top()->Is(PSObjectType::Integer)) return ResultCode::NoOperand;
  ColorImageOperands operands;
  if (!TakeOperands(machine, filters, operands)) return ResultCode::NoOperand;
  const SampleLayout& layout = operands.layout;
  const PlaceHold place(filters.document);
  const auto sources = std::span<const SampleSource>(operands.sources)
                           .first(static_cast<std::size_t>(layout.sourceCount));
  ColorSamples samples = ReadColorImageSamples(machine, filters.document, layout, sources);
  if (canvas.HasGenerator()) NoteColorImage(machine, canvas, operands, samples);
  if (!samples.handedBack) return ResultCode::NoOperand;
  if (!samples.bytes.IsEmpty() && operands.bitsPerComponent == 8 && canvas.HasGenerator()) {
    ORXPixelImage image(layout.width, layout.height, *FormatOf(layout.components),
                        samples.bytes.Data(), ORXDeallocatePixels::KeepWithCaller);
    DrawUpright(machine, canvas, layout, samples.bytes.Length(), image);
  }
  machine.operandStack.Drop(1);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
