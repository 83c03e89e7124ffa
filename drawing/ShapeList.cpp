#include "drawing/ShapeList.h"

#include <bit>

#include "drawing/Crc32.h"

namespace orxdrawing {

namespace {

// Mixes numbers one after the other (FNV-1a over 32 bits at a time, the result spread once more).
class Hash {
public:
  void Add(std::uint32_t number) { value = (value ^ number) * 0x100000001b3U; }
  // The two zeros are one number, and so is all that is not a number.
  void Add(float number) {
    const float one = number == 0 ? 0 : number;
    Add(one == one ? std::bit_cast<std::uint32_t>(one) : 0x7fc00000U);
  }
  [[nodiscard]] std::uint64_t Value() const { return (value ^ value >> 29) * 0xbf58476d1ce4e5b9U; }

private:
  std::uint64_t value = 0xcbf29ce484222325U;
};

std::uint64_t FormOf(const ShapeRecord& record, const Contours& contours) {
  Hash hash;
  hash.Add(static_cast<std::uint32_t>(record.kind));
  for (const std::uint32_t length : contours.lengths) hash.Add(length);
  return hash.Value();
}

std::uint64_t ContentOf(const ListedShape& shape, const Contours& contours) {
  Hash hash;
  hash.Add(static_cast<std::uint32_t>(shape.form));
  hash.Add(static_cast<std::uint32_t>(shape.form >> 32));
  const ShapeRecord& record = shape.record;
  hash.Add(static_cast<std::uint32_t>(record.cap));
  hash.Add(static_cast<std::uint32_t>(record.rule));
  hash.Add(record.colour.red);
  hash.Add(record.colour.green);
  hash.Add(record.colour.blue);
  hash.Add(record.width);
  hash.Add(static_cast<std::uint32_t>(record.columns));
  hash.Add(static_cast<std::uint32_t>(record.rows));
  hash.Add(shape.samples);
  for (const float coordinate : contours.coordinates) hash.Add(coordinate);
  return hash.Value();
}

}  // namespace

ListedShape& ShapeList::Add(const ShapeRecord& record, const Contours& contours) {
  ListedShape shape;
  shape.record = record;
  shape.record.page = Page();
  shape.record.place = Place();
  shape.firstLength = lengths.size();
  shape.lengthCount = contours.lengths.size();
  shape.firstCoordinate = coordinates.size();
  shape.coordinateCount = contours.coordinates.size();
  shape.form = FormOf(record, contours);
  lengths.insert(lengths.end(), contours.lengths.begin(), contours.lengths.end());
  coordinates.insert(coordinates.end(), contours.coordinates.begin(), contours.coordinates.end());
  shapes.push_back(shape);
  return shapes.back();
}

void ShapeList::Draw(const StrokeShape& stroke) {
  ListedShape& shape = Add(RecordOf(stroke, pointsPerUnit), stroke.contours);
  shape.content = ContentOf(shape, stroke.contours);
}

void ShapeList::Draw(const FillShape& fill) {
  ListedShape& shape = Add(RecordOf(fill, pointsPerUnit), fill.contours);
  shape.content = ContentOf(shape, fill.contours);
}

void ShapeList::Draw(const ImageShape& image) {
  const ORXPixelImage& pixels = *image.image;
  const std::uint32_t corners = 2;
  const float places[] = {image.x, image.y,
                          image.x + static_cast<float>(pixels.Width()) * image.xPixelSize,
                          image.y + static_cast<float>(pixels.Height()) * image.yPixelSize};
  const Contours contours{{&corners, 1}, places};
  ListedShape& shape = Add(RecordOf(image, pointsPerUnit), contours);
  shape.samples =
      Crc32({pixels.Pixels(), pixels.ByteCount()}) + static_cast<std::uint32_t>(pixels.Format());
  shape.content = ContentOf(shape, contours);
}

}  // namespace orxdrawing
