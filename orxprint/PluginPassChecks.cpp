// What drawing and counting passes of a build of the plug-in answer.
#include "framework/Environment.h"
#include "host/ORXListValORXUnicodeString.h"
#include "orxprint/PluginCandidate.h"
#include "orxprint/PluginChecks.h"

namespace orxprint {

namespace {

std::string DrawsShapes(const std::filesystem::path& file) {
  const Candidate candidate(file);
  RequireSameCalls(Host(candidate, kShapes).Draw(), std::string(kShapesCalls));
  return {};
}

std::string DrawsImages(const std::filesystem::path& file) {
  const Candidate candidate(file);
  RequireSameCalls(Host(candidate, kImage).Draw(), std::string(kImageCalls));
  return {};
}

// The stroke from the origin to a point, as the documents with pages draw it.
std::string StrokeTo(const std::string& point) {
  return "DefineColor(255, 0, 0, 0)\nSetLineColor(255)\nSetLineCap(0)\nSetLineWidth(0.1)\n"
         "MoveTo(0, 0)\nLineTo(" +
         point + ")\n";
}

std::string DrawsPages(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const std::string first = StrokeTo("25.4, 0");
  const std::string second = StrokeTo("0, 25.4");
  struct Selection {
    unsigned char allPages;
    unsigned page;
    std::string calls;
  };
  const Selection selections[] = {{1, 0, first + "NewPage()\n" + second},
                                  {1, 2, first + "NewPage()\n" + second},
                                  {0, 1, first},
                                  {0, 2, second},
                                  {7, 2, second},
                                  {0, 0, ""},
                                  {0, 3, ""},
                                  {0, 4294967295U, ""}};
  for (const Selection& selection : selections) {
    Host host(candidate, kPages);
    host->SetAllPages(selection.allPages);
    host->SetCurrentPage(selection.page);
    RequireSameCalls(host.Draw(), selection.calls);
  }
  return {};
}

std::string FollowsUnits(const std::filesystem::path& file) {
  const Candidate candidate(file);
  struct Setting {
    const char* value;
    float width;
  };
  for (const Setting& setting :
       {Setting{"1", 25.4F}, {"00", 25.4F}, {"", 25.4F}, {"0", 72.0F}, {nullptr, 25.4F}}) {
    orxframework::SetEnvironment("ORXPrintOpenPSToMM", setting.value);
    float width = 0.0F;
    float height = 0.0F;
    Host(candidate, kShapes)->GetPageSize(&width, &height);
    Require(width == setting.width, std::string("with ORXPrintOpenPSToMM ") +
                                        (setting.value ? setting.value : "unset") +
                                        " a width of 72 is " + std::to_string(width));
  }
  return {};
}

std::string Counts(const std::filesystem::path& file) {
  const Candidate candidate(file);
  struct Document {
    std::string_view text;
    std::string lines;
  };
  for (const Document& document :
       {Document{"1 2 3 4 5 6 curveto 0 0 1 0 90 arc 1 1 lineto 2 2 rlineto closepath ",
                 "Curve count = 1\nLine count = 2\nArc count = 1\nClosed Path count = 1\n"},
        {kImage, "Line count = 1\nImage count = 1\n"},
        {"1 2 add pop ", ""}}) {
    Host host(candidate, document.text);
    Require(host.Count() == document.lines, "the lines of a counting pass differ");
    Require(host.TakeCalls().empty(), "a counting pass draws although no generator was attached");
    Require(host.Count() == document.lines, "a second counting pass counts differently");
  }
  return {};
}

std::string DrawsAgain(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string_view document : {kShapes, kPages, kImage}) {
    Host host(candidate, document);
    const std::string first = host.Draw();
    RequireSameCalls(host.Draw(), first);
    host.Count();
    RequireSameCalls(host.TakeCalls(), first);
    RequireSameCalls(Host(candidate, document).Draw(), first);
  }
  return {};
}

std::string NeedsGenerator(const std::filesystem::path& file) {
  const Candidate candidate(file);
  Host host(candidate, kShapes);
  RequireEqual(host->Generate(nullptr), 0, "Generate(nullptr) answers");
  host.RequireKept();
  RequireSameCalls(host.Draw(), std::string(kShapesCalls));
  RequireEqual(host->Generate(nullptr), 0, "Generate(nullptr) answers");
  RequireSameCalls(host.TakeCalls(), {});
  return {};
}

std::string StandsNoInput(const std::filesystem::path& file) {
  const Candidate candidate(file);
  Host host(candidate, kShapes);  // for its generator
  const auto interpreter = candidate.Make(nullptr);
  ORXListValORXUnicodeString lines;
  float width = 3.0F;
  float height = 4.0F;
  unsigned count = 5;
  ORXUnicodeString label("label");
  RequireEqual(interpreter->Generate(&host.Generator()), 0, "Generate answers");
  RequireEqual(interpreter->CollectStatistics(lines), 1, "CollectStatistics answers");
  RequireEqual(interpreter->GetPageSize(&width, &height), 0, "GetPageSize answers");
  RequireEqual(interpreter->GetPageCount(&count), 0, "GetPageCount answers");
  RequireEqual(interpreter->GetPageLabel(label), 0, "GetPageLabel answers");
  Require(lines.Count() == 0 && host.TakeCalls().empty(), "draws or counts without a document");
  return {};
}

std::string StandsEmptyDocument(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string_view document : {"", "\n", "%!PS", "%%EOF\n1 1 lineto stroke\n"}) {
    Host host(candidate, document);
    unsigned count = 5;
    RequireSameCalls(host.Draw(), {});
    Require(host.Count().empty(), "counts something in an empty document");
    RequireEqual(host->GetPageCount(&count), 0, "GetPageCount answers");
    host.Destroy();
  }
  return {};
}

constexpr PluginCheck kChecks[] = {
    {"shapes", "strokes and fills arrive as the exact calls", &DrawsShapes},
    {"images", "an image arrives with its samples, and what stands behind it", &DrawsImages},
    {"pages", "all pages are drawn, or the one selected", &DrawsPages},
    {"units", "coordinates are millimetres unless ORXPrintOpenPSToMM is 0", &FollowsUnits},
    {"counts", "counting passes give a line for each counter above zero", &Counts},
    {"twice", "passes drawn twice are equal, by one interpreter and by two", &DrawsAgain},
    {"no-generator", "without a generator nothing is drawn and the one before stays",
     &NeedsGenerator},
    {"no-input", "without an input everything is answered and nothing done", &StandsNoInput},
    {"empty", "empty documents draw nothing and go well", &StandsEmptyDocument},
};

}  // namespace

std::span<const PluginCheck> PassChecks() { return kChecks; }

}  // namespace orxprint
