// The drawing device: what an interpreter sends its strokes, fills and images to.
//
// An interpreter borrows its generator and never deletes it. Coordinates arrive in output units:
// millimetres, or PostScript units (1/72 inch) when the environment variable "ORXPrintOpenPSToMM"
// is "0"; y grows upwards. Line widths arrive in millimetres either way. Colour components are
// nominally 0 to 1 and are not clamped. Interpreters ignore every result.
//
// Nothing should be thrown from here. Whatever is ends the pass, and Generate answers 0.
//
// A stroke is the attribute calls DefineColor, SetLineColor, SetLineCap, SetLineWidth followed by
// MoveTo and LineTo calls; nothing marks its end, the next attribute call does. A fill is
// DefineColor, SetFillColor, SetFillRule, FillArea.
#pragma once

class ORXPixelImage;

class PrintGenerator {
public:
  // A page begins; not called for the first.
  virtual int NewPage() = 0;
  virtual int MoveTo(float x, float y) = 0;
  virtual int LineTo(float x, float y) = 0;
  // Fills the area of all contours together. `pointCounts` has one count per contour, `points` the
  // x and y of every point of every contour in order; both belong to the caller and are gone after
  // the call. Contours are not closed: the device joins the last point to the first.
  virtual int FillArea(int contourCount, int* pointCounts, float* points) = 0;
  // Draws an image with its origin at (x, y). A pixel is as large as the image's pixel sizes say;
  // negative sizes mirror. `flags` is 0. The image is gone after the call.
  virtual int DrawImage(float x, float y, int flags, ORXPixelImage* image) = 0;
  // Gives a colour index (always 255) its colour.
  virtual int DefineColor(int index, float red, float green, float blue) = 0;
  virtual int SetLineColor(int index) = 0;
  virtual int SetFillColor(int index) = 0;
  virtual int SetLineWidth(float width) = 0;
  // 10 butt, 11 projecting square, 12 round; 0 when the document never chose one.
  virtual int SetLineCap(int cap) = 0;
  // 1 non-zero winding, 0 even-odd.
  virtual int SetFillRule(int rule) = 0;

protected:
  ~PrintGenerator() = default;
};
