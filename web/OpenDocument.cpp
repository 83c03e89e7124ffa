#include "web/OpenDocument.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "drawing/FileChecks.h"
#include "drawing/FindingWords.h"
#include "drawing/PageFilter.h"
#include "framework/InputStreams.h"
#include "framework/TextStream.h"
#include "host/ORXOMModule.h"
#include "web/JudgedGatherer.h"

namespace orxweb {

namespace {

using orxdrawing::Box;
using orxdrawing::kPointsPerMillimetre;

constexpr Box kEmptyPage{0, 0, 595, 842};  // A4, for a document that says no size and draws nothing

// A preview in front of the document: a header that says where each part lies, little end first.
constexpr std::string_view kPreviewMark = "\xC5\xD0\xD3\xC6";
constexpr std::size_t kPreviewHeaderBytes = 30;

std::uint64_t NumberAt(std::string_view bytes, std::size_t place) {
  std::uint64_t number = 0;
  for (std::size_t i = 4; i-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
  }
  return number;
}

std::string_view FindPostScript(std::string_view bytes) {
  if (!bytes.starts_with(kPreviewMark)) return bytes;
  if (bytes.size() < kPreviewHeaderBytes) {
    throw std::runtime_error("its preview header is cut short");
  }
  const std::uint64_t start = NumberAt(bytes, 4);
  const std::uint64_t length = NumberAt(bytes, 8);
  if (start < kPreviewHeaderBytes || length == 0 || start + length > bytes.size()) {
    throw std::runtime_error("its preview header places the PostScript outside the file");
  }
  return bytes.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
}

orxdrawing::DocumentComments CommentsOf(std::string_view text) {
  return orxdrawing::ReadComments([text](std::uint64_t place, char* buffer, std::size_t count) {
    if (place >= text.size()) return std::size_t{0};
    const std::string_view part = text.substr(static_cast<std::size_t>(place), count);
    std::memcpy(buffer, part.data(), part.size());
    return part.size();
  });
}

std::unique_ptr<ORXPrintInterpreter> MakeInterpreter(PrintInputStream& input) {
  const ORXFactoryFunction factory = ORXFillDictionary::Find("ORXPrintEPSInterpreter");
  return std::unique_ptr<ORXPrintInterpreter>(static_cast<ORXPrintInterpreter*>(factory(&input)));
}

// The pages and the index take the same shapes.
class Fork final : public orxdrawing::ShapeSink {
public:
  Fork(ShapeSink& first, ShapeSink& second) : one(first), other(second) {}

  void NextPage() override {
    one.NextPage();
    other.NextPage();
  }
  void Draw(const orxdrawing::StrokeShape& stroke) override { DrawBoth(stroke); }
  void Draw(const orxdrawing::FillShape& fill) override { DrawBoth(fill); }
  void Draw(const orxdrawing::ImageShape& image) override { DrawBoth(image); }

private:
  template <typename AnyShape>
  void DrawBoth(const AnyShape& shape) {
    one.Draw(shape);
    other.Draw(shape);
  }

  ShapeSink& one;
  ShapeSink& other;
};

}  // namespace

OpenDocument::OpenDocument(std::string fileBytes)
    : bytes(std::move(fileBytes)),
      postScript(FindPostScript(bytes)),
      comments(CommentsOf(postScript)),
      index(kPointsPerMillimetre) {
  offset = static_cast<std::uint64_t>(postScript.data() - bytes.data());
}

void OpenDocument::Draw(PageReceiver& receiver, Progress progress) {
  onProgress = std::move(progress);
  const orxdrawing::PageAreas areas = FindAreas();
  PageSink pages(
      receiver, [&areas](std::uint32_t page) { return areas.Of(page + 1).value_or(kEmptyPage); },
      PageSettings([this] { return MayGoOn(); }));
  const orxdrawing::PageAnswers answers = AskAbout(orxdrawing::PagesToCheck);
  Fork both(pages, index);
  orxdrawing::LossJudge lossJudge;
  judge = &lossJudge;
  Run(both, index);
  judge = nullptr;
  pages.Finish();
  KeepFindings(lossJudge.Found(), answers);
  lostPoints = pages.LostPoints();
}

void OpenDocument::Gather(Progress progress) {
  onProgress = std::move(progress);
  Run(index, index);
}

void OpenDocument::Run(orxdrawing::ShapeSink& sink, orxdrawing::PlacedSink& placed) {
  orxframework::MemoryInputStream input(postScript);
  const auto interpreter = MakeInterpreter(input);
  auto* const watchable = dynamic_cast<ORXWatchable*>(interpreter.get());
  if (!watchable) throw std::bad_alloc();
  orxdrawing::PageFilter filter(sink, orxdrawing::PageFilter::Pages::All, comments.pageStarts);
  orxdrawing::PlaceTeller teller(filter, placed, [watchable] { return watchable->Place(); });
  JudgedGatherer gatherer(teller, *watchable, judge);
  watchable->SetWatcher(this);
  if (judge) watchable->SetListener(this);
  running = watchable;
  interpreter->Generate(&gatherer);
  running = nullptr;
  if (isOutOfMemory) throw std::bad_alloc();
  gatherer.Finish();
  filter.Finish();
}

bool OpenDocument::MayGoOn() noexcept {
  if (isOutOfMemory) return false;
  const std::uint64_t place = running ? running->Place().token : ORXPlace::kNone;
  return onProgress(place == ORXPlace::kNone ? 0 : place);
}

void OpenDocument::Noted(const ORXNote& note) noexcept {
  try {
    judge->TakeNote(note, *running);
  } catch (const std::bad_alloc&) {
    isOutOfMemory = true;
  }
}

orxdrawing::PageAnswers OpenDocument::AskAbout(const ChoosePages& choose) {
  orxframework::TextStream text;
  const auto interpreter = MakeInterpreter(text);
  auto* const watchable = dynamic_cast<ORXWatchable*>(interpreter.get());
  if (!watchable) throw std::bad_alloc();
  watchable->SetWatcher(this);
  orxdrawing::Questioner questioner(comments.lines, *interpreter,
                                    [&text](std::string_view shown) { text.Show(shown); });
  orxdrawing::PageAnswers answers = questioner.AskAboutDocument();
  for (const std::uint32_t page : choose(answers)) {
    if (!MayGoOn()) break;
    answers.pages.push_back(questioner.AskAboutPage(page));
  }
  return answers;
}

orxdrawing::PageAreas OpenDocument::FindAreas() {
  std::vector<std::uint32_t> numbers(std::max<std::size_t>(comments.pageStarts.size(), 1));
  std::iota(numbers.begin(), numbers.end(), 1U);
  orxdrawing::PageAreas areas(comments, orxdrawing::Area::Box, kPointsPerMillimetre, numbers,
                              [this](const std::vector<std::uint32_t>& pages) {
                                return AskAbout([&](const auto&) { return pages; });
                              });
  if (!areas.NeedMeasuring()) return areas;
  orxdrawing::ExtentSink measure(kPointsPerMillimetre);
  Run(measure, index);
  std::uint32_t number = 1;
  for (const std::optional<Box>& extent : measure.Extents()) areas.TakeExtent(number++, extent);
  return areas;
}

void OpenDocument::KeepFindings(orxdrawing::Findings& found,
                                const orxdrawing::PageAnswers& answers) {
  orxdrawing::CheckFile({comments, offset > 0, answers}, kPointsPerMillimetre, found);
  summary = found.summary;
  for (orxdrawing::Finding& finding : found.Sorted()) {
    if (orxdrawing::IsVisible(finding)) findings.push_back(std::move(finding));
  }
}

}  // namespace orxweb
