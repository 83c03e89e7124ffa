#include "orxprint/CheckPage.h"

#include <cmath>
#include <string_view>

#include "drawing/FindingWords.h"
#include "drawing/Text.h"

namespace orxprint {

namespace {

using orxdrawing::EscapeForTerminal;
using orxdrawing::Finding;
using orxdrawing::KindOf;
using orxdrawing::Severity;
using orxdrawing::ShortNumber;

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>What will be lost</title>
<style>
body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem; color: #1c2733; background: #fff; }
h1 { font-size: 1.5rem; margin: 0 0 .3rem; }
p.sum { margin: 0 0 1.2rem; color: #55606c; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .6rem .8rem; border-bottom: 1px solid #dde2e8; }
th { background: #f3f5f8; position: sticky; top: 0; }
th button { font: inherit; font-weight: 600; border: 0; background: none; padding: 0; cursor: pointer; }
img { display: block; max-width: 160px; max-height: 160px; border: 1px solid #dde2e8; background: #fff; }
.file { font-weight: 600; overflow-wrap: anywhere; }
.small { color: #55606c; font-size: .87rem; overflow-wrap: anywhere; }
.tag { display: inline-block; padding: .1rem .55rem; border-radius: 1rem; white-space: nowrap; }
.s0 { background: #e2f3e6; color: #14532b; } .s1 { background: #fdf3d0; color: #6b5000; }
.s2 { background: #ffe3cc; color: #7a3600; } .s3 { background: #fcd9d9; color: #7d1111; }
.s4 { background: #2b2f36; color: #fff; }
ul { margin: 0; padding-left: 1.1rem; } li { margin-bottom: .25rem; }
#tools { display: none; margin: 0 0 1rem; gap: 1rem; }
#tools input, #tools select { font: inherit; padding: .3rem .5rem; }
@media print { body { margin: 0; font-size: 10pt; } #tools { display: none !important; }
  th { position: static; } tr { break-inside: avoid; } img { max-width: 35mm; max-height: 35mm; }
  .tag { border: 1px solid currentColor; } }
</style>
</head>
<body>
)";

constexpr std::string_view kScript = R"(<script>
(function () {
  var tools = document.getElementById('tools'), body = document.querySelector('tbody');
  var rows = Array.prototype.slice.call(body.rows);
  var text = document.getElementById('text'), least = document.getElementById('least');
  tools.style.display = 'flex';
  function filter() {
    var wanted = text.value.toLowerCase();
    rows.forEach(function (row) {
      row.hidden = +row.dataset.severity < +least.value ||
        row.textContent.toLowerCase().indexOf(wanted) < 0;
    });
  }
  text.oninput = least.onchange = filter;
  document.querySelectorAll('th[data-by]').forEach(function (head) {
    var button = document.createElement('button'), way = 1;
    button.textContent = head.textContent;
    head.textContent = '';
    head.appendChild(button);
    button.onclick = function () {
      var by = head.dataset.by;
      rows.sort(function (a, b) {
        var x = a.dataset[by], y = b.dataset[by];
        return way * (by === 'severity' ? y - x : x.localeCompare(y));
      });
      way = -way;
      rows.forEach(function (row) { body.appendChild(row); });
    };
  });
})();
</script>
)";

// Text of documents and names of files in HTML, between quotes too.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : EscapeForTerminal(text)) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string SizeOf(const CheckReport& report) {
  if (!report.box) return "no box";
  const auto millimetres = [](double points) {
    return ShortNumber(std::round(points * 25.4 / 72.0 * 10) / 10);
  };
  return millimetres(report.box->Width()) + " x " + millimetres(report.box->Height()) + " mm";
}

std::string Losses(const CheckReport& report) {
  if (!report.error.empty()) return Escaped(report.error);
  const std::vector<Finding> findings = VisibleFindings(report);
  if (findings.empty()) return "nothing is lost";
  std::string text = "<ul>";
  for (const Finding& finding : findings) {
    text += "<li><b>" + Escaped(finding.name) + "</b> " + std::to_string(finding.count) + " x";
    const std::string places = DescribePlaces(finding, report);
    if (!places.empty()) text += ", " + places;
    text += ": " + Escaped(orxdrawing::MeaningOf(finding)) + "</li>";
  }
  return text + "</ul>";
}

std::string Tools() {
  std::string text =
      "<div id=\"tools\"><label>Show <select id=\"least\"><option value=\"0\">all files</option>";
  for (const Severity severity : {Severity::Style, Severity::Missing, Severity::Wrong}) {
    text += "<option value=\"" + std::to_string(static_cast<int>(severity)) + "\">" +
            std::string(TextOf(severity)) + ", or worse</option>";
  }
  return text +
         "</select></label><label>with <input id=\"text\" placeholder=\"text\"></label></div>\n";
}

}  // namespace

std::string CheckPageRow(const CheckReport& report, Units units) {
  const Severity severity = report.error.empty() ? GravestOf(report) : Severity::Nothing;
  const std::string level = std::to_string(static_cast<int>(severity));
  const std::string_view tag = !report.error.empty()            ? "not readable"
                               : severity == Severity::NoEffect ? "nothing lost"
                                                                : TextOf(severity);
  std::string row = "<tr data-severity=\"" + level + "\" data-file=\"" + Escaped(report.file) +
                    "\" data-producer=\"" + Escaped(report.producer) + "\">\n<td>";
  if (!report.thumbnail.empty()) {
    row += "<img alt=\"\" src=\"data:image/png;base64," + report.thumbnail + "\">";
  }
  return row + "</td>\n<td><div class=\"file\">" + Escaped(report.file) +
         "</div><div class=\"small\">" + SizeOf(report) + "<br>" +
         orxdrawing::DescribeDrawing(report.summary, units.MillimetresPerUnit()) +
         "</div></td>\n<td><span class=\"tag s" + level + "\">" + std::string(tag) +
         "</span></td>\n<td>" + Losses(report) + "</td>\n<td class=\"small\">" +
         Escaped(report.producer) + "</td>\n</tr>\n";
}

std::string CheckPage(const std::string& rows, std::size_t files, std::size_t lossy) {
  std::string page(kHead);
  page += "<h1>What will be lost</h1>\n<p class=\"sum\">" + std::to_string(files) +
          (files == 1 ? " file, " : " files, ") + std::to_string(lossy) +
          " with losses or differences</p>\n" + Tools() +
          "<table>\n<thead><tr><th>Picture</th><th data-by=\"file\">File</th>"
          "<th data-by=\"severity\">Severity</th><th>What is lost or differs</th>"
          "<th data-by=\"producer\">Made by</th></tr></thead>\n<tbody>\n";
  return page + rows + "</tbody>\n</table>\n" + std::string(kScript) + "</body>\n</html>\n";
}

}  // namespace orxprint
