// How the command render is written.
#include "orxprint/CommandUsage.h"
#include "orxprint/Files.h"
#include "orxprint/HelpTexts.h"
#include "orxprint/OptionValues.h"

namespace orxprint {

namespace {

bool IsFolder(const std::string& name) { return StatusOf(PathOf(name)).kind == FileKind::Folder; }

const Format& ChooseFormat(const std::string& text, const RenderOptions& render) {
  if (!text.empty()) {
    const Format* format = FindFormat(text);
    if (!format) Refuse("--format", text, "a format: svg, pdf, png or none");
    return *format;
  }
  if (render.output.empty() || DescriptorOfName(render.output)) return DefaultFormat();
  if (const Format* format = FormatOfFile(render.output)) return *format;
  if (IsFolder(render.output)) return DefaultFormat();
  if (render.output.ends_with('/')) {
    throw CLI::ValidationError("--output", "there is no folder '" + render.output + "'");
  }
  throw CLI::ValidationError("--output", "the ending of '" + render.output +
                                             "' says no format: use .svg, .pdf or .png, or -f");
}

void RequireThere(const Format& format) {
  if (format.IsThere()) return;
  throw CLI::ValidationError("--format", "this build of orxprint writes no " +
                                             std::string(format.name) +
                                             ": it lacks the library for it");
}

void RequireOneOutputForEach(const RenderOptions& render) {
  const DocumentChoice& documents = render.documents;
  const bool areMany =
      documents.names.size() > 1 || documents.takesFolders || !documents.namesFrom.empty();
  const bool isShared = areMany && !render.output.empty() && !IsFolder(render.output);
  if (!isShared || !render.format->WritesFiles()) return;
  throw CLI::ValidationError(
      "--output", "'" + render.output + "' is one output for several files: name a folder");
}

class RenderUsage final : public CommandUsage {
public:
  void AddTo(CLI::App& app, CommonUsage& common) override {
    CLI::App& render = Add(app, "render", "Draw documents as SVG, PDF or PNG", kRenderFooter);
    common.AddTo(render);
    AddBatch(options.documents, options.jobs, options.report,
             "Documents to draw, or folders with -R");
    CLI::Option* newer =
        render.add_flag("--newer", keepsNewer, "Leave drawings that are up to date");
    render.add_flag("--no-clobber", keepsAll, "Leave drawings that are there")->excludes(newer);
    render.add_option("-o,--output", options.output, "Where to draw to")->type_name("OUT");
    render.add_option("-f,--format", format, "The format; none interprets and discards")
        ->type_name("svg|pdf|png|none");
    AddPages("Draw these pages only: 1,3-5,7-");
    render
        .add_option("--area", area,
                    "Show the document's box, its high-resolution box, the page from its origin, "
                    "or the drawing's extent")
        ->type_name("box|hires|page|drawing");
    AddPngOptions(render);
    render.add_flag("--strict", options.strict, "End with status 3 when content is lost");
    render.add_flag("-q,--quiet", isQuiet, "Tell of errors only");
    render.add_flag("-v,--verbose", isVerbose, "List what is lost or differs");
  }

  Request Finish(const CommonOptions& common) override {
    FinishBatch(options.documents);
    if (keepsNewer) options.existing = Existing::KeptIfNewer;
    if (keepsAll) options.existing = Existing::Kept;
    options.area = ParseArea(area);
    options.format = &ChooseFormat(format, options);
    RequireThere(*options.format);
    FinishPngOptions();
    RequireOneOutputForEach(options);
    options.pages = ParsePages(pages);
    if (isVerbose) options.telling = Telling::All;
    if (isQuiet) options.telling = Telling::ErrorsOnly;
    return {common, options};
  }

private:
  void AddPngOptions(CLI::App& render) {
    CLI::Option* resolution =
        AddPng(render.add_option("-r,--resolution", options.pixels.dotsPerInch,
                                 "Dots per inch of a PNG (150)"))
            ->type_name("DPI")
            ->check(NumberFrom(kLeastDotsPerInch, kMostDotsPerInch));
    CLI::Option* width =
        AddPng(render.add_option("--width", options.pixels.bounds.width, "Pixels across, at most"));
    CLI::Option* height = AddPng(
        render.add_option("--height", options.pixels.bounds.height, "Pixels downwards, at most"));
    for (CLI::Option* side : {width, height}) {
      side->type_name("PIXELS")->check(NumberFrom(1, kMostPixels))->excludes(resolution);
    }
    AddPng(render.add_option("--fit", fit, "The largest PNG of no more pixels than these"))
        ->type_name("WIDTHxHEIGHT")
        ->excludes(resolution)
        ->excludes(width)
        ->excludes(height);
    AddPng(
        render.add_option("--background", background, "What lies behind a PNG's drawing (white)"))
        ->type_name("none|white|#RRGGBB");
    AddPng(render.add_flag("--grey", options.pixels.inGrey, "Make a PNG of greys"));
  }

  CLI::Option* AddPng(CLI::Option* option) {
    forPng.push_back(option);
    return option;
  }

  // Drawings without pixels say nothing about them; a batch may all the same name a resolution.
  void FinishPngOptions() {
    for (const CLI::Option* option : forPng) {
      if (option->count() == 0 || option->check_name("-r") || options.format->hasPixels) continue;
      throw CLI::ValidationError(
          option->get_name(), "is for PNG, and the format is " + std::string(options.format->name));
    }
    if (!fit.empty()) options.pixels.bounds = ParseFit(fit);
    if (!background.empty()) options.pixels.background = ParseBackground(background);
  }

  RenderOptions options;
  std::string format;
  std::string area = "box";
  std::string fit;
  std::string background;
  bool keepsNewer = false;
  bool keepsAll = false;
  bool isQuiet = false;
  bool isVerbose = false;
  std::vector<const CLI::Option*> forPng;
};

}  // namespace

std::unique_ptr<CommandUsage> MakeRenderUsage() { return std::make_unique<RenderUsage>(); }

}  // namespace orxprint
