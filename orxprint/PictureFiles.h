// The files that the pages of one document are drawn into, while they are drawn.
//
// It is the sink of a run's shapes. Each page goes to a picture of its own or all to one, as the
// format has it, and the bytes to outputs that have yet to be closed and committed. What a picture
// throws, and an output that takes no more, end the run; Finish throws it again.
#pragma once

#include <cstdint>
#include <deque>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "drawing/PageAreas.h"
#include "drawing/Picture.h"
#include "orxprint/Formats.h"
#include "orxprint/OutputFile.h"
#include "orxprint/OutputNames.h"
#include "orxprint/RunControl.h"

namespace orxprint {

class PictureFiles final : public orxdrawing::ShapeSink {
public:
  struct Plan {
    const Format& format;
    PictureSettings settings;  // mayGoOn is filled in here
    OutputName outputName;
    std::uint32_t greatestPage = 1;  // as far as is known now, here and below
    bool numbered = false;
    std::shared_ptr<const orxdrawing::PageAreas> areas;
    std::map<std::uint32_t, std::string> labels;  // of pages
  };

  explicit PictureFiles(Plan drawingPlan);

  // The pages that come from now on belong to the run of that control; the first of them has that
  // number, and each that follows the next.
  void BeginRun(std::shared_ptr<RunControl> runControl, std::uint32_t firstPage);
  void NextPage() override { BeginPage(page + 1); }
  void Draw(const orxdrawing::StrokeShape& stroke) override { DrawAny(stroke); }
  void Draw(const orxdrawing::FillShape& fill) override { DrawAny(fill); }
  void Draw(const orxdrawing::ImageShape& image) override { DrawAny(image); }

  // Completes the pictures and closes their outputs; what is not painted at the deadline stays
  // away. Throws what ended the drawing, and Failure. REQUIRES: no run is going on.
  void Finish(const Deadline& deadline);
  // Whether that deadline left something away.
  [[nodiscard]] bool IsCutShort() const { return isCutShort; }

  [[nodiscard]] std::deque<OutputFile>& Outputs() { return outputs; }
  [[nodiscard]] std::size_t PageCount() const { return pageCount; }
  [[nodiscard]] bool IsBlank() const { return shapeCount == 0; }
  [[nodiscard]] const orxdrawing::PictureLosses& Lost() const { return losses; }

private:
  [[nodiscard]] bool MayGoOn();
  void BeginPage(std::uint32_t number);
  void BeginFile();
  void EndFile();
  void NameFirst(const std::string& name);
  // Does a part of the drawing unless an earlier one failed.
  template <typename Work>
  void Attempt(Work work) {
    if (failure) return;
    try {
      work();
    } catch (const std::bad_alloc&) {
      throw;
    } catch (...) {
      failure = std::current_exception();
      control->StopNow(Stop::OutputFailed);
    }
  }
  template <typename AnyShape>
  void DrawAny(const AnyShape& shape) {
    if (!sink) return;
    ++shapeCount;
    Attempt([&] { sink->Draw(shape); });
  }

  Plan plan;
  std::shared_ptr<RunControl> control;
  bool isFinishing = false;
  Deadline finishEnd;
  bool isCutShort = false;
  std::uint32_t page = 0;
  std::uint32_t firstPage = 0;  // of all
  std::size_t pageCount = 0;
  std::uint64_t shapeCount = 0;
  std::deque<OutputFile> outputs;
  std::unique_ptr<orxdrawing::Picture> picture;  // into the last output
  ShapeSink* sink = nullptr;                     // of the page, if it is drawn
  orxdrawing::PictureLosses losses;
  std::exception_ptr failure;
};

}  // namespace orxprint
