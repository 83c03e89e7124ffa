#include "orxprint/Rendering.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <numeric>
#include <utility>

#include "drawing/Extent.h"
#include "drawing/NullGenerator.h"
#include "drawing/PageAreas.h"
#include "drawing/PageFilter.h"
#include "drawing/ShapeGatherer.h"
#include "host/ORXPrintPropertiesManager.h"
#include "orxprint/Checking.h"
#include "orxprint/Files.h"
#include "orxprint/Messages.h"
#include "orxprint/PictureFiles.h"
#include "orxprint/Session.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

using orxdrawing::ExtentSink;
using orxdrawing::NullGenerator;
using orxdrawing::PageAreas;
using orxdrawing::PageFilter;
using orxdrawing::ShapeGatherer;
using orxdrawing::ShapeSink;

// Painting what is left when a run has ended may take so long at least, whatever the time limit,
// and so may whoever reads what is written.
constexpr double kLeastWritingSeconds = 2;
// What a picture may take however little memory there is.
constexpr std::uint64_t kLeastPictureBytes = std::uint64_t{28} << 20;
// More names of pages than this are not looked at before drawing.
constexpr std::size_t kMostForeseenPages = 10'000;

// One document on its way to its files.
class Rendering {
public:
  Rendering(const Plugin& plugin, const CommonOptions& common, const RenderOptions& renderOptions,
            Outputs& commandOutputs, const ListedDocument& document, std::size_t documentNumber)
      : options(renderOptions),
        format(*renderOptions.format),
        allOutputs(commandOutputs),
        number(documentNumber),
        memoryLimit(common.memoryLimit),
        folder(document.folder),
        session(plugin, common, document.name),
        outputName(ChooseOutput(document, renderOptions)) {}

  // Draws and writes. Throws what Attempt takes.
  Status Work(DocumentResult& result) {
    if (options.pages) {
      const bool mayRepeat = format.pages == PagesInFile::All;
      selected =
          SelectPages(*options.pages, PageCount(), mayRepeat ? Repeats::Kept : Repeats::Left);
    }
    if (format.WritesFiles() && MayStay()) {
      result.isSkipped = true;
      return session.TellShortfalls();
    }
    if (format.WritesFiles()) CheckOutputs();
    format.WritesFiles() ? DrawFiles() : Discard();
    const LostContent lost = TellLostContent(session, options);
    result.losses = lost.kinds;
    result.outputs = written;
    const Status status = Gravest(session.TellShortfalls(), lost.status);
    return isCutShort ? Status::LimitReached : status;
  }

private:
  // Whether what the document would be drawn into is there and is not to be replaced.
  [[nodiscard]] bool MayStay() const {
    if (options.existing == Existing::Replaced) return false;
    const FileStatus document = StatusOf(PathOf(session.Name()));
    return std::ranges::all_of(ForeseenNames(), [&](const std::string& name) {
      const FileStatus output = StatusOf(PathOf(name));
      return output.kind == FileKind::Regular &&
             (options.existing == Existing::Kept || output.changed >= document.changed);
    });
  }

  // Tells at once what could be told only after the work.
  void CheckOutputs() {
    if (!folder.empty() && !options.output.empty()) {
      std::error_code error;  // told by the output that cannot be made
      fs::create_directories(PathOf(outputName.Whole()).parent_path(), error);
    }
    for (const std::string& name : ForeseenNames()) allOutputs.Claim(name, number);
    try {
      const OutputFile probe(outputName.Whole());
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
    if (format.pages == PagesInFile::All || !IsNumbered(numbers.size())) {
      return {outputName.Whole()};
    }
    std::vector<std::string> names;
    names.reserve(numbers.size());
    const std::uint32_t greatest = *std::ranges::max_element(numbers);
    for (const std::uint32_t page : numbers) names.push_back(outputName.ForPage(page, greatest));
    return names;
  }

  [[nodiscard]] bool IsNumbered(std::size_t pageCount) const {
    return pageCount > 1 || outputName.HasNumberPlace();
  }

  // As stated, or as many as there are page comments; a document without any is one page.
  [[nodiscard]] std::uint32_t PageCount() {
    const std::uint32_t stated = session.Ask().count.value_or(0);
    if (session.Stopping()) throw Stopped{*session.Stopping()};
    return stated > 0 ? stated : std::max(session.Source().Comments().pageComments, 1U);
  }

  // The pages whose areas have to be known.
  [[nodiscard]] std::vector<std::uint32_t> ForeseenPages() const {
    if (options.pages) return selected;
    const std::size_t starts = session.Source().Comments().pageStarts.size();
    std::vector<std::uint32_t> numbers(std::max<std::size_t>(starts, 1));
    std::iota(numbers.begin(), numbers.end(), 1U);
    return numbers;
  }

  void Discard() {
    ForEachPass([this](PageSelection selection) {
      session.DrawUnguarded(selection, session.NewControl(), std::make_shared<NullGenerator>());
    });
  }

  // Calls pass(PageSelection) for what one pass of the interpreter draws, until one is stopped.
  template <typename Pass>
  void ForEachPass(Pass pass) {
    if (!options.pages) return pass(PageSelection::All());
    for (const std::uint32_t page : selected) {
      pass(PageSelection::Only(page));
      if (session.Stopping()) return;
    }
  }

  void DrawFiles() {
    TellOfMissingBox();
    const Units units = Units::FromEnvironment();
    const auto areas =
        std::make_shared<PageAreas>(session.AreasOf(options.area, units, ForeseenPages()));
    if (areas->NeedMeasuring()) Measure(*areas, units);
    const std::vector<std::uint32_t> foreseen = ForeseenPages();
    const auto files = std::make_shared<PictureFiles>(PictureFiles::Plan{
        format, Settings(units), outputName, *std::ranges::max_element(foreseen),
        format.pages == PagesInFile::One && IsNumbered(foreseen.size()), areas, Labels()});
    session.JudgeDrawing();
    ForEachPass([&](PageSelection selection) { Draw(selection, files); });
    Finish(*files);
    session.TellShortfalls();
    Commit(*files);
    TellLosses(*files);
  }

  void TellOfMissingBox() const {
    const orxdrawing::DocumentComments& comments = session.Source().Comments();
    if (options.area != Area::HighResolution || comments.fineBox ||
        !comments.finePageBoxes.empty()) {
      return;
    }
    Warn(session.Name(), "states no high-resolution box: the other box is shown");
  }

  [[nodiscard]] PictureSettings Settings(Units units) const {
    PictureSettings settings;
    settings.pixels = options.pixels;
    settings.pointsPerUnit = units.pointsPerUnit;
    settings.title = session.Source().Comments().title;
    settings.creator = session.Source().Comments().creator;
    if (memoryLimit > 0) {
      settings.mostBytes =
          std::clamp<std::uint64_t>(memoryLimit, kLeastPictureBytes, settings.mostBytes);
    }
    return settings;
  }

  // Of the pages, for a file that can name them.
  [[nodiscard]] std::map<std::uint32_t, std::string> Labels() {
    std::map<std::uint32_t, std::string> labels;
    if (format.pages != PagesInFile::All || session.Source().Comments().pageComments == 0) {
      return labels;
    }
    std::vector<std::uint32_t> numbers = ForeseenPages();
    numbers.resize(std::min<std::size_t>(numbers.size(), kMostAskedPages));
    const PageAnswers answers = session.Ask([&numbers](const PageAnswers&) { return numbers; });
    for (std::size_t i = 0; i < answers.pages.size(); ++i) {
      if (answers.pages[i].label) labels[numbers[i]] = *answers.pages[i].label;
    }
    return labels;
  }

  void Measure(PageAreas& areas, Units units) {
    bool areaIsMissing = false;
    ForEachPass([&](PageSelection selection) {
      const auto extents = std::make_shared<ExtentSink>(units.pointsPerUnit);
      DrawOn(selection, session.NewControlForHalf(), extents);
      std::uint32_t page = selection.allPages == 0 ? selection.page : 1;
      for (const std::optional<Box>& extent : extents->Extents()) {
        areas.TakeExtent(page, extent);
        if (!areas.Of(page++)) areaIsMissing = true;
      }
    });
    if (!areaIsMissing) return;
    session.TellShortfalls();
    throw Failure("the document says no size and draws nothing");
  }

  void Draw(PageSelection selection, const std::shared_ptr<PictureFiles>& files) {
    const auto control = session.NewControl();
    files->BeginRun(control, selection.allPages == 0 ? selection.page : 1);
    DrawOn(selection, control, files);
  }

  // Everything that the thread of the run touches is owned by the generator.
  void DrawOn(PageSelection selection, std::shared_ptr<RunControl> control,
              std::shared_ptr<ShapeSink> sink) {
    struct Desk {
      Desk(std::shared_ptr<ShapeSink> itsSink, PageFilter::Pages pages, std::vector<bool> starts,
           ShapeGatherer::RoomGauge gauge, std::function<void()> full)
          : sink(std::move(itsSink)),
            filter(*sink, pages, std::move(starts)),
            gatherer(filter, std::move(gauge), std::move(full)) {}
      std::shared_ptr<ShapeSink> sink;
      PageFilter filter;
      ShapeGatherer gatherer;
    };
    const bool isOne = selection.allPages == 0;
    const auto desk = std::make_shared<Desk>(
        std::move(sink), isOne ? PageFilter::Pages::First : PageFilter::Pages::All,
        session.Source().Comments().pageStarts, MakeRoomGauge(),
        [&running = *control] { running.StopNow(Stop::MemoryLimit); });
    session.Draw(selection, control, std::shared_ptr<ShapeGatherer>(desk, &desk->gatherer));
    desk->gatherer.Finish();
    desk->filter.Finish();
    session.TakeEnd(*control);
  }

  [[nodiscard]] ShapeGatherer::RoomGauge MakeRoomGauge() const {
    if (memoryLimit == 0) return {};
    return [limit = memoryLimit](std::size_t bytes) {
      const double share = static_cast<double>(bytes) / static_cast<double>(limit);
      return !ORXPrintPropertiesManager::IsLowMemory(kMemoryShare - static_cast<float>(share));
    };
  }

  void Finish(PictureFiles& files) {
    const SignOfLife painting(session.Name(), "painting");
    session.Extend(kLeastWritingSeconds);
    files.Finish(session.GivenEnd());
    isCutShort = files.IsCutShort();
  }

  void Commit(PictureFiles& files) {
    if (outputName.Whole() == "-" && files.Outputs().size() > 1) {
      throw Failure(std::to_string(files.PageCount()) +
                    " pages cannot go to standard output in this format: use -f pdf or --page");
    }
    session.Extend(kLeastWritingSeconds);
    for (OutputFile& output : files.Outputs()) {
      allOutputs.Claim(output.Name(), number);
    }
    for (OutputFile& output : files.Outputs()) {
      output.Commit(session.GivenEnd());
      written.push_back(output.Name());
    }
  }

  void TellLosses(const PictureFiles& files) const {
    const std::string& name = session.Name();
    if (files.IsBlank()) Warn(name, "nothing was drawn");
    if (files.Lost().points > 0) {
      Warn(name,
           "points without finite coordinates left out: " + std::to_string(files.Lost().points));
    }
    if (isCutShort) Tell(name, "painting " + Describe(Stop::TimeLimit));
    if (files.Lost().images > 0) {
      Warn(name, "images without a drawable area left out: " + std::to_string(files.Lost().images));
    }
  }

  const RenderOptions& options;
  const Format& format;
  Outputs& allOutputs;
  std::size_t number;  // of the document among those of the command
  std::uint64_t memoryLimit;
  std::string folder;  // of the output, within the folder for all
  Session session;
  OutputName outputName;
  std::vector<std::uint32_t> selected;
  std::vector<std::string> written;
  bool isCutShort = false;  // painting was
};

}  // namespace

OutputName ChooseOutput(const ListedDocument& document, const RenderOptions& options) {
  const bool isFromInput = document.name == "-";
  const bool toFolder =
      !options.output.empty() && StatusOf(PathOf(options.output)).kind == FileKind::Folder;
  if (!options.output.empty() && !toFolder) {
    return options.format->pages == PagesInFile::All ? OutputName::Plain(options.output)
                                                     : OutputName::Typed(options.output);
  }
  if (isFromInput && !toFolder) return OutputName::Plain("-");
  fs::path output = PathOf(isFromInput ? "stdin" : document.name);
  if (toFolder) {
    const fs::path folder = PathOf(options.output) / PathOf(document.folder);
    output = (folder / output.filename()).lexically_normal();
  }
  return OutputName::Plain(NameOf(output.replace_extension(options.format->name)));
}

Status RenderDocument(const Plugin& plugin, const CommonOptions& common,
                      const RenderOptions& options, Outputs& outputs,
                      const ListedDocument& document, std::size_t number, DocumentResult& result) {
  return Rendering(plugin, common, options, outputs, document, number).Work(result);
}

}  // namespace orxprint
