// The command diff: what differs between two drawings, in words and as a picture.
#include <deque>
#include <memory>
#include <set>
#include <utility>

#include "drawing/Comparison.h"
#include "drawing/ComparisonPicture.h"
#include "drawing/Extent.h"
#include "orxprint/Commands.h"
#include "orxprint/DifferenceText.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputFile.h"
#include "orxprint/OutputNames.h"
#include "orxprint/Outputs.h"
#include "orxprint/PageChoice.h"
#include "orxprint/ShapeRuns.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

using orxdrawing::Difference;
using orxdrawing::Picture;
using orxdrawing::ShapeList;
using orxdrawing::Union;

constexpr int kJsonVersion = 1;
// What comes of it, as the common tool of that name has it.
constexpr auto kDifferent = static_cast<Status>(1);
constexpr auto kTrouble = static_cast<Status>(2);

// A document and what it draws.
struct Drawn {
  Drawn(const Plugin& plugin, const CommonOptions& common, const std::string& file)
      : session(plugin, common, file),
        places(session.Source()),
        shapes(std::make_shared<ShapeList>(Units::FromEnvironment().pointsPerUnit)) {}

  // Throws Stopped where only a part was drawn: nothing can be said of the rest.
  void Draw(const std::optional<PageList>& pages) {
    DrawShapes(session, ChoosePasses(session, pages), shapes);
    if (session.Stopping()) throw Stopped{*session.Stopping()};
    hasShortfalls = session.TellShortfalls() != Status::Done;
    if (!shapes->Shapes().empty()) WarnOfMissingPlace(session, shapes->Shapes()[0].record.place);
  }
  // What of the page is to be shown, in points.
  [[nodiscard]] std::optional<Box> AreaOf(std::uint32_t page) const {
    return orxdrawing::AreaOfPage(session.Source().Comments(), *shapes, page);
  }

  Session session;
  SourcePlaces places;
  std::shared_ptr<ShapeList> shapes;
  bool hasShortfalls = false;
};

class DiffPicture {
public:
  DiffPicture(const DiffOptions& diffOptions, const Drawn& drawnBefore, const Drawn& drawnAfter,
              const std::vector<Difference>& allDifferences)
      : options(diffOptions), before(drawnBefore), after(drawnAfter), differences(allDifferences) {}

  // Throws Failure, and what the format's writer throws.
  void Write() {
    const std::set<std::uint32_t> pages =
        orxdrawing::DifferingPages(*before.shapes, *after.shapes, differences);
    for (const std::uint32_t page : pages) DrawPage(page, *pages.rbegin(), pages.size() > 1);
    EndFile();
    Outputs allOutputs({{options.before, {}, {}}, {options.after, {}, {}}});
    for (const OutputFile& output : outputs) allOutputs.Claim(output.Name(), 0);
    for (OutputFile& output : outputs) output.Commit(after.session.GivenEnd());
  }

private:
  void DrawPage(std::uint32_t page, std::uint32_t greatest, bool isOneOfMany) {
    const std::optional<Box> area = Union(before.AreaOf(page), after.AreaOf(page));
    if (!area) throw Failure("what differs has no extent that can be drawn");
    if (!picture || options.format->pages == PagesInFile::One) {
      EndFile();
      const OutputName name = OutputName::Typed(options.output);
      const bool isNumbered =
          options.format->pages == PagesInFile::One && (isOneOfMany || name.HasNumberPlace());
      OutputFile& output =
          outputs.emplace_back(isNumbered ? name.ForPage(page, greatest) : name.Whole());
      picture = options.format->make(Settings(),
                                     [&output](std::string_view bytes) { output.Write(bytes); });
    }
    orxdrawing::ShapeSink& sink = picture->BeginPage({orxdrawing::AtLeastVisible(*area), ""});
    DrawComparison(sink, *before.shapes, *after.shapes, differences, page);
  }

  [[nodiscard]] PictureSettings Settings() const {
    PictureSettings settings;
    settings.pixels.dotsPerInch = options.dotsPerInch;
    settings.pointsPerUnit = after.shapes->PointsPerUnit();
    settings.mayGoOn = [end = after.session.GivenEnd()] { return !end || Clock::now() < *end; };
    return settings;
  }

  void EndFile() {
    if (!picture) return;
    picture->Finish();
    picture.reset();
    outputs.back().Close();
  }

  const DiffOptions& options;
  const Drawn& before;
  const Drawn& after;
  const std::vector<Difference>& differences;
  std::deque<OutputFile> outputs;
  std::unique_ptr<Picture> picture;  // into the last output
};

void Print(const DiffOptions& options, const std::vector<Difference>& differences, Drawn& before,
           Drawn& after) {
  const ComparedDrawing old{*before.shapes, before.places};
  const ComparedDrawing now{*after.shapes, after.places};
  std::string text;
  if (options.json) {
    Json object = {{"version", kJsonVersion}, {"before", options.before}, {"after", options.after}};
    object.update(DifferencesForPrograms(differences, old, now));
    text = Dump(object, 2);
  } else {
    text = DifferencesForPeople(differences, old, now);
  }
  StandardOutput output(after.session.GivenEnd());
  output.Write(text);
  output.RequireSuccess();
  if (differences.size() <= kMostListedDifferences) return;
  Tell("only the first " + std::to_string(kMostListedDifferences) + " of " +
       std::to_string(differences.size()) +
       " differences are listed: choose fewer pages (--pages)");
}

}  // namespace

Status Diff(const Plugin& plugin, const CommonOptions& common, const DiffOptions& options) {
  std::unique_ptr<Drawn> before;
  std::unique_ptr<Drawn> after;
  for (const auto& [file, drawn] :
       {std::pair(&options.before, &before), std::pair(&options.after, &after)}) {
    const Outcome outcome = Attempt(*file, [&, name = file, made = drawn] {
      *made = std::make_unique<Drawn>(plugin, common, *name);
      (*made)->Draw(options.pages);
      return Status::Done;
    });
    if (outcome.status != Status::Done) return kTrouble;
  }
  std::vector<Difference> differences;
  const Outcome outcome = Attempt(options.output.empty() ? "diff" : options.output, [&] {
    differences =
        orxdrawing::Compare(*before->shapes, *after->shapes, options.toleranceMillimetres);
    if (!options.output.empty() && !differences.empty()) {
      DiffPicture(options, *before, *after, differences).Write();
    }
    Print(options, differences, *before, *after);
    return Status::Done;
  });
  if (outcome.status != Status::Done || before->hasShortfalls || after->hasShortfalls) {
    return kTrouble;
  }
  return differences.empty() ? Status::Done : kDifferent;
}

}  // namespace orxprint
