#include "drawing/TraceGenerator.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <numeric>

#include "drawing/Crc32.h"
#include "drawing/Text.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {

namespace {

constexpr std::size_t kBufferBytes = 1 << 16;

}  // namespace

TraceGenerator::TraceGenerator(Settings traceSettings, Sink lineSink)
    : settings(std::move(traceSettings)), sink(std::move(lineSink)) {
  text.reserve(kBufferBytes + 256);
}

void TraceGenerator::Add(int number) {
  char digits[16];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void TraceGenerator::Add(std::size_t number) { text += std::to_string(number); }

// JSON has no numbers that are not finite.
void TraceGenerator::Add(float number) {
  const bool isQuoted = IsJson() && !std::isfinite(number);
  if (isQuoted) text += '"';
  AppendFloat(text, number);
  if (isQuoted) text += '"';
}

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
int TraceGenerator::Line(Call call, Arguments... arguments) {
  if (!Wants(call)) return 0;
  BeginLine(call);
  std::string_view separator;
  ((Add(separator), Add(arguments), separator = ", "), ...);
  return EndLine();
}

void TraceGenerator::BeginLine(Call call) {
  if (!IsJson()) {
    Add(kTraceCalls[call]);
    return Add("(");
  }
  Add("{\"page\": ");
  Add(std::size_t{page});
  Add(", \"call\": \"");
  Add(kTraceCalls[call]);
  Add("\", \"arguments\": [");
}

int TraceGenerator::EndLine() {
  Add(IsJson() ? "]" : ")");
  if (settings.origin) {
    if (const std::optional<TraceOrigin> origin = settings.origin()) AddOrigin(*origin);
  }
  Add(IsJson() ? "}\n" : "\n");
  HandOnWhenLarge();
  return 0;
}

void TraceGenerator::AddOrigin(const TraceOrigin& origin) {
  const auto addPlace = [this](const TracePlace& place, std::string_view line,
                               std::string_view byte) {
    Add(line);
    Add(std::to_string(place.line));
    Add(byte);
    Add(std::to_string(place.byte));
  };
  if (!IsJson()) return addPlace(origin.token, "  # line ", ", byte ");
  addPlace(origin.token, ", \"line\": ", ", \"byte\": ");
  if (!origin.procedure) return;
  addPlace(*origin.procedure, ", \"procedure\": {\"line\": ", ", \"byte\": ");
  Add("}");
}

void TraceGenerator::HandOnWhenLarge() {
  if (text.size() >= kBufferBytes) Flush();
}

void TraceGenerator::Flush() {
  sink(text);
  text.clear();
}

void TraceGenerator::AddTextLine(std::string_view key, std::string_view value) {
  Add("{\"");
  Add(key);
  Add("\": ");
  Add(QuoteForJson(value));
  Add("}\n");
}

void TraceGenerator::Report(const ORXUnicodeString& line) {
  if (IsJson()) return AddTextLine("report", line.ToUtf8());
  Add("report: ");
  Add(EscapeForTerminal(line.ToUtf8()));
  Add("\n");
}

void TraceGenerator::BeginDocument(std::string_view name) {
  page = 1;
  if (IsJson()) return AddTextLine("file", name);
  Add("# file ");
  Add(EscapeForTerminal(name));
  Add("\n");
}

// No call of the document, so it comes from no place.
void TraceGenerator::NextPass(std::uint32_t firstPage) {
  page = firstPage;
  if (!Wants(kNewPage)) return;
  BeginLine(kNewPage);
  Add(IsJson() ? "]}\n" : ")\n");
}

int TraceGenerator::NewPage() {
  ++page;
  return Line(kNewPage);
}
int TraceGenerator::MoveTo(float x, float y) { return Line(kMoveTo, x, y); }
int TraceGenerator::LineTo(float x, float y) { return Line(kLineTo, x, y); }

int TraceGenerator::FillArea(int contourCount, int* pointCounts, float* points) {
  if (!Wants(kFillArea)) return 0;
  const std::span<const int> counts(pointCounts, static_cast<std::size_t>(contourCount));
  const std::size_t pointCount = std::accumulate(counts.begin(), counts.end(), std::size_t{0});
  BeginLine(kFillArea);
  Add(contourCount);
  Add(", ");
  AddList(counts);
  Add(", ");
  AddList(std::span<const float>(points, 2 * pointCount));
  return EndLine();
}

int TraceGenerator::DrawImage(float x, float y, int flags, ORXPixelImage* image) {
  if (!Wants(kDrawImage)) return 0;
  BeginLine(kDrawImage);
  Add(x);
  Add(", ");
  Add(y);
  Add(", ");
  Add(flags);
  Add(", {");
  AddImage(*image);
  Add("}");
  return EndLine();
}

void TraceGenerator::AddImage(const ORXPixelImage& image) {
  const std::span<const unsigned char> samples(image.Pixels(), image.ByteCount());
  char crc[16];
  std::snprintf(crc, sizeof crc, "%08x", static_cast<unsigned>(Crc32(samples)));
  AddMember("width", image.Width());
  AddMember(", height", image.Height());
  AddMember(", format", static_cast<int>(image.Format()));
  AddMember(", xPixelSize", image.GetXPixelSize());
  AddMember(", yPixelSize", image.GetYPixelSize());
  AddMember(", bytes", samples.size());
  AddKey(", crc32");
  AddWord(crc);
  const bool areWritten = settings.samples == Samples::Written;
  if (areWritten) AddSamples(samples);
  if (!areWritten && !IsJson()) return;
  // The picture depends on it, so two traces that are equal say the same of it.
  if (!image.LinesRunUpwards() && !IsJson()) return;
  AddKey(", rows");
  AddWord(image.LinesRunUpwards() ? "up" : "down");
}

// A key may come with the separator before it.
void TraceGenerator::AddKey(std::string_view key) {
  if (IsJson()) {
    const std::size_t name = key.find_first_not_of(", ");
    Add(key.substr(0, name));
    AddWord(key.substr(name));
  } else {
    Add(key);
  }
  Add(": ");
}

void TraceGenerator::AddWord(std::string_view word) {
  if (IsJson()) text += '"';
  Add(word);
  if (IsJson()) text += '"';
}

void TraceGenerator::AddSamples(std::span<const unsigned char> samples) {
  static constexpr char kDigits[] = "0123456789abcdef";
  AddKey(", samples");
  if (IsJson()) text += '"';
  for (const unsigned char sample : samples) {
    text += kDigits[sample >> 4];
    text += kDigits[sample & 15];
    HandOnWhenLarge();
  }
  if (IsJson()) text += '"';
}

int TraceGenerator::DefineColor(int index, float red, float green, float blue) {
  return Line(kDefineColor, index, red, green, blue);
}
int TraceGenerator::SetLineColor(int index) { return Line(kSetLineColor, index); }
int TraceGenerator::SetFillColor(int index) { return Line(kSetFillColor, index); }
int TraceGenerator::SetLineWidth(float width) { return Line(kSetLineWidth, width); }
int TraceGenerator::SetLineCap(int cap) { return Line(kSetLineCap, cap); }
int TraceGenerator::SetFillRule(int rule) { return Line(kSetFillRule, rule); }

}  // namespace orxdrawing
