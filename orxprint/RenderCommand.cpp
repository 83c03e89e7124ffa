// The command render: documents drawn into files.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <numeric>
#include <utility>

#include "drawing/DisplayRecorder.h"
#include "drawing/NullGenerator.h"
#include "host/ORXPrintPropertiesManager.h"
#include "orxprint/Checking.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputNames.h"
#include "orxprint/Outputs.h"
#include "orxprint/PageAreas.h"
#include "orxprint/Session.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

using orxdrawing::DisplayRecorder;
using orxdrawing::NullGenerator;

// Under a time limit that was given painting may take as long as interpreting, or this many
// seconds.
constexpr double kLeastPaintingSeconds = 2;
// More names of pages than this are not looked at before drawing.
constexpr std::size_t kMostForeseenPages = 10'000;

// One document on its way to its files.
class Rendering {
public:
  Rendering(const Plugin& plugin, const CommonOptions& common, const RenderOptions& renderOptions,
            Outputs& commandOutputs, std::size_t documentNumber)
      : options(renderOptions),
        format(*renderOptions.format),
        allOutputs(commandOutputs),
        number(documentNumber),
        memoryLimit(common.memoryLimit),
        session(plugin, common, renderOptions.files[documentNumber]),
        outputName(ChooseOutput()) {}

  // Draws and writes. Throws what Attempt takes.
  Status Work() {
    if (options.pages) selected = SelectPages(*options.pages, PageCount());
    if (format.WritesFiles()) CheckOutputs();
    Draw();
    session.TellShortfalls();
    if (format.WritesFiles()) Write();
    const Status status = Gravest(session.TellShortfalls(), TellLostContent(session, options));
    return losses.stop ? Status::LimitReached : status;
  }

private:
  // Where the document goes unless its pages are numbered.
  [[nodiscard]] std::string ChooseOutput() const {
    std::error_code error;
    const bool isFromInput = session.Source().IsStandardInput();
    const bool toFolder = !options.output.empty() && fs::is_directory(options.output, error);
    if (!options.output.empty() && !toFolder) return options.output;
    if (isFromInput && !toFolder) return "-";
    fs::path output = isFromInput ? fs::path("stdin") : fs::path(session.Name());
    if (toFolder) output = options.output / output.filename();
    return output.replace_extension(format.name).string();
  }

  // Tells at once what could be told only after the work.
  void CheckOutputs() {
    for (const std::string& name : ForeseenNames()) allOutputs.Claim(name, number);
    try {
      const OutputFile probe(outputName);
    } catch (const Failure& failure) {
      // Beside the descriptor of a pipe no file can be made.
      const bool hasNoPlace = options.output.empty() && DescriptorOfName(session.Name());
      throw Failure(failure.what() + std::string(hasNoPlace ? ": say with -o where to" : ""));
    }
  }

  // The names of all outputs, as far as the comments tell how many pages there will be.
  [[nodiscard]] std::vector<std::string> ForeseenNames() const {
    std::vector<std::uint32_t> numbers = selected;
    if (!options.pages) {
      const std::size_t starts = session.Source().Comments().pageStarts.size();
      numbers.resize(std::clamp<std::size_t>(starts, 1, kMostForeseenPages));
      std::iota(numbers.begin(), numbers.end(), 1U);
    }
    if (format.pages == PagesInFile::All || !IsNumbered(numbers.size())) return {outputName};
    std::vector<std::string> names;
    for (const std::uint32_t page : numbers) names.push_back(NumberedName(outputName, page));
    return names;
  }

  [[nodiscard]] bool IsNumbered(std::size_t pageCount) const {
    return pageCount > 1 || HasNumberPlace(outputName);
  }

  // As stated, or as many as there are page comments; a document without any is one page.
  [[nodiscard]] std::uint32_t PageCount() {
    const std::uint32_t stated = session.Ask().count.value_or(0);
    if (session.Stopping()) throw Stopped{*session.Stopping()};
    return stated > 0 ? stated : std::max(session.Source().Comments().pageComments, 1U);
  }

  void Draw() {
    if (format.WritesFiles()) session.JudgeDrawing();
    if (!options.pages) return DrawPages(PageSelection::All());
    for (const std::uint32_t page : selected) {
      DrawPages(PageSelection::Only(page));
      if (session.Stopping()) return;
    }
  }

  void DrawPages(PageSelection selection) {
    const auto control = session.NewControl();
    if (!format.WritesFiles()) {
      session.DrawUnguarded(selection, control, std::make_shared<NullGenerator>());
      return;
    }
    const auto recorder = std::make_shared<DisplayRecorder>(
        PaintingBudget(), [&running = *control] { running.StopNow(Stop::MemoryLimit); });
    session.Draw(selection, control, recorder);
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
    if (memoryLimit == 0) return {};
    return {
        static_cast<std::size_t>(memoryLimit - memoryLimit / 4), format.bytesPerShape,
        format.bytesPerPoint, [limit = memoryLimit](std::size_t bytes) {
          const double share = static_cast<double>(bytes) / static_cast<double>(limit);
          return !ORXPrintPropertiesManager::IsLowMemory(kMemoryShare - static_cast<float>(share));
        }};
  }

  // Whether a page is blank and begins where the document only says that another one ends.
  [[nodiscard]] bool IsMereEnd(const DisplayList& list, std::size_t page) const {
    const std::vector<bool>& starts = session.Source().Comments().pageStarts;
    return page > 0 && page < starts.size() && !starts[page] && list.ShapesOfPage(page).empty();
  }

  void Write() {
    const Units units = Units::FromEnvironment();
    session.Extend(kLeastPaintingSeconds);
    ChooseAreas(session, options.area, units, pages);
    WriteFiles({options.dotsPerInch, units.pointsPerUnit, PaintingDeadline()});
    session.Extend(kLeastPaintingSeconds);
    for (OutputFile& output : outputs) output.Commit(session.GivenEnd());
    TellLosses();
  }

  [[nodiscard]] Deadline PaintingDeadline() const {
    if (!session.GivenLimit()) return std::nullopt;
    return DeadlineIn(std::max(*session.GivenLimit(), kLeastPaintingSeconds) *
                      format.paintingShare);
  }

  void WriteFiles(const WriteSettings& settings) {
    const SignOfLife painting(session.Name(), "painting");
    if (format.pages == PagesInFile::All) return WriteOutput(outputName, pages, settings);
    const bool isNumbered = IsNumbered(pages.size());
    if (isNumbered && outputName == "-") {
      throw Failure(std::to_string(pages.size()) +
                    " pages cannot go to standard output in this format: use -f pdf or --page");
    }
    for (const PageToWrite& page : pages) {
      WriteOutput(isNumbered ? NumberedName(outputName, page.number) : outputName, {&page, 1},
                  settings);
    }
  }

  void WriteOutput(const std::string& name, std::span<const PageToWrite> itsPages,
                   const WriteSettings& settings) {
    allOutputs.Claim(name, number);
    OutputFile& output = outputs.emplace_back(name);
    const Losses lost = format.write(output, itsPages, settings);
    output.Close();
    losses.points += lost.points;
    losses.images += lost.images;
    if (lost.stop) losses.stop = lost.stop;
  }

  void TellLosses() {
    const bool isBlank = std::all_of(pages.begin(), pages.end(), [](const PageToWrite& page) {
      return page.list->ShapesOfPage(page.page).empty();
    });
    if (isBlank) Warn(session.Name(), "nothing was drawn");
    if (losses.points > 0) {
      Warn(session.Name(),
           "points without finite coordinates left out: " + std::to_string(losses.points));
    }
    if (losses.images > 0) {
      Warn(session.Name(),
           "images without a drawable area left out: " + std::to_string(losses.images));
    }
    if (losses.stop) Tell(session.Name(), "painting " + Describe(*losses.stop));
  }

  const RenderOptions& options;
  const Format& format;
  Outputs& allOutputs;
  std::size_t number;  // of the document among those of the command
  std::uint64_t memoryLimit;
  Session session;
  std::string outputName;
  std::vector<std::uint32_t> selected;
  std::vector<PageToWrite> pages;
  std::vector<OutputFile> outputs;
  Losses losses;
};

}  // namespace

Status Render(const Plugin& plugin, const CommonOptions& common, const RenderOptions& options) {
  Outputs outputs(options.files);
  Status gravest = Status::Done;
  for (std::size_t i = 0; i < options.files.size(); ++i) {
    const Outcome outcome = Attempt(
        options.files[i], [&] { return Rendering(plugin, common, options, outputs, i).Work(); });
    gravest = Gravest(gravest, outcome.status);
  }
  return gravest;
}

}  // namespace orxprint
