#include "drawing/ShapeRecord.h"

#include "drawing/Extent.h"

namespace orxdrawing {

ShapeRecord RecordOf(const StrokeShape& stroke, double pointsPerUnit) {
  ShapeRecord record;
  record.kind = ShapeKind::Stroke;
  record.cap = stroke.cap;
  record.extent = ExtentInPoints(stroke, pointsPerUnit);
  record.colour = stroke.colour;
  record.width = stroke.width;
  return record;
}

ShapeRecord RecordOf(const FillShape& fill, double pointsPerUnit) {
  ShapeRecord record;
  record.kind = ShapeKind::Fill;
  record.rule = fill.rule;
  record.extent = ExtentInPoints(fill, pointsPerUnit);
  record.colour = fill.colour;
  return record;
}

ShapeRecord RecordOf(const ImageShape& image, double pointsPerUnit) {
  ShapeRecord record;
  record.kind = ShapeKind::Image;
  record.extent = ExtentInPoints(image, pointsPerUnit);
  record.columns = image.image->Width();
  record.rows = image.image->Height();
  return record;
}

}  // namespace orxdrawing
