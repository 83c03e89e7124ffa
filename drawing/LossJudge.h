// Judges what an interpreter tells while it draws: what of it can be seen in the picture.
//
// A setting that does not take effect is no loss by itself. It stays with the graphics state, is
// saved and restored with it, and becomes a loss when something is painted that it would have
// changed. The same with values that are not computed: they count when the same token of the
// document, or the path that they were computed for, is painted.
//
// To be used on the thread of the run: TakeNote for every note, and one of the others on each
// painting call, before it is drawn. Everything it keeps is bounded.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "drawing/Findings.h"
#include "drawing/NameMeanings.h"
#include "host/ORXInterpreterWatcher.h"

class ORXPixelImage;

namespace orxdrawing {

class LossJudge {
public:
  LossJudge();

  void TakeNote(const ORXNote& note, ORXWatchable& interpreter);
  void Stroking(ORXWatchable& interpreter);
  void Filling(ORXWatchable& interpreter);
  // The place and image as the generator gets them.
  void DrawingImage(float x, float y, const ORXPixelImage& image, ORXWatchable& interpreter);

  [[nodiscard]] Findings& Found() noexcept { return findings; }

private:
  // Beyond these nothing more is kept or looked for, so that no document makes the judge large or
  // slow: origins and settings; what waits for the next painting; looks into procedures.
  static constexpr std::size_t kMostKept = std::size_t{1} << 16;
  static constexpr std::size_t kMostPending = 1000;
  static constexpr int kMostSearches = 2000;

  using Color = std::array<float, 3>;

  // Something that did not take effect: where it comes from and when it matters. Number 0 is none.
  struct Origin {
    Loss loss;
    std::string name;
    LossPlace place;
    bool isCounted = false;
    Color wanted{};        // of a colour
    Color instead{};       // the colour that stayed
    bool isKnown = false;  // whether `wanted` means anything
    Box extent;            // of a clip, in device space
    bool isRectangle = false;
    std::uint32_t outer = 0;  // the clip around it
  };
  // What of it is in force in a graphics state; a state's mark is the number of its settings.
  struct Settings {
    std::uint32_t clip = 0;
    std::uint32_t dash = 0;
    std::uint32_t color = 0;
    std::uint32_t join = 0;
    std::uint32_t matrix = 0;
    bool isHairline = false;

    friend bool operator==(const Settings&, const Settings&) = default;
  };
  struct Pending {
    Origin origin;
    bool countsAnyway = false;  // at the next painting, wherever that comes from
  };

  void TakeUnknownName(const ORXNote& note, ORXWatchable& interpreter);
  void TakeIgnored(const ORXNote& note, ORXWatchable& interpreter);
  void TakeError(const ORXNote& note, ORXWatchable& interpreter);
  void TakeChange(const ORXNote& note, ORXWatchable& interpreter);
  void TakeText(const ORXNote& note, ORXWatchable& interpreter);
  void TakePaint(const ORXNote& note, ORXWatchable& interpreter);
  void TakeColor(const ORXNote& note, ORXWatchable& interpreter);
  void TakeLoop(const ORXNote& note, ORXWatchable& interpreter);
  void TakeRestore(const ORXNote& note, ORXWatchable& interpreter);
  void TakeClip(const ORXNote& note, ORXWatchable& interpreter, Box extent, bool isRectangle);

  Origin MakeOrigin(Loss loss, const ORXNote& note, const ORXWatchable& interpreter) const;
  [[nodiscard]] std::uint32_t Keep(Origin origin);
  [[nodiscard]] const Settings& SettingsOf(const ORXGraphics& graphics) const;
  void Set(ORXWatchable& interpreter, const Settings& settings);
  void Wait(Origin origin, bool countsAnyway);
  void WaitForShape(Loss loss, const ORXNote& note, ORXWatchable& interpreter,
                    bool countsAtTopLevel);
  void TakeDropped(const ORXNote& note, ORXWatchable& interpreter);
  void Count(std::uint32_t origin);
  void CountAt(Loss loss, std::string_view name, const ORXWatchable& interpreter);
  void Painting(const ORXGraphics& graphics, const ORXExtent& extent, ORXWatchable& interpreter);
  void CountPending(const ORXWatchable& interpreter);
  void JudgeColor(const Settings& settings, const ORXGraphics& graphics);
  void JudgeClips(const Settings& settings, const ORXExtent& extent);
  void JudgeWidth(const Settings& settings, const ORXGraphics& graphics,
                  const ORXWatchable& interpreter);
  void Extend(const ORXExtent& extent, double unitScale);

  Findings findings;
  std::vector<Origin> origins;
  std::vector<Settings> settingsOfMarks;
  std::vector<Pending> pending;
  std::vector<ORXGraphics> saved;  // by "save"
  std::unordered_set<std::uintptr_t> changedConstants;
  int searches = 0;
  std::uint64_t clipPoints = 0;
  std::unordered_map<std::uint64_t, bool> shapersAt;  // by place of definition: whether it draws
};

}  // namespace orxdrawing
