#include "orxprint/CheckReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "drawing/FindingWords.h"
#include "drawing/Text.h"

namespace orxprint {

namespace {

using orxdrawing::DrawingSummary;
using orxdrawing::EscapeForTerminal;
using orxdrawing::Finding;
using orxdrawing::KindOf;
using orxdrawing::LossPlace;
using orxdrawing::Severity;
using orxdrawing::SourceLine;
using Json = nlohmann::ordered_json;

constexpr int kJsonVersion = 1;
constexpr std::size_t kLinesShown = 3;

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size(), width), ' ');
  return text;
}

std::string Counted(std::uint64_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

Json PlaceForPrograms(std::uint64_t place, const CheckReport& report) {
  Json object = {{"byte", report.offset + place}};
  const auto found = report.lines.find(place);
  if (found == report.lines.end()) return object;
  object["line"] = found->second.line;
  object["column"] = found->second.column;
  return object;
}

Json FindingForPrograms(const Finding& finding, const CheckReport& report) {
  const orxdrawing::LossKind& kind = KindOf(finding.loss);
  Json places = Json::array();
  for (const LossPlace& place : finding.places) {
    Json object = PlaceForPrograms(place.token, report);
    if (place.definition != LossPlace::kNoPlace) {
      object["definition"] = PlaceForPrograms(place.definition, report);
    }
    places.push_back(std::move(object));
  }
  Json object = {{"kind", kind.name},          {"severity", TextOf(kind.severity)},
                 {"group", kind.group},        {"name", finding.name},
                 {"count", finding.count},     {"meaning", orxdrawing::MeaningOf(finding)},
                 {"places", std::move(places)}};
  if (finding.ratio > 0) object["ratio"] = finding.ratio;
  if (!finding.detail.empty()) object["detail"] = finding.detail;
  return object;
}

Json ExtentForPrograms(const DrawingSummary& summary, Units units) {
  if (!summary.hasExtent) return nullptr;
  const double scale = units.MillimetresPerUnit();
  return {{"left", summary.extent.left * scale},
          {"bottom", summary.extent.bottom * scale},
          {"right", summary.extent.right * scale},
          {"top", summary.extent.top * scale}};
}

}  // namespace

std::vector<Finding> VisibleFindings(const CheckReport& report) {
  std::vector<Finding> visible;
  std::ranges::copy_if(report.findings, std::back_inserter(visible), orxdrawing::IsVisible);
  return visible;
}

Severity GravestOf(const CheckReport& report) {
  return report.findings.empty() ? Severity::NoEffect
                                 : KindOf(report.findings.front().loss).severity;
}

std::string DescribePlaces(const Finding& finding, const CheckReport& report) {
  std::vector<std::uint64_t> lines;
  for (const LossPlace& place : finding.places) {
    const auto found = report.lines.find(place.token);
    if (found == report.lines.end()) continue;
    if (lines.empty() || lines.back() != found->second.line) lines.push_back(found->second.line);
  }
  if (lines.empty()) return "";
  std::string text = lines.size() == 1 ? "line " : "lines ";
  for (std::size_t i = 0; i < std::min(lines.size(), kLinesShown); ++i) {
    text += (i > 0 ? ", " : "") + std::to_string(lines[i]);
  }
  if (lines.size() > kLinesShown) text += ", ...";
  const auto definition = report.lines.find(finding.places.front().definition);
  if (definition == report.lines.end()) return text;
  return text + " (defined in " + std::to_string(definition->second.line) + ")";
}

std::vector<std::string> FindingLines(const CheckReport& report) {
  std::vector<std::string> lines;
  for (const Finding& finding : VisibleFindings(report)) {
    const std::string count = std::to_string(finding.count) + " x";
    lines.push_back(Padded(std::string(KindOf(finding.loss).group), 12) +
                    Padded(EscapeForTerminal(finding.name), 16) +
                    std::string(count.size() < 6 ? 6 - count.size() : 0, ' ') + count + "  " +
                    Padded(DescribePlaces(finding, report), 24) + "  " +
                    EscapeForTerminal(orxdrawing::MeaningOf(finding)));
  }
  return lines;
}

std::string ForPeople(const CheckReport& report, Units units) {
  const std::vector<std::string> lines = FindingLines(report);
  std::string text = EscapeForTerminal(report.file) + ": ";
  if (lines.empty()) return text + "nothing is lost\n";
  text += Counted(lines.size(), "kind") + " of loss\n";
  for (const std::string& line : lines) text += "  " + line + "\n";
  return text +
         "drawing: " + orxdrawing::DescribeDrawing(report.summary, units.MillimetresPerUnit()) +
         "\n";
}

Json ForPrograms(const CheckReport& report, Units units) {
  Json findings = Json::array();
  for (const Finding& finding : report.findings) {
    findings.push_back(FindingForPrograms(finding, report));
  }
  const DrawingSummary& summary = report.summary;
  Json object = {{"version", kJsonVersion},
                 {"file", report.file},
                 {"producer", report.producer},
                 {"severity", TextOf(GravestOf(report))},
                 {"findings", std::move(findings)},
                 {"drawing",
                  {{"strokes", summary.strokes},
                   {"fills", summary.fills},
                   {"images", summary.images},
                   {"pages", summary.pages},
                   {"extent", ExtentForPrograms(summary, units)}}}};
  if (report.stop) object["stopped"] = Describe(*report.stop);
  if (const auto& met = report.limitMet) {
    object["limitMet"] = {{"error", met->error}, {"byte", met->position}};
  }
  if (!report.error.empty()) object["error"] = report.error;
  return object;
}

}  // namespace orxprint
