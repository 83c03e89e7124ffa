#include "drawing/TraceGenerator.h"

#include <charconv>
#include <cstdio>
#include <numeric>
#include <utility>

#include "drawing/Crc32.h"
#include "drawing/Text.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {

namespace {

constexpr std::size_t kBufferBytes = 1 << 16;

}  // namespace

TraceGenerator::TraceGenerator(Samples samples, Sink lineSink)
    : samplesWritten(samples == Samples::Written), sink(std::move(lineSink)) {
  text.reserve(kBufferBytes + 256);
}

void TraceGenerator::Add(int number) {
  char digits[16];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void TraceGenerator::Add(float number) { AppendFloat(text, number); }

template <typename Number>
void TraceGenerator::AddList(std::span<const Number> numbers) {
  Add("[");
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) Add(", ");
    Add(numbers[i]);
    HandOnWhenLarge();
  }
  Add("]");
}

template <typename... Arguments>
int TraceGenerator::Line(std::string_view operation, Arguments... arguments) {
  Add(operation);
  Add("(");
  std::string_view separator;
  ((Add(separator), Add(arguments), separator = ", "), ...);
  return EndLine();
}

int TraceGenerator::EndLine() {
  Add(")\n");
  HandOnWhenLarge();
  return 0;
}

void TraceGenerator::HandOnWhenLarge() {
  if (text.size() >= kBufferBytes) Flush();
}

void TraceGenerator::Flush() {
  sink(text);
  text.clear();
}

void TraceGenerator::Report(const ORXUnicodeString& line) {
  Add("report: ");
  Add(EscapeForTerminal(line.ToUtf8()));
  Add("\n");
}

int TraceGenerator::NewPage() { return Line("NewPage"); }
int TraceGenerator::MoveTo(float x, float y) { return Line("MoveTo", x, y); }
int TraceGenerator::LineTo(float x, float y) { return Line("LineTo", x, y); }

int TraceGenerator::FillArea(int contourCount, int* pointCounts, float* points) {
  const std::span<const int> counts(pointCounts, static_cast<std::size_t>(contourCount));
  const std::size_t pointCount = std::accumulate(counts.begin(), counts.end(), std::size_t{0});
  Add("FillArea(");
  Add(contourCount);
  Add(", ");
  AddList(counts);
  Add(", ");
  AddList(std::span<const float>(points, 2 * pointCount));
  return EndLine();
}

int TraceGenerator::DrawImage(float x, float y, int flags, ORXPixelImage* image) {
  const std::span<const unsigned char> samples(image->Pixels(), image->ByteCount());
  char crc[16];
  std::snprintf(crc, sizeof crc, "%08x", static_cast<unsigned>(Crc32(samples)));
  Add("DrawImage(");
  Add(x);
  Add(", ");
  Add(y);
  Add(", ");
  Add(flags);
  Add(", {width: ");
  Add(image->Width());
  Add(", height: ");
  Add(image->Height());
  Add(", format: ");
  Add(static_cast<int>(image->Format()));
  Add(", xPixelSize: ");
  Add(image->GetXPixelSize());
  Add(", yPixelSize: ");
  Add(image->GetYPixelSize());
  Add(", bytes: " + std::to_string(samples.size()));
  Add(", crc32: ");
  Add(crc);
  if (samplesWritten) AddSamples(samples);
  Add("}");
  return EndLine();
}

void TraceGenerator::AddSamples(std::span<const unsigned char> samples) {
  static constexpr char kDigits[] = "0123456789abcdef";
  Add(", samples: ");
  for (const unsigned char sample : samples) {
    text += kDigits[sample >> 4];
    text += kDigits[sample & 15];
    HandOnWhenLarge();
  }
}

int TraceGenerator::DefineColor(int index, float red, float green, float blue) {
  return Line("DefineColor", index, red, green, blue);
}
int TraceGenerator::SetLineColor(int index) { return Line("SetLineColor", index); }
int TraceGenerator::SetFillColor(int index) { return Line("SetFillColor", index); }
int TraceGenerator::SetLineWidth(float width) { return Line("SetLineWidth", width); }
int TraceGenerator::SetLineCap(int cap) { return Line("SetLineCap", cap); }
int TraceGenerator::SetFillRule(int rule) { return Line("SetFillRule", rule); }

}  // namespace orxdrawing
