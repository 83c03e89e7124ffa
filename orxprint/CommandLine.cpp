#include "orxprint/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <limits>
#include <numeric>
#include <sstream>
#include <utility>

#include "orxprint/Files.h"
#include "orxprint/Messages.h"
#include "orxprint/OptionTable.h"
#include "orxprint/Platform.h"
#include "orxprint/Plugin.h"
#include "orxprint/PluginChecks.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

constexpr const char* kDescription =
    "Draws, describes and traces Encapsulated PostScript documents through the print\n"
    "interpreter plug-in.";

constexpr const char* kFooter =
    "Examples:\n"
    "  orxprint render part.eps -o part.pdf\n"
    "  orxprint render scan.eps -f png -r 300 --area drawing\n"
    "  orxprint render manual.eps -o 'page-%d.svg' --pages 1,3-5,7-\n"
    "  orxprint check *.eps\n"
    "  orxprint info *.eps --json\n"
    "  orxprint trace part.eps --page 2 --where\n"
    "  orxprint find part.eps --at 31.5,80mm\n"
    "  orxprint diff old.eps new.eps -o difference.svg\n"
    "  orxprint view part.eps\n"
    "  orxprint plugin --check\n"
    "  cat part.eps | orxprint render - -f pdf > part.pdf\n"
    "\n"
    "A FILE of - is standard input; an output of - is standard output.\n"
    "\n"
    "Exit status: 0 all went well; 1 a file could not be read or drawn (the others are\n"
    "done); 2 wrong usage; 3 content is missing or wrong (check, render --strict); 4 a limit was "
    "met (what was drawn is written); 5 the plug-in could\n"
    "not be loaded.";

constexpr const char* kRenderFooter =
    "The format follows OUT's ending unless -f is given; it is svg without either. Without -o the\n"
    "output stands beside the input under its name with the new ending; OUT may be a folder.\n"
    "PDF takes all pages in one file. Several pages of SVG or PNG are numbered, as in name-2.svg,\n"
    "or where OUT has %d or %03d. Output appears under its name only when it is complete.\n"
    "\n"
    "Examples:\n"
    "  orxprint render part.eps -o part.pdf\n"
    "  orxprint render *.eps -f png -r 300 -o pictures/\n"
    "  orxprint render manual.eps -o 'page-%d.svg' --pages 1,3-5,7-";

constexpr const char* kCheckFooter =
    "Interprets and draws nothing. Prints one line for a document of which nothing is lost;\n"
    "otherwise what is lost or differs, the gravest first, with the lines of its PostScript\n"
    "section. docs/check.md lists every kind. Ends with 3 when content is missing or wrong.\n"
    "With --json: an array with an object for each file, as docs/check.schema.json says.\n"
    "\n"
    "Examples:\n"
    "  orxprint check *.eps\n"
    "  orxprint check *.eps --html drawings.html";

constexpr const char* kInfoFooter =
    "Prints what the comments say, with the line of each box, what was drawn, and warnings by\n"
    "stable names. With --json: an array with an object for each file, in the order given, as\n"
    "docs/info.schema.json describes it; lengths have their unit in the name of their key. A file\n"
    "that is no PostScript has isPostScript false, and the status is 1.\n"
    "\n"
    "Examples:\n"
    "  orxprint info part.eps\n"
    "  orxprint info *.eps --json\n"
    "  orxprint info part.eps --quick";

constexpr const char* kTraceFooter =
    "Prints every call that the interpreter makes on its drawing device, one a line. Images are\n"
    "named by the size and CRC-32 of their samples. Of several files each begins with a line\n"
    "'# file NAME'. With --json every line is an object. docs/trace-format.md tells all of it.\n"
    "\n"
    "Examples:\n"
    "  orxprint trace part.eps --page 2 --where\n"
    "  orxprint trace scan.eps --samples";

constexpr const char* kViewFooter =
    "Makes a page with the interpreter and the documents inside, which any browser opens: the\n"
    "drawings, what is lost or differs, and the lines that draw it; see docs/viewer.md.\n"
    "Without -o it is a temporary file, which stays, and the desktop's browser opens it.\n"
    "\n"
    "Examples:\n"
    "  orxprint view part.eps\n"
    "  orxprint view *.eps -o drawings.html";

constexpr const char* kFindFooter =
    "Prints the strokes, fills and images whose ink touches the place, the topmost first, with\n"
    "the page and the line that drew each. Places count from the document's origin, y upwards, as\n"
    "in a trace; without mm or pt in the unit of --units. With --json: docs/find.md.\n"
    "\n"
    "Examples:\n"
    "  orxprint find part.eps --at 31.5,80mm\n"
    "  orxprint find part.eps --at 90,230pt --within 1";

constexpr const char* kPluginFooter =
    "Loads the plug-in, draws and asks with it, and prints a line for each check. Each runs in a\n"
    "process of its own and may take 60 seconds, or what --time-limit says. Exit status: 0 all\n"
    "hold; 1 one does not; 5 there is no such file.\n"
    "\n"
    "Examples:\n"
    "  orxprint plugin --check\n"
    "  orxprint plugin --check build/release/lib/ORXPrintEPSInterpreter.so --only load,stop";

constexpr const char* kDiffFooter =
    "Prints which strokes, fills and images were added (+), removed (-) or changed (!) from\n"
    "BEFORE to AFTER, page by page, with the lines that drew them. OUT shows what differs,\n"
    "BEFORE's in red and AFTER's in blue, over the rest in pale grey; nothing is written when\n"
    "nothing differs. Exit status: 0 both draw the same; 1 they differ; 2 trouble, wrong usage\n"
    "and limits included; 5 the plug-in could not be loaded.\n"
    "\n"
    "Examples:\n"
    "  orxprint diff old.eps new.eps\n"
    "  orxprint diff old.eps new.eps -o difference.svg --tolerance 0.01";

constexpr std::uint32_t kLeastDotsPerInch = 1;
constexpr std::uint32_t kMostDotsPerInch = 9600;
constexpr std::uint32_t kMostWithinMillimetres = 1'000'000;

// A text option as the person wrote it; meaning is given to it after all of them are known.
struct RawOptions {
  std::string memoryLimit;
  std::string timeLimit;
  std::string format;
  std::string pages;
  std::string checkPages;
  std::string area = "box";
  bool isQuiet = false;
  bool isVerbose = false;
  std::string tracePages;
  std::vector<std::string> calls;
  std::string place;
};

[[noreturn]] void Refuse(const std::string& option, const std::string& text,
                         const std::string& expected) {
  throw CLI::ValidationError(option, "'" + text + "' is not " + expected);
}

// Whether one word becomes the other by at most two letters more, fewer or other.
bool AreAlike(std::string_view a, std::string_view b) {
  constexpr std::size_t kMostEdits = 2;
  std::vector<std::size_t> edits(b.size() + 1);  // from the beginning of a to those of b
  std::iota(edits.begin(), edits.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(edits[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = edits[j + 1];
      edits[j + 1] = std::min({replaced, edits[j] + 1, edits[j + 1] + 1});
    }
  }
  return edits.back() <= kMostEdits;
}

// A check that takes numbers from the one to the other, and nothing else.
auto NumberFrom(std::uint32_t least, std::uint32_t most) {
  return [=](const std::string& text) -> std::string {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc() && stop == end && number >= least && number <= most) return {};
    return "'" + text + "' is not a number from " + std::to_string(least) + " to " +
           std::to_string(most);
  };
}

// An empty value is a variable of a script that was never set.
void RefuseEmptyValues(const CLI::App& command) {
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_expected_min() == 0) continue;  // may stand without a value
    for (const std::string& value : option->results()) {
      if (value.empty()) throw CLI::ValidationError(option->get_name(), "has an empty value");
    }
  }
}

// Bytes with an optional K, M or G, each 1024 times the one before.
std::uint64_t ParseSize(const std::string& text) {
  constexpr std::string_view kUnits = "KMG";
  std::uint64_t size = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, size);
  const std::string_view unit(stop, static_cast<std::size_t>(end - stop));
  std::size_t shift = 0;
  if (unit.size() == 1) {
    const char upper = unit[0] >= 'a' ? static_cast<char>(unit[0] - 'a' + 'A') : unit[0];
    shift = kUnits.find(upper) == std::string_view::npos ? 64 : 10 * (kUnits.find(upper) + 1);
  }
  const bool isValid = error == std::errc() && size > 0 && unit.size() <= 1 && shift < 64 &&
                       size <= std::numeric_limits<std::uint64_t>::max() >> shift;
  if (!isValid) Refuse("--memory-limit", text, "a size such as 500M or 2G");
  return size << shift;
}

TimeLimit ParseTimeLimit(const std::string& text) {
  if (text == "none") return {std::nullopt, true};
  double seconds = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seconds);
  if (error != std::errc() || stop != end || !(seconds > 0) || !std::isfinite(seconds)) {
    Refuse("--time-limit", text, "a number of seconds above 0, or none");
  }
  return {seconds, true};
}

Area ParseArea(const std::string& text) {
  if (text == "box") return Area::Box;
  if (text == "page") return Area::Page;
  if (text != "drawing") Refuse("--area", text, "box, page or drawing");
  return Area::Drawing;
}

std::optional<PageList> ParsePages(const std::string& text) {
  if (text.empty()) return std::nullopt;
  auto pages = ParsePageList(text);
  if (!pages) Refuse("--pages", text, "a list of pages such as 1,3-5,7-");
  return pages;
}

// Without names, all calls.
orxdrawing::TraceCallSet ParseCalls(const std::vector<std::string>& names) {
  const auto& calls = orxdrawing::kTraceCalls;
  orxdrawing::TraceCallSet set = 0;
  for (const std::string& name : names) {
    const auto found = std::find(calls.begin(), calls.end(), name);
    if (found == calls.end()) {
      std::string expected;
      for (const std::string_view call : calls) {
        expected += (expected.empty() ? "a call: " : ", ") + std::string(call);
      }
      Refuse("--only", name, expected);
    }
    set |= 1U << (found - calls.begin());
  }
  return names.empty() ? orxdrawing::kAllTraceCalls : set;
}

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

void RequireOneStandardInput(const std::vector<std::string>& files) {
  if (std::count(files.begin(), files.end(), "-") <= 1) return;
  throw CLI::ValidationError("FILE", "standard input (-) can be read only once");
}

void RequireOneOutputForEach(const RenderOptions& render) {
  const bool isShared =
      render.files.size() > 1 && !render.output.empty() && !IsFolder(render.output);
  if (!isShared || !render.format->WritesFiles()) return;
  throw CLI::ValidationError(
      "--output", "'" + render.output + "' is one output for several files: name a folder");
}

std::string VersionText() {
  std::string text = std::string("orxprint ") + ORXPRINT_VERSION;
  for (const std::filesystem::path& place : PluginPlaces({})) {
    if (StatusOf(place).kind == FileKind::Regular) return text + "\nplug-in: " + NameOf(place);
  }
  return text + "\nplug-in: none found";
}

// The command line as CLI11 sees it, filling a request.
class Parser {
public:
  Parser() {
    app.set_version_flag("--version", VersionText);
    app.footer(kFooter);
    app.allow_windows_style_options(false);  // "/part.eps" names a file there, too
    app.add_flag("--option-table", showsTable, "For the manual page and completions")->group("");
    app.require_subcommand(0, 1);  // none is refused below, in better words
    AddCommonOptions(app);
    AddRender();
    AddCheck();
    AddInfo();
    AddTrace();
    AddPlugin();
    AddFind();
    AddDiff();
    AddView();
  }

  std::variant<Request, Status> Parse(const std::vector<std::string>& arguments) {
    try {
      // The library takes them from the last to the first, without the program's name.
      std::vector<std::string> options(arguments.rbegin(), arguments.rend());
      if (!options.empty()) options.pop_back();
      app.parse(std::move(options));
      if (showsTable) return Answer(OptionTable(app));
      return Finish();
    } catch (const CLI::Success& help) {
      return PrintAnswer(help);
    } catch (const CLI::ParseError& error) {
      if (!TellOfUnknownCommand(arguments)) Tell(error.what());
      HintAtNamesWithDash(arguments);
      WriteToStandardError("Run 'orxprint --help' or 'orxprint COMMAND --help'.\n");
      return Status::WrongUsage;
    }
  }

private:
  Status PrintAnswer(const CLI::Success& help) {
    std::ostringstream text;
    app.exit(help, text, text);
    return Answer(text.str());
  }

  static Status Answer(const std::string& text) {
    StandardOutput output({});
    if (output.Write(text)) return Status::Done;
    Tell("cannot write standard output: " + ErrorText(output.Error()));
    return Status::FileFailed;
  }

  // Whether the first word, which is to be a command, is none.
  bool TellOfUnknownCommand(const std::vector<std::string>& arguments) const {
    if (!app.get_subcommands().empty()) return false;
    const auto word =
        std::find_if(std::next(arguments.begin(), arguments.empty() ? 0 : 1), arguments.end(),
                     [](const std::string& argument) { return !argument.starts_with('-'); });
    if (word == arguments.end()) return false;
    Tell("'" + *word + "' is no command");
    if (StatusOf(PathOf(*word)).kind != FileKind::None) {
      Tell(*word, "to draw this file, write: orxprint render " + *word);
      return true;
    }
    for (const CLI::App* command : app.get_subcommands({})) {
      if (AreAlike(command->get_name(), *word)) Tell("did you mean " + command->get_name() + "?");
    }
    return true;
  }

  // A file's name that begins with a dash is taken for options.
  static void HintAtNamesWithDash(const std::vector<std::string>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
      const std::string& argument = arguments[i];
      if (argument.size() < 2 || argument[0] != '-') continue;
      if (StatusOf(PathOf(argument)).kind == FileKind::None) continue;
      Tell(argument, "to name this file, write ./" + argument);
    }
  }

  void AddCommonOptions(CLI::App& command) {
    command
        .add_option(
            "--units", common.units,
            "Unit of coordinates inside the interpreter; env: as the plug-in's variable says")
        ->type_name("mm|pt|env")
        ->check(CLI::IsMember({"mm", "pt", "env"}));
    command.add_option("--plugin", common.plugin, "The plug-in's file")->type_name("PATH");
    command
        .add_option("--memory-limit", raw.memoryLimit,
                    "Memory to use at most, in bytes or with K, M or G")
        ->type_name("SIZE");
    command
        .add_option("--time-limit", raw.timeLimit,
                    "Stop work on each file after this time; without it, interpreting after 300 s")
        ->type_name("SECONDS|none");
  }

  CLI::App* AddCommand(const char* name, const char* description, const char* footer) {
    CLI::App* command = app.add_subcommand(name, description);
    command->footer(footer);
    AddCommonOptions(*command);
    return command;
  }

  void AddRender() {
    renderCommand = AddCommand("render", "Draw documents as SVG, PDF or PNG", kRenderFooter);
    renderCommand->add_option("FILE", render.files, "Documents to draw")->required();
    renderCommand->add_option("-o,--output", render.output, "Where to draw to")->type_name("OUT");
    renderCommand->add_option("-f,--format", raw.format, "The format; none interprets and discards")
        ->type_name("svg|pdf|png|none");
    renderCommand->add_option("-r,--resolution", render.dotsPerInch, "Dots per inch of a PNG (150)")
        ->type_name("DPI")
        ->check(NumberFrom(kLeastDotsPerInch, kMostDotsPerInch));
    renderCommand->add_option("--pages,--page", raw.pages, "Draw these pages only: 1,3-5,7-")
        ->type_name("LIST");
    renderCommand
        ->add_option("--area", raw.area,
                     "Show the document's box, the page from its origin, or the drawing's extent")
        ->type_name("box|page|drawing");
    renderCommand->add_flag("--strict", render.strict, "End with status 3 when content is lost");
    renderCommand->add_flag("-q,--quiet", raw.isQuiet, "Tell of errors only");
    renderCommand->add_flag("-v,--verbose", raw.isVerbose, "List what is lost or differs");
  }

  void AddCheck() {
    checkCommand = AddCommand("check", "Tell what will be lost or differ, and where", kCheckFooter);
    checkCommand->add_option("FILE", check.files, "Documents to check")->required();
    CLI::Option* json = checkCommand->add_flag("--json", check.json, "Print for programs");
    checkCommand->add_option("--html", check.html, "Write a page with pictures instead")
        ->type_name("OUT")
        ->excludes(json);
    checkCommand->add_option("--pages,--page", raw.checkPages, "Look at these pages only: 1,3-5,7-")
        ->type_name("LIST");
  }

  void AddInfo() {
    infoCommand = AddCommand("info", "Print pages, sizes, labels and statistics", kInfoFooter);
    infoCommand->add_option("FILE", info.files, "Documents to describe")->required();
    infoCommand->add_flag("--json", info.json, "Print for programs");
    infoCommand->add_flag("--quick", info.quick, "Read the comments only, run no PostScript");
  }

  void AddTrace() {
    traceCommand = AddCommand("trace", "Print every drawing call", kTraceFooter);
    traceCommand->add_option("FILE", trace.files, "Documents to trace")->required();
    auto* page = traceCommand->add_option("--page", trace.page,
                                          "Select this page only, whether it is there or not");
    page->type_name("N")->check(NumberFrom(0, std::numeric_limits<std::uint32_t>::max()));
    traceCommand->add_option("--pages", raw.tracePages, "Trace these pages in turn: 1,3-5,7-")
        ->type_name("LIST")
        ->excludes(page);
    auto* only = traceCommand->add_option("--only", raw.calls, "Print these calls only");
    only->type_name("CALLS")->delimiter(',');
    auto* samples =
        traceCommand->add_flag("--samples", trace.samples, "Print the samples of images as well");
    auto* where =
        traceCommand->add_flag("--where", trace.where, "Say of each call which line drew it");
    traceCommand
        ->add_flag("--summary", trace.summary, "Print counts, extent, widths, colours of each page")
        ->excludes(only)
        ->excludes(samples)
        ->excludes(where);
    traceCommand->add_flag("--json", trace.json, "Print an object a line, for programs");
  }

  void AddFind() {
    findCommand = AddCommand("find", "Tell which lines drew what is at a place", kFindFooter);
    findCommand->add_option("FILE", find.file, "Document to look into")->required();
    findCommand->add_option("--at", raw.place, "The place on the paper")
        ->type_name("X,Y[mm|pt]")
        ->required();
    findCommand
        ->add_option("--within", find.withinMillimetres,
                     "Take what is so near as well, in mm (0.1)")
        ->type_name("MM")
        ->check(NumberFrom(0, kMostWithinMillimetres));
    AddPagesAndJson(*findCommand, find.json);
  }

  void AddDiff() {
    diffCommand = AddCommand("diff", "Tell what differs between two drawings", kDiffFooter);
    diffCommand->add_option("BEFORE", diff.before, "The one document")->required();
    diffCommand->add_option("AFTER", diff.after, "The other document")->required();
    diffCommand->add_option("-o,--output", diff.output, "Draw what differs, as SVG, PDF or PNG")
        ->type_name("OUT");
    diffCommand->add_option("-r,--resolution", diff.dotsPerInch, "Dots per inch of a PNG (150)")
        ->type_name("DPI")
        ->check(NumberFrom(kLeastDotsPerInch, kMostDotsPerInch));
    diffCommand
        ->add_option("--tolerance", diff.toleranceMillimetres,
                     "Take coordinates so near for the same, in mm (0.001)")
        ->type_name("MM")
        ->check(NumberFrom(0, kMostWithinMillimetres));
    AddPagesAndJson(*diffCommand, diff.json);
  }

  Request FinishDiff() {
    RequireOneStandardInput({diff.before, diff.after});
    diff.pages = ParsePages(raw.tracePages);
    if (diff.output.empty()) return {common, diff};
    diff.format = FormatOfFile(diff.output);
    if (diff.format) return {common, diff};
    throw CLI::ValidationError(
        "--output", "the ending of '" + diff.output + "' says no format: use .svg, .pdf or .png");
  }

  void AddView() {
    viewCommand = app.add_subcommand("view", "Show documents in a browser, with their source");
    viewCommand->footer(kViewFooter);
    viewCommand->add_option("FILE", view.files, "Documents to show")->required();
    viewCommand->add_option("-o,--output", view.output, "Where the page goes")
        ->type_name("OUT.html");
    viewCommand->add_flag("--no-open", view.noOpen, "Start no browser: print the page's name");
    viewCommand->add_option("--time-limit", raw.timeLimit, "Time for each file to be read")
        ->type_name("SECONDS");
  }

  ViewOptions FinishView() const {
    RequireOneStandardInput(view.files);
    if (!common.units.empty() || !common.plugin.empty() || common.memoryLimit != 0) {
      throw CLI::ValidationError("view", "--units, --plugin and --memory-limit do nothing here");
    }
    return view;
  }

  void AddPagesAndJson(CLI::App& command, bool& json) {
    command.add_option("--pages", raw.tracePages, "Look at these pages only: 1,3-5,7-")
        ->type_name("LIST");
    command.add_flag("--json", json, "Print for programs");
  }

  Request FinishFind() {
    const std::optional<PlaceOption> place = ParsePlace(raw.place);
    if (!place) Refuse("--at", raw.place, "a place such as 12.5,80 or 35,227pt");
    find.place = *place;
    find.pages = ParsePages(raw.tracePages);
    return {common, find};
  }

  void AddPlugin() {
    pluginCommand = app.add_subcommand("plugin", "Check a build of the plug-in");
    pluginCommand->footer(kPluginFooter);
    pluginCommand->add_option("--check", plugin.file, "Check this one, or the usual one")
        ->type_name("[PATH]")
        ->expected(0, 1);
    pluginCommand->add_flag("--list", plugin.list, "Print the checks and what they look at");
    pluginCommand->add_option("--only", plugin.only, "Make these checks only, names with commas")
        ->type_name("NAME")
        ->delimiter(',')
        ->check([](const std::string& name) { return ComplainOfCheck(name); });
    pluginCommand->add_option("--time-limit", raw.timeLimit, "Time for each check")
        ->type_name("SECONDS");
    pluginCommand->add_flag("--in-this-process", plugin.inThisProcess)->group("");
  }

  // Nothing when there is a check of that name.
  static std::string ComplainOfCheck(const std::string& name) {
    for (const PluginCheck& check : PluginChecks()) {
      if (name == check.name) return {};
    }
    return "'" + name + "' is no check: see orxprint plugin --list";
  }

  PluginOptions FinishPlugin() const {
    if (pluginCommand->count("--check") == 0 && !plugin.list) {
      throw CLI::ParseError("plugin: --check or --list is required", CLI::ExitCodes::RequiredError);
    }
    if (!common.units.empty() || common.memoryLimit != 0) {
      throw CLI::ValidationError("plugin", "--units and --memory-limit do nothing here");
    }
    return plugin;
  }

  Request Finish() {
    RefuseEmptyValues(app);
    for (const CLI::App* command : app.get_subcommands()) RefuseEmptyValues(*command);
    if (!raw.memoryLimit.empty()) common.memoryLimit = ParseSize(raw.memoryLimit);
    if (!raw.timeLimit.empty()) common.timeLimit = ParseTimeLimit(raw.timeLimit);
    if (app.get_subcommands().empty()) {
      throw CLI::ParseError(
          "a command is required: render, check, info, trace, find, diff, view or plugin",
          CLI::ExitCodes::RequiredError);
    }
    if (pluginCommand->parsed()) return {common, FinishPlugin()};
    if (checkCommand->parsed()) {
      RequireOneStandardInput(check.files);
      check.pages = ParsePages(raw.checkPages);
      return {common, check};
    }
    if (infoCommand->parsed()) {
      RequireOneStandardInput(info.files);
      return {common, info};
    }
    if (traceCommand->parsed()) {
      RequireOneStandardInput(trace.files);
      trace.pages = ParsePages(raw.tracePages);
      trace.calls = ParseCalls(raw.calls);
      return {common, trace};
    }
    if (findCommand->parsed()) return FinishFind();
    if (diffCommand->parsed()) return FinishDiff();
    if (viewCommand->parsed()) return {common, FinishView()};
    RequireOneStandardInput(render.files);
    render.area = ParseArea(raw.area);
    render.format = &ChooseFormat(raw.format, render);
    RequireThere(*render.format);
    RequireOneOutputForEach(render);
    render.pages = ParsePages(raw.pages);
    if (raw.isVerbose) render.telling = Telling::All;
    if (raw.isQuiet) render.telling = Telling::ErrorsOnly;
    return {common, render};
  }

  CLI::App app{kDescription, "orxprint"};
  CLI::App* renderCommand = nullptr;
  CLI::App* checkCommand = nullptr;
  CLI::App* infoCommand = nullptr;
  CLI::App* traceCommand = nullptr;
  CLI::App* pluginCommand = nullptr;
  bool showsTable = false;
  CLI::App* findCommand = nullptr;
  CLI::App* diffCommand = nullptr;
  CLI::App* viewCommand = nullptr;
  CommonOptions common;
  RawOptions raw;
  RenderOptions render;
  CheckOptions check;
  InfoOptions info;
  TraceOptions trace;
  PluginOptions plugin;
  FindOptions find;
  DiffOptions diff;
  ViewOptions view;
};

}  // namespace

std::variant<Request, Status> ParseCommandLine(const std::vector<std::string>& arguments) {
  return Parser().Parse(arguments);
}

}  // namespace orxprint
