// The command render: documents drawn into files.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>
#include <utility>

#include "drawing/DisplayRecorder.h"
#include "drawing/NullGenerator.h"
#include "orxprint/Commands.h"
#include "orxprint/InterpreterRun.h"
#include "orxprint/Messages.h"
#include "orxprint/PageAreas.h"
#include "orxprint/PageQuestions.h"
#include "orxprint/PageWriter.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

using orxdrawing::DisplayRecorder;
using orxdrawing::NullGenerator;

// Under a time limit painting may take as long as interpreting, or this many seconds. What was
// painted as SVG or PDF takes Cairo several times as long again to write.
constexpr double kLeastPaintingSeconds = 2;
constexpr double kVectorPaintingShare = 0.25;
// What Cairo takes, at most, until a page of SVG or PDF is complete.
constexpr std::size_t kVectorBytesPerShape = 1400;
constexpr std::size_t kVectorBytesPerPoint = 100;

// One document on its way to its files.
class Rendering {
public:
  Rendering(const Plugin& interpreterPlugin, const CommonOptions& common,
            const RenderOptions& renderOptions, std::set<fs::path>& writtenFiles,
            const std::string& file)
      : plugin(interpreterPlugin),
        options(renderOptions),
        written(writtenFiles),
        timeLimit(common.timeLimit),
        memoryLimit(common.memoryLimit),
        limits(Limits::StartingNow(common.timeLimit)),
        document(OpenDocument(file, limits)),
        outputName(ChooseOutput()) {}

  // Draws and writes. Throws what Attempt takes.
  Status Work() {
    CheckOutput();
    Draw();
    if (stop) Tell(document.Name(), Describe(*stop));
    if (options.format != Format::None) Write();
    return stop || losses.stop ? Status::LimitReached : Status::Done;
  }

private:
  // Where the document goes unless its pages are numbered.
  [[nodiscard]] std::string ChooseOutput() const {
    const bool toFolder = !options.output.empty() && fs::is_directory(options.output);
    if (!options.output.empty() && !toFolder) return options.output;
    if (document.IsStandardInput() && !toFolder) return "-";
    fs::path output = document.IsStandardInput() ? fs::path("stdin") : fs::path(document.Name());
    if (toFolder) output = options.output / output.filename();
    return output.replace_extension(EndingOf(options.format)).string();
  }

  // Tells at once what could be told only after the work.
  void CheckOutput() const {
    if (options.format == Format::None) return;
    std::error_code error;
    if (outputName != "-" && fs::equivalent(outputName, document.Name(), error)) {
      throw Failure("the output would replace the document itself");
    }
    const OutputFile probe(outputName);
  }

  void Draw() {
    if (!options.pages) {
      DrawPages(PageSelection::All());
      return;
    }
    for (const std::uint32_t page : SelectPages(*options.pages, PageCount())) {
      DrawPages(PageSelection::Only(page));
      if (stop) return;
    }
  }

  // As stated, or as many as there are page comments; a document without any is one page.
  [[nodiscard]] std::uint32_t PageCount() const {
    const std::uint32_t stated = AskAboutDocument(plugin, document, limits).count.value_or(0);
    return stated > 0 ? stated : std::max(document.Comments().pageComments, 1U);
  }

  void DrawPages(PageSelection selection) {
    const auto control = std::make_shared<RunControl>();
    if (options.format == Format::None) {
      stop = DrawDocument(plugin, document, selection, limits, control,
                          std::make_shared<NullGenerator>());
      return;
    }
    const auto recorder = std::make_shared<DisplayRecorder>(
        PaintingBudget(), [&running = *control] { running.StopNow(Stop::MemoryLimit); });
    stop = DrawDocument(plugin, document, selection, limits, control, recorder);
    const std::shared_ptr<const DisplayList> list(recorder, &recorder->List());
    if (selection.allPages == 0) {
      pages.push_back({list, 0, selection.page, {}});
      return;
    }
    for (std::size_t i = 0; i < list->PageCount(); ++i) {
      if (IsMereEnd(*list, i)) continue;
      pages.push_back({list, i, static_cast<std::uint32_t>(pages.size() + 1), {}});
    }
  }

  [[nodiscard]] DisplayRecorder::Budget PaintingBudget() const {
    if (memoryLimit == 0 || options.format == Format::Png) return {};
    return {static_cast<std::size_t>(memoryLimit - memoryLimit / 4), kVectorBytesPerShape,
            kVectorBytesPerPoint};
  }

  // Whether a page is blank and begins where the document only says that another one ends.
  [[nodiscard]] bool IsMereEnd(const DisplayList& list, std::size_t page) const {
    const std::vector<bool>& starts = document.Comments().pageStarts;
    return page > 0 && page < starts.size() && !starts[page] && list.ShapesOfPage(page).empty();
  }

  void Write() {
    const Units units = Units::FromEnvironment();
    ChooseAreas(plugin, document, Limits{}, options.area, units, pages);
    const WriteSettings settings{options.format, options.dotsPerInch, units.pointsPerUnit,
                                 PaintingDeadline()};
    if (options.format == Format::Pdf) {
      WriteOutput(outputName, pages, settings);
    } else {
      WriteOnePageEach(settings);
    }
    for (const OutputFile& output : outputs) Claim(output.Name());
    for (OutputFile& output : outputs) output.Commit();
    TellLosses();
  }

  [[nodiscard]] std::optional<Clock::time_point> PaintingDeadline() const {
    if (!timeLimit) return std::nullopt;
    const double seconds = std::max(*timeLimit, kLeastPaintingSeconds);
    const double share = options.format == Format::Png ? 1 : kVectorPaintingShare;
    return Limits::StartingNow(seconds * share).deadline;
  }

  void WriteOnePageEach(const WriteSettings& settings) {
    const bool numbered = pages.size() > 1 || HasNumberPlace(outputName);
    if (numbered && outputName == "-") {
      throw Failure(std::to_string(pages.size()) +
                    " pages cannot go to standard output in this format: use -f pdf or --page");
    }
    for (const PageToWrite& page : pages) {
      const std::string name = numbered ? NumberedName(outputName, page.number) : outputName;
      WriteOutput(name, {&page, 1}, settings);
    }
  }

  void WriteOutput(const std::string& name, std::span<const PageToWrite> itsPages,
                   const WriteSettings& settings) {
    outputs.emplace_back(name);
    const Losses lost = WritePages(outputs.back(), itsPages, settings);
    losses.points += lost.points;
    losses.images += lost.images;
    if (lost.stop) losses.stop = lost.stop;
  }

  // Files of one command must not replace each other.
  void Claim(const std::string& name) {
    if (name == "-" || fs::is_other(fs::status(name))) return;
    if (!written.insert(fs::weakly_canonical(fs::absolute(name))).second) {
      throw Failure("the output " + name + " is that of another document");
    }
  }

  void TellLosses() {
    const bool isBlank = std::all_of(pages.begin(), pages.end(), [](const PageToWrite& page) {
      return page.list->ShapesOfPage(page.page).empty();
    });
    if (isBlank) Warn(document.Name(), "nothing was drawn");
    if (losses.points > 0) {
      Warn(document.Name(),
           "points without finite coordinates left out: " + std::to_string(losses.points));
    }
    if (losses.images > 0) {
      Warn(document.Name(),
           "images without a drawable area left out: " + std::to_string(losses.images));
    }
    if (losses.stop) Tell(document.Name(), "painting " + Describe(*losses.stop));
  }

  const Plugin& plugin;
  const RenderOptions& options;
  std::set<fs::path>& written;
  std::optional<double> timeLimit;
  std::uint64_t memoryLimit;
  Limits limits;
  Document document;
  std::string outputName;
  std::vector<PageToWrite> pages;
  std::vector<OutputFile> outputs;
  Losses losses;
  std::optional<Stop> stop;
};

}  // namespace

Status Render(const Plugin& plugin, const CommonOptions& common, const RenderOptions& options) {
  std::set<fs::path> written;
  Status gravest = Status::Done;
  for (const std::string& file : options.files) {
    const Outcome outcome =
        Attempt(file, [&] { return Rendering(plugin, common, options, written, file).Work(); });
    gravest = Gravest(gravest, outcome.status);
  }
  return gravest;
}

}  // namespace orxprint
