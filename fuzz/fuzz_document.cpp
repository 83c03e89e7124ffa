// Whole documents. Two bytes in front of the document say how it is run; they are digits and
// letters in the seeds:
//   the first: 1 one page selected, 2 a counting pass before, 4 PostScript units, 8 a second pass
//   the second: the selected page
#include <algorithm>
#include <array>
#include <memory>

#include "framework/Environment.h"
#include "fuzz/FuzzHost.h"
#include "plugin/ORXPrintEPSInterpreter.h"

namespace {

enum Mode : unsigned { kOnePage = 1, kCountFirst = 2, kPoints = 4, kTwoPasses = 8 };

// Objects can keep each other alive in a circle only if a container is stored into after it was
// made. Where no operator for that is named, not a single object may be left.
bool MayMakeCircles(std::string_view document) {
  const auto names = [document](std::string_view text) {
    return document.find(text) != std::string_view::npos;
  };
  constexpr char kSystemNameToken = '\x92';
  if (document.find(kSystemNameToken) != std::string_view::npos) return true;
  constexpr std::array<std::string_view, 4> kStoring = {"put", "astore", "copy", "defineresource"};
  if (std::ranges::any_of(kStoring, names)) return true;
  constexpr std::array<std::string_view, 4> kReachingDictionaries = {"dict", "where", "<", ">"};
  return names("def") && std::ranges::any_of(kReachingDictionaries, names);
}

void Draw(orxeps::ORXPrintEPSInterpreter& interpreter, orxfuzz::FuzzHost& host) {
  orxfuzz::Require(interpreter.Generate(&host.generator) == 1, "a drawing pass answers 1");
}

void Count(orxeps::ORXPrintEPSInterpreter& interpreter) {
  ORXListValORXUnicodeString lines;
  orxfuzz::Require(interpreter.CollectStatistics(lines) == 1, "a counting pass answers 1");
  orxfuzz::Require(lines.Count() <= 5, "there are five counters");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orxfuzz::InputBytes bytes({data, size});
  const unsigned mode = bytes.Byte();
  const unsigned page = bytes.Byte() & 7U;
  orxframework::SetEnvironment("ORXPrintOpenPSToMM", mode & kPoints ? "0" : "1");

  orxfuzz::FuzzHost host(bytes.Text());
  auto interpreter = std::make_unique<orxeps::ORXPrintEPSInterpreter>(&host.input);
  if (mode & kOnePage) {
    interpreter->SetAllPages(0);
    interpreter->SetCurrentPage(page);
  }
  if (mode & kCountFirst) Count(*interpreter);
  Draw(*interpreter, host);
  if (mode & kTwoPasses) Draw(*interpreter, host);
  interpreter->ReleaseObjects();
  orxfuzz::Require(interpreter->heap.LiveCount() == 0 || MayMakeCircles(bytes.Text()),
                   "no object is left behind");
  interpreter.reset();
  host.RequireNoViolations();
  return 0;
}
