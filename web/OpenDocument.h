// A document that is open in the page: drawn once, then asked what lies where.
//
// It owns the bytes, the interpreter while it draws, and the index of what was drawn; there is one
// for each file that is open, and two for a comparison.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/DocumentComments.h"
#include "drawing/Extent.h"
#include "drawing/LossJudge.h"
#include "drawing/PageAnswers.h"
#include "drawing/PageAreas.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXPrintInterpreter.h"
#include "web/PageSink.h"
#include "web/ShapeIndex.h"

namespace orxweb {

class OpenDocument final : private ORXInterpreterWatcher, private ORXNoteListener {
public:
  // Told how many bytes of the document have been drawn from; answers whether to go on.
  using Progress = std::function<bool(std::uint64_t bytes)>;

  explicit OpenDocument(std::string fileBytes);
  ~OpenDocument() = default;
  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;

  // Draws all pages. Throws std::bad_alloc, and std::runtime_error where nothing can be drawn.
  void Draw(PageReceiver& receiver, Progress progress);
  // Draws into the index only, for a comparison.
  void Gather(Progress progress);

  // How the pass ended.
  [[nodiscard]] const ORXPassEnd& End() const { return end; }
  // Where the PostScript begins in the file; places count from there.
  [[nodiscard]] std::uint64_t Offset() const { return offset; }
  [[nodiscard]] std::uint64_t Size() const { return bytes.size(); }
  [[nodiscard]] const orxdrawing::DocumentComments& Comments() const { return comments; }
  [[nodiscard]] const ShapeIndex& Index() const { return index; }
  [[nodiscard]] std::uint64_t LostPoints() const { return lostPoints; }
  // What of it can be seen to be lost or different, the gravest first, and what was drawn.
  [[nodiscard]] const std::vector<orxdrawing::Finding>& Findings() const { return findings; }
  [[nodiscard]] const orxdrawing::DrawingSummary& Summary() const { return summary; }

private:
  bool MayGoOn() noexcept override;
  void PassEnded(const ORXPassEnd& passEnd) noexcept override { end = passEnd; }
  void Noted(const ORXNote& note) noexcept override;

  // One pass over the document whose pages go to the sink, which `placed` may stand behind.
  void Run(orxdrawing::ShapeSink& sink, orxdrawing::PlacedSink& placed);
  // Answers about the document, and the pages that are chosen when it knows them.
  using ChoosePages =
      std::function<std::vector<std::uint32_t>(const orxdrawing::PageAnswers& answers)>;
  [[nodiscard]] orxdrawing::PageAnswers AskAbout(const ChoosePages& choose);
  void KeepFindings(orxdrawing::Findings& found, const orxdrawing::PageAnswers& answers);
  // What each page shows, measured where it does not say so.
  [[nodiscard]] orxdrawing::PageAreas FindAreas();

  std::string bytes;
  std::uint64_t offset = 0;
  std::string_view postScript;
  orxdrawing::DocumentComments comments;
  ShapeIndex index;
  ORXPassEnd end;
  Progress onProgress;
  ORXWatchable* running = nullptr;
  orxdrawing::LossJudge* judge = nullptr;
  bool isOutOfMemory = false;
  std::vector<orxdrawing::Finding> findings;
  orxdrawing::DrawingSummary summary;
  std::uint64_t lostPoints = 0;
};

}  // namespace orxweb
