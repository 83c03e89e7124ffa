#include "orxprint/PluginCandidate.h"

#include <algorithm>
#include <utility>

#include "host/ORXListValORXUnicodeString.h"
#include "orxprint/Platform.h"
#include "orxprint/Plugin.h"
#include "orxprint/PluginChecks.h"

namespace orxprint {

namespace {

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

std::string Named(std::string_view line) {
  constexpr std::size_t kShown = 60;
  if (line.empty()) return "missing";
  return std::string(line.substr(0, kShown)) + (line.size() > kShown ? "..." : "");
}

}  // namespace

void Require(bool holds, const std::string& whatIsWrong) {
  if (!holds) throw CheckFailed(whatIsWrong);
}

void RequireSameCalls(const std::string& calls, const std::string& expected) {
  std::string_view is = calls;
  std::string_view should = expected;
  for (int number = 1; !is.empty() || !should.empty(); ++number) {
    const std::string_view line = TakeLine(is);
    const std::string_view wanted = TakeLine(should);
    Require(line == wanted, "call " + std::to_string(number) + " is " + Named(line) +
                                ", to be expected " + Named(wanted));
  }
}

void RequireEqual(long long value, long long expected, const std::string& what) {
  Require(value == expected,
          what + " " + std::to_string(value) + " and not " + std::to_string(expected));
}

Candidate::Candidate(const std::filesystem::path& file) {
  const OpenedLibrary opened = OpenLibrary(file);
  Require(opened.handle, opened.error);
  library = opened.handle;
  using Marker = int (*)();
  const auto marker = reinterpret_cast<Marker>(FindFunction(library, kPluginMarkerName));
  Require(marker && marker() == 1, std::string("no function ") + kPluginMarkerName +
                                       " says that it is a module of the framework");
  factory = ORXFillDictionary::Find(kPluginClassName);
  Require(factory, std::string("loading it registers no class ") + kPluginClassName);
}

void Candidate::Unload() {
  Require(CloseLibrary(library), "the system cannot unload it");
  library = nullptr;
  factory = nullptr;
}

std::unique_ptr<ORXPrintInterpreter> Candidate::Make(PrintInputStream* input) const {
  std::unique_ptr<ORXPrintInterpreter> interpreter(
      static_cast<ORXPrintInterpreter*>(factory(static_cast<void*>(input))));
  Require(interpreter != nullptr, "the factory makes no interpreter");
  return interpreter;
}

Host::Host(const Candidate& candidate, std::string_view document)
    : Host(candidate, std::make_unique<orxframework::MemoryInputStream>(document)) {}

Host::Host(const Candidate& candidate, std::unique_ptr<orxframework::MemoryInputStream> document)
    : Host(candidate, *document) {
  own = std::move(document);
}

Host::Host(const Candidate& candidate, PrintInputStream& source)
    : input(source),
      trace(orxdrawing::TraceGenerator::Samples::Summary,
            [this](std::string_view text) { calls += text; }),
      generator(trace),
      interpreter(candidate.Make(&input)) {}

std::string Host::Draw() {
  const int answer = interpreter->Generate(&generator);
  RequireKept();
  RequireEqual(answer, 1, "Generate answers");
  return TakeCalls();
}

std::string Host::Count() {
  ORXListValORXUnicodeString lines;
  RequireEqual(interpreter->CollectStatistics(lines), 1, "CollectStatistics answers");
  RequireKept();
  std::string text;
  for (std::size_t i = 1; i <= lines.Count(); ++i) text += lines.At(i).ToUtf8() + "\n";
  return text;
}

void Host::Destroy() {
  interpreter.reset();
  input.RequireClosed();
  input.Retire();
  generator.Retire();
  RequireKept();
}

void Host::RequireKept() const {
  for (const orxframework::ViolationLog* log :
       {static_cast<const orxframework::ViolationLog*>(&input),
        static_cast<const orxframework::ViolationLog*>(&generator)}) {
    if (!log->Violations().empty()) throw CheckFailed(log->Violations().front());
  }
}

std::string Host::TakeCalls() {
  trace.Flush();
  return std::exchange(calls, {});
}

const std::string_view kShapes = R"(%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: 0 0 72 144
1 0 0 setrgbcolor 2 setlinewidth 1 setlinecap
/edge {lineto stroke} bind def
0 0 moveto 72 0 lineto 72 36 edge
0 0.5 1 setrgbcolor 0 0 moveto 72 0 lineto 0 72 lineto closepath
18 18 moveto 36 18 lineto 18 36 lineto closepath eofill
gsave 36 72 translate 2 2 scale 0 0 moveto 9 0 lineto 0 9 rlineto fill grestore
0.25 setgray 36 0 moveto 0 0 edge
%%EOF
)";

const std::string_view kShapesCalls = R"(DefineColor(255, 1, 0, 0)
SetLineColor(255)
SetLineCap(12)
SetLineWidth(0.70555556)
MoveTo(0, 0)
LineTo(25.4, 0)
LineTo(25.4, 12.7)
DefineColor(255, 0, 0.5, 1)
SetFillColor(255)
SetFillRule(0)
FillArea(2, [4, 4], [0, 0, 25.4, 0, 0, 25.4, 0, 0, 6.35, 6.35, 12.7, 6.35, 6.35, 12.7, 6.35, 6.35])
DefineColor(255, 0, 0.5, 1)
SetFillColor(255)
SetFillRule(1)
FillArea(1, [3], [12.7, 25.4, 19.05, 25.4, 19.05, 31.75])
DefineColor(255, 0.25, 0.25, 0.25)
SetLineColor(255)
SetLineCap(12)
SetLineWidth(0.70555556)
MoveTo(12.7, 0)
LineTo(0, 0)
)";

const std::string_view kImage = R"(%!PS-Adobe-3.0 EPSF-3.0
gsave 72 36 scale
<< /Width 4 /Height 2 /BitsPerComponent 8 /Decode [0 1]
/DataSource currentfile /ASCII85Decode filter >> image
!'l)7s+!?7~>
0 0 moveto 1 1 lineto stroke grestore
)";

const std::string_view kImageCalls =
    R"(DrawImage(0, 0, 0, {width: 4, height: 2, format: 0, xPixelSize: 6.35, yPixelSize: 6.35, bytes: 8, crc32: 3ab42b30})
DefineColor(255, 0, 0, 0)
SetLineColor(255)
SetLineCap(0)
SetLineWidth(0.1)
MoveTo(0, 0)
LineTo(25.4, 12.7)
)";

const std::string_view kPages = R"(%!PS-Adobe-3.0
%%Pages: 2
%%BoundingBox: (atend)
%%Page: cover 1
%%PageBoundingBox: 0 0 72 144
0 0 moveto 72 0 lineto stroke
showpage
%%Page: back 2
%%PageBoundingBox: 0 0 144 72
0 0 moveto 0 72 lineto stroke
showpage
%%Trailer
%%BoundingBox: 0 0 288 288
%%EOF
)";

const std::string_view kEndless = R"(%!PS
/a {0 0 moveto 9 9 lineto stroke} def
/b {a a a a a a a a a} def /c {b b b b b b b b b} def /d {c c c c c c c c c} def
/f {d d d d d d d d d} def /g {f f f f f f f f f} def /h {g g g g g g g g g} def
/i {h h h h h h h h h} def /j {i i i i i i i i i} def /k {j j j j j j j j j} def
/l {k k k k k k k k k} def /m {l l l l l l l l l} def m
)";

const std::string_view kUnfinished = R"(%!PS
gsave gsave 5 dict begin /self currentdict def currentdict
/ring [0 0] def ring 0 ring put ring 1 << /ring ring >> put
/name /Category defineresource
(text) 1 2.5 [1 [2 {3 four}]] mark true null
currentfile /ASCII85Decode filter
0 0 moveto 1 1 lineto 2 2 3 3 4 4 curveto
{ an open procedure ( with an open string
)";

}  // namespace orxprint
