// What the command check says of one document, for people and for programs.
//
// A report is a value, made when the document's run is over; it borrows nothing of the run.
#pragma once

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "drawing/Findings.h"
#include "drawing/SourceLines.h"
#include "orxprint/Session.h"

namespace orxprint {

struct CheckReport {
  std::string file;
  std::string producer;    // as the document names it
  std::optional<Box> box;  // in points
  orxdrawing::DrawingSummary summary;
  std::vector<orxdrawing::Finding> findings;  // the gravest first
  std::map<std::uint64_t, orxdrawing::SourceLine> lines;
  std::uint64_t offset = 0;  // of the PostScript section in the file
  std::optional<Stop> stop;
  std::optional<ORXPassEnd> limitMet;
  std::string error;      // not empty: nothing else is known
  std::string thumbnail;  // PNG in base 64, where one was asked for
};

// The findings that can be seen in the picture, the first of all.
[[nodiscard]] std::vector<orxdrawing::Finding> VisibleFindings(const CheckReport& report);
// The gravest of them; without any, NoEffect.
[[nodiscard]] orxdrawing::Severity GravestOf(const CheckReport& report);

// One line where nothing is lost, a table and a summary otherwise; escaped, with the last line end.
[[nodiscard]] std::string ForPeople(const CheckReport& report, Units units);
// The table alone, one line for each finding that can be seen.
[[nodiscard]] std::vector<std::string> FindingLines(const CheckReport& report);
// "line 88", "lines 310, 318, ...", and where the procedure that ran first was defined; empty where
// there is no place.
[[nodiscard]] std::string DescribePlaces(const orxdrawing::Finding& finding,
                                         const CheckReport& report);

[[nodiscard]] nlohmann::ordered_json ForPrograms(const CheckReport& report, Units units);

}  // namespace orxprint
