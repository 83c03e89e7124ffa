// A small host of the EPS plug-in: loads it, asks how large a document is and draws it as SVG.
//
//   minimal-host DOCUMENT [PLUGIN] > drawing.svg
//
// Lines and areas become SVG, images their frames. After ten seconds the drawing ends where it is.
#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <memory>

#include "framework/InputStreams.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXOMModule.h"
#include "host/ORXPixelImage.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintGenerator.h"

namespace {

struct Color {
  int red = 0;
  int green = 0;
  int blue = 0;
};

// Writes each call as it comes. A stroke has no end of its own, so its path is closed by whatever
// comes next. Coordinates are turned upside down, for y grows downwards in SVG.
class SvgGenerator final : public PrintGenerator {
public:
  void Finish() {
    if (inStroke) std::puts("\"/>");
    inStroke = false;
  }

  int NewPage() override { return 0; }  // pages lie on top of each other
  int DefineColor(int /*index*/, float red, float green, float blue) override {
    Finish();
    color = {Component(red), Component(green), Component(blue)};
    return 0;
  }
  int SetLineColor(int /*index*/) override { return 0; }
  int SetFillColor(int /*index*/) override { return 0; }
  int SetLineCap(int cap) override {
    capName = cap == 11 ? "square" : cap == 12 ? "round" : "butt";
    return 0;
  }
  int SetLineWidth(float width) override {
    std::printf(
        "<path fill=\"none\" stroke=\"rgb(%d,%d,%d)\" stroke-linecap=\"%s\" "
        "stroke-width=\"%g\" d=\"",
        color.red, color.green, color.blue, capName, width);
    inStroke = true;
    return 0;
  }
  int MoveTo(float x, float y) override { return std::printf("M%g %g", x, -y); }
  int LineTo(float x, float y) override { return std::printf("L%g %g", x, -y); }
  int SetFillRule(int rule) override {
    ruleName = rule == 1 ? "nonzero" : "evenodd";
    return 0;
  }
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    std::printf("<path fill=\"rgb(%d,%d,%d)\" fill-rule=\"%s\" d=\"", color.red, color.green,
                color.blue, ruleName);
    for (const float* point = points; contourCount > 0; --contourCount, ++pointCounts) {
      for (int i = 0; i < *pointCounts; ++i, point += 2) {
        std::printf("%c%g %g", i == 0 ? 'M' : 'L', point[0], -point[1]);
      }
    }
    return std::puts("Z\"/>");
  }
  int DrawImage(float x, float y, int /*flags*/, ORXPixelImage* image) override {
    Finish();
    const float width = static_cast<float>(image->Width()) * image->GetXPixelSize();
    const float height = static_cast<float>(image->Height()) * image->GetYPixelSize();
    return std::printf("<path fill=\"none\" stroke=\"red\" d=\"M%g %gh%gv%gh%gZ\"/>\n", x, -y,
                       width, -height, -width);
  }

private:
  // Documents may say anything, which includes what is not a number.
  static int Component(float value) {
    if (!(value > 0.0F)) return 0;
    return value < 1.0F ? static_cast<int>(value * 255.0F + 0.5F) : 255;
  }

  Color color;
  const char* capName = "butt";
  const char* ruleName = "nonzero";
  bool inStroke = false;
};

class Deadline final : public ORXInterpreterWatcher {
public:
  bool MayGoOn() noexcept override { return std::chrono::steady_clock::now() < end; }
  void PassEnded(const ORXPassEnd& how) noexcept override { last = how; }

  ORXPassEnd last;

private:
  std::chrono::steady_clock::time_point end =
      std::chrono::steady_clock::now() + std::chrono::seconds(10);
};

int Fail(const char* what, const char* why) {
  std::fprintf(stderr, "minimal-host: %s: %s\n", what, why);
  return 1;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) return Fail("usage", "minimal-host DOCUMENT [PLUGIN] > drawing.svg");
  const char* const document = arguments[1];
  const char* const plugin = argumentCount > 2 ? arguments[2] : ORXPRINT_PLUGIN;

  if (!dlopen(plugin, RTLD_NOW)) return Fail("the plug-in could not be loaded", dlerror());
  const ORXFactoryFunction factory = ORXFillDictionary::Find("ORXPrintEPSInterpreter");
  if (!factory) return Fail(plugin, "registers no EPS interpreter");

  orxframework::FileInputStream file(document);
  if (file.ErrorCode() != 0) return Fail(document, file.ErrorText().c_str());
  // The factory takes an untyped pointer, so it must be one to the base class.
  PrintInputStream* const input = &file;
  const std::unique_ptr<ORXPrintInterpreter> interpreter(
      static_cast<ORXPrintInterpreter*>(factory(input)));
  if (!interpreter) return Fail(document, "no memory for an interpreter");

  Deadline deadline;
  if (auto* watchable = dynamic_cast<ORXWatchable*>(interpreter.get())) {
    watchable->SetWatcher(&deadline);
  }
  float width = 0;
  float height = 0;
  if (interpreter->GetPageSize(&width, &height) == 0) return Fail(document, "says no size");

  std::printf("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%gmm\" height=\"%gmm\" ", width,
              height);
  std::printf("viewBox=\"0 %g %g %g\">\n", -height, width, height);
  SvgGenerator generator;
  const int drawn = interpreter->Generate(&generator);
  generator.Finish();
  std::puts("</svg>");
  if (drawn == 0) return Fail(document, "could not be drawn");
  if (deadline.last.result == ORXPassResult::Stopped) return Fail(document, "took too long");
  if (deadline.last.result != ORXPassResult::Complete) {
    return Fail(document, "was drawn in part only");
  }
  return 0;
}
