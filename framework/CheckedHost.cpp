// The rules that interpreters follow towards their host.
#include "framework/CheckedHost.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "host/ORXPixelImage.h"

namespace orxframework {

namespace {

constexpr std::size_t kMaxViolations = 100;
constexpr int kColorIndex = 255;

// Reads every byte, so that a memory checker sees a buffer that is shorter than it should be.
void Touch(std::span<const std::byte> bytes) noexcept {
  unsigned char seen = 0;
  for (const std::byte byte : bytes) seen ^= static_cast<unsigned char>(byte);
  static_cast<void>(*const_cast<volatile unsigned char*>(&seen));
}

// The points of all contours together; 0 if a count is not positive or they are too many.
std::size_t PointsIn(std::span<const int> pointCounts) noexcept {
  std::int64_t total = 0;
  for (const int count : pointCounts) {
    if (count <= 0) return 0;
    total += count;
    if (total > INT_MAX) return 0;
  }
  return static_cast<std::size_t>(total);
}

bool IsKnownFormat(ORXPixelImageFormat format) noexcept {
  return format == ORXPixelImageFormat::Grey8 || format == ORXPixelImageFormat::Rgb24 ||
         format == ORXPixelImageFormat::Cmyk32 || format == ORXPixelImageFormat::Bilevel1;
}

}  // namespace

bool ViolationLog::Retire() {
  isRetired = true;
  return Require(callsInProgress == 0, "interpreter", "destroyed from inside a callback");
}

bool ViolationLog::Require(bool holds, std::string_view call, std::string_view rule) {
  if (!holds && violations.size() < kMaxViolations) {
    violations.push_back(std::string(call).append(": ").append(rule));
  }
  return holds;
}

void ViolationLog::RequireInUse(std::string_view call) {
  Require(!isRetired, call, "called after the interpreter was destroyed");
}

void CheckedInputStream::RequireClosed() { Require(!isOpen, "Close", "not called after a pass"); }

void CheckedInputStream::RequireOpen(std::string_view call) {
  RequireInUse(call);
  Require(isOpen, call, "called while the stream is not open");
}

void CheckedInputStream::BeginRead(std::string_view call) {
  RequireOpen(call);
  Require(isRewound || !isOpen, call, "called before the rewind");
  hasPushedBack = false;
}

int CheckedInputStream::Open(const char* mode) {
  RequireInUse("Open");
  Require(!isOpen, "Open", "called while the stream is open");
  Require(mode && std::strcmp(mode, "rb") == 0, "Open", "the mode is not \"rb\"");
  isOpen = true;
  isRewound = false;
  hasPushedBack = false;
  positions.clear();
  return PassOn([&] { return stream.Open("rb"); });
}

int CheckedInputStream::Close() {
  RequireOpen("Close");
  isOpen = false;
  return PassOn([&] { return stream.Close(); });
}

int CheckedInputStream::Read(void* buffer, int count, int* countRead) {
  BeginRead("Read");
  if (!Require(count >= 0, "Read", "the count is negative")) return -1;
  if (!Require(buffer || count == 0, "Read", "there is no buffer")) return -1;
  return PassOn([&] { return stream.Read(buffer, count, countRead); });
}

int CheckedInputStream::ReadByte(char* byte) {
  BeginRead("ReadByte");
  if (!Require(byte != nullptr, "ReadByte", "there is no place for the byte")) return -1;
  return PassOn([&] { return stream.ReadByte(byte); });
}

int CheckedInputStream::SetPosition(unsigned position) {
  RequireOpen("SetPosition");
  Require(positions.contains(position), "SetPosition", "GetPosition did not give this position");
  hasPushedBack = false;
  return PassOn([&] { return stream.SetPosition(position); });
}

int CheckedInputStream::Seek(int offset, int origin) {
  RequireOpen("Seek");
  Require(offset == 0 && (origin == 0 || origin == 2), "Seek", "neither to the start nor the end");
  isRewound = isRewound || (offset == 0 && origin == 0);
  hasPushedBack = false;
  return PassOn([&] { return stream.Seek(offset, origin); });
}

int CheckedInputStream::UnreadByte(char byte) {
  RequireOpen("UnreadByte");
  Require(!hasPushedBack, "UnreadByte", "a pushed-back byte is waiting");
  hasPushedBack = true;
  return PassOn([&] { return stream.UnreadByte(byte); });
}

int CheckedInputStream::GetPosition(unsigned* position) {
  RequireOpen("GetPosition");
  if (!Require(position != nullptr, "GetPosition", "there is no place for the position")) return -1;
  const int status = PassOn([&] { return stream.GetPosition(position); });
  if (status >= 0) positions.insert(*position);
  return status;
}

int CheckedInputStream::IsReadable() {
  RequireOpen("IsReadable");
  return PassOn([&] { return stream.IsReadable(); });
}

int CheckedInputStream::HasMoreData() {
  RequireOpen("HasMoreData");
  return PassOn([&] { return stream.HasMoreData(); });
}

int CheckedInputStream::GetState() {
  RequireOpen("GetState");
  return PassOn([&] { return stream.GetState(); });
}

int CheckedInputStream::ClearEndOfFile() {
  RequireOpen("ClearEndOfFile");
  return PassOn([&] { return stream.ClearEndOfFile(); });
}

void CheckedGenerator::Step(std::string_view call, unsigned allowedPhases, Phase next) {
  RequireInUse(call);
  Require((allowedPhases & phase) != 0, call, "out of order");
  phase = next;
}

void CheckedGenerator::RequireColorIndex(std::string_view call, int index) {
  Require(index == kColorIndex, call, "the colour index is not 255");
}

int CheckedGenerator::NewPage() {
  Step("NewPage", kBetween, kIdle);
  return PassOn([&] { return generator.NewPage(); });
}

int CheckedGenerator::DefineColor(int index, float red, float green, float blue) {
  Step("DefineColor", kBetween, kColorDefined);
  RequireColorIndex("DefineColor", index);
  return PassOn([&] { return generator.DefineColor(index, red, green, blue); });
}

int CheckedGenerator::SetLineColor(int index) {
  Step("SetLineColor", kColorDefined, kLineColorSet);
  RequireColorIndex("SetLineColor", index);
  return PassOn([&] { return generator.SetLineColor(index); });
}

int CheckedGenerator::SetLineCap(int cap) {
  Step("SetLineCap", kLineColorSet, kLineCapSet);
  Require(cap == 0 || (cap >= 10 && cap <= 12), "SetLineCap", "there is no such cap");
  return PassOn([&] { return generator.SetLineCap(cap); });
}

int CheckedGenerator::SetLineWidth(float width) {
  Step("SetLineWidth", kLineCapSet, kStroking);
  Require(width >= 0.0F, "SetLineWidth", "the width is negative or not a number");
  return PassOn([&] { return generator.SetLineWidth(width); });
}

int CheckedGenerator::MoveTo(float x, float y) {
  Step("MoveTo", kStroking, kStroking);
  return PassOn([&] { return generator.MoveTo(x, y); });
}

int CheckedGenerator::LineTo(float x, float y) {
  Step("LineTo", kStroking, kStroking);
  return PassOn([&] { return generator.LineTo(x, y); });
}

int CheckedGenerator::SetFillColor(int index) {
  Step("SetFillColor", kColorDefined, kFillColorSet);
  RequireColorIndex("SetFillColor", index);
  return PassOn([&] { return generator.SetFillColor(index); });
}

int CheckedGenerator::SetFillRule(int rule) {
  Step("SetFillRule", kFillColorSet, kFillRuleSet);
  Require(rule == 0 || rule == 1, "SetFillRule", "there is no such rule");
  return PassOn([&] { return generator.SetFillRule(rule); });
}

int CheckedGenerator::FillArea(int contourCount, int* pointCounts, float* points) {
  Step("FillArea", kFillRuleSet, kIdle);
  if (!Require(contourCount > 0, "FillArea", "there are no contours")) return -1;
  if (!Require(pointCounts && points, "FillArea", "there are no arrays")) return -1;
  const std::size_t pointCount = PointsIn({pointCounts, static_cast<std::size_t>(contourCount)});
  if (!Require(pointCount != 0, "FillArea", "a contour without points, or too many")) return -1;
  Touch(std::as_bytes(std::span(points, 2 * pointCount)));
  return PassOn([&] { return generator.FillArea(contourCount, pointCounts, points); });
}

int CheckedGenerator::DrawImage(float x, float y, int flags, ORXPixelImage* image) {
  Step("DrawImage", kBetween, kIdle);
  Require(flags == 0, "DrawImage", "the flags are not 0");
  if (!Require(image != nullptr, "DrawImage", "there is no image")) return -1;
  Require(IsKnownFormat(image->Format()), "DrawImage", "there is no such format");
  if (!Require(image->ByteCount() != 0, "DrawImage", "the image has no positive size")) return -1;
  if (!Require(image->Pixels() != nullptr, "DrawImage", "the image has no samples")) return -1;
  Touch(std::as_bytes(std::span(image->Pixels(), image->ByteCount())));
  return PassOn([&] { return generator.DrawImage(x, y, flags, image); });
}

}  // namespace orxframework
