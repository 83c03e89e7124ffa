// The drawing device: what an interpreter sends its strokes, fills and images to.
//
// Ownership: an interpreter borrows its generator from Generate on until another takes its place,
// and never deletes it. Arrays and images belong to the caller and are gone after the call.
//
// Units: coordinates arrive in output units: millimetres, or PostScript units (1/72 inch) when the
// environment variable "ORXPrintOpenPSToMM" was "0" as the interpreter was built; y grows upwards,
// the origin is the document's. Line widths arrive in millimetres either way. Documents compute
// what they like: coordinates may be infinite, not numbers or far away, colours outside of 0 to 1.
// A device must stand that; nothing is clamped on the way.
//
// Order: calls come on the thread of Generate or CollectStatistics, while that runs. A stroke is
//   DefineColor, SetLineColor, SetLineCap, SetLineWidth, then any MoveTo and LineTo calls, or none.
// Nothing marks its end, the next attribute call, image or page does. A fill is
//   DefineColor, SetFillColor, SetFillRule, FillArea
// and one of an empty path ends behind SetFillColor. Images and pages stand between strokes and
// fills. Every stroke and fill sends all of its attributes, so a device needs to remember none from
// one to the next.
//
// Results are ignored: a device that is full or broken stops the pass through a watcher
// (ORXInterpreterWatcher.h). From here operations of the same interpreter answer 0. Nothing should
// be thrown; whatever is ends the pass, and Generate answers 0.
#pragma once

class ORXPixelImage;

class PrintGenerator {
public:
  // A page begins. Comes for every page comment but the first, while all pages are drawn; never
  // while one page is selected. So a host counts one page more than calls, and what a document
  // draws before its first page comment is on the first page.
  virtual int NewPage() = 0;
  // Begins a subpath of the stroke. A subpath that was closed comes back to its start by a LineTo.
  virtual int MoveTo(float x, float y) = 0;
  // Goes on to a point; curves and arcs arrive as straight pieces. The first call of a stroke may
  // be this one, where a document draws a line from nowhere: it then begins a subpath.
  virtual int LineTo(float x, float y) = 0;
  // Fills the area of all contours together, by the rule set before. `pointCounts` has one count
  // per contour, each above 0, and `points` the x and y of every point of every contour in order.
  // Contours need not be closed: the device joins the last point to the first. They may have one
  // point, lie on each other and cross.
  virtual int FillArea(int contourCount, int* pointCounts, float* points) = 0;
  // Draws an image over the box from (x, y) to (x + width * x pixel size, y + height * y pixel
  // size), its first row at the top of that box, or at the bottom when LinesRunUpwards() says so.
  // Negative sizes mirror. Never null, never without a pixel, always with the samples of the whole
  // layout; the sizes may be 0 or not finite. `flags` is 0. The image is gone after the call: copy
  // what is to be kept, or ExtractData.
  virtual int DrawImage(float x, float y, int flags, ORXPixelImage* image) = 0;
  // Gives a colour index (always 255) its colour, nominally 0 (none) to 1 of red, green and blue.
  virtual int DefineColor(int index, float red, float green, float blue) = 0;
  // The colour of this index, defined just before, is that of the stroke or fill to come.
  virtual int SetLineColor(int index) = 0;
  virtual int SetFillColor(int index) = 0;
  // Millimetres whatever the unit of coordinates, 0 or more. 0.1 is also what a document gets that
  // asked for none or for the thinnest line. Does not follow the document's scaling.
  virtual int SetLineWidth(float width) = 0;
  // 10 butt, 11 projecting square, 12 round; 0 when the document never chose one.
  virtual int SetLineCap(int cap) = 0;
  // 1 non-zero winding, 0 even-odd, for the FillArea to come.
  virtual int SetFillRule(int rule) = 0;

protected:
  ~PrintGenerator() = default;
};
