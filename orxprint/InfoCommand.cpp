// The command info: what the interpreter says about documents, for people or for programs.
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>
#include <numeric>
#include <system_error>

#include "drawing/Text.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/PageQuestions.h"

namespace orxprint {

namespace {

using orxdrawing::AppendFloat;
using orxdrawing::EscapeForTerminal;
using orxdrawing::ShortNumber;
using Json = nlohmann::ordered_json;

constexpr int kJsonVersion = 1;

// The counters of a counting pass: how the report and how programs call them.
struct CounterName {
  std::string_view inReport;
  const char* inJson;
};
constexpr std::array<CounterName, 5> kCounters = {{{"Curve count", "curves"},
                                                   {"Line count", "lines"},
                                                   {"Arc count", "arcs"},
                                                   {"Image count", "images"},
                                                   {"Closed Path count", "closedPaths"}}};
using Statistics = std::array<int, kCounters.size()>;

struct Description {
  std::string file;
  PageAnswers answers;
  bool hasPageBoxes = false;
  std::optional<Statistics> statistics;
  std::optional<Stop> stop;
  std::string error;  // not empty: nothing else is known
};

// A report line reads "NAME = NUMBER"; counters without a line are 0.
Statistics ReadStatistics(const ORXListValORXUnicodeString& lines) {
  constexpr std::string_view kEquals = " = ";
  Statistics statistics{};
  for (std::size_t position = 1; position <= lines.Count(); ++position) {
    const std::string_view line = lines.At(position).Bytes().View();
    const std::size_t equals = line.find(kEquals);
    if (equals == std::string_view::npos) continue;
    for (std::size_t i = 0; i < kCounters.size(); ++i) {
      if (kCounters[i].inReport != line.substr(0, equals)) continue;
      std::from_chars(line.data() + equals + kEquals.size(), line.data() + line.size(),
                      statistics[i]);
    }
  }
  return statistics;
}

void CollectStatistics(const Plugin& plugin, const Document& document, const Limits& limits,
                       Description& description) {
  const auto control = std::make_shared<RunControl>();
  const auto result = std::make_shared<std::optional<Statistics>>();
  description.stop = UseInterpreter(plugin, document, Reading::WholeDocument, limits, control,
                                    [result](ORXPrintInterpreter& interpreter) {
                                      ORXListValORXUnicodeString lines;
                                      interpreter.CollectStatistics(lines);
                                      *result = ReadStatistics(lines);
                                    });
  if (!control->WasLeft()) description.statistics = *result;
}

// Every question about a page is a pass over the comment lines; many of those leave room for fewer
// questions.
std::uint32_t PagesToAskAbout(std::uint32_t count, std::size_t commentBytes) {
  constexpr std::size_t kMostBytesToRead = std::size_t{256} << 20;
  const std::size_t affordable = kMostBytesToRead / std::max<std::size_t>(commentBytes, 1);
  return static_cast<std::uint32_t>(std::min<std::size_t>({count, kMostAskedPages, affordable}));
}

Description Describe(const Plugin& plugin, const Document& document, const Limits& limits) {
  Description description;
  description.file = document.Name();
  const DocumentComments& comments = document.Comments();
  description.hasPageBoxes = comments.MentionPageBoxes();
  const std::uint32_t count = AskAboutDocument(plugin, document, limits).count.value_or(0);
  std::vector<std::uint32_t> pages(PagesToAskAbout(count, comments.lines.size()));
  std::iota(pages.begin(), pages.end(), 1U);
  description.answers = AskAboutPages(plugin, document, limits, std::move(pages));
  CollectStatistics(plugin, document, limits, description);
  return description;
}

// The number that the shortest text of a float stands for, so that it prints as that text.
double AsWritten(float value) {
  std::string text;
  AppendFloat(text, value);
  return std::strtod(text.c_str(), nullptr);
}

double Millimetres(float value, Units units) {
  if (units.pointsPerUnit != 1.0) return AsWritten(value);
  return AsWritten(static_cast<float>(value * units.MillimetresPerUnit()));
}

Json SizeForPrograms(const std::optional<PageSize>& size, Units units) {
  if (!size) return nullptr;
  return {{"width", Millimetres(size->width, units)}, {"height", Millimetres(size->height, units)}};
}

Json StatisticsForPrograms(const std::optional<Statistics>& statistics) {
  if (!statistics) return nullptr;
  Json object;
  for (std::size_t i = 0; i < kCounters.size(); ++i) object[kCounters[i].inJson] = (*statistics)[i];
  return object;
}

Json ForPrograms(const Description& description, Units units) {
  const PageAnswers& answers = description.answers;
  Json labels = Json::array();
  Json sizes = Json::array();
  for (const PageAnswers::Page& page : answers.pages) {
    labels.push_back(page.label ? Json(*page.label) : Json());
    sizes.push_back(SizeForPrograms(page.size, units));
  }
  Json object = {{"version", kJsonVersion},
                 {"file", description.file},
                 {"pages", answers.count ? Json(*answers.count) : Json()},
                 {"pageSize", SizeForPrograms(answers.size, units)},
                 {"labels", std::move(labels)},
                 {"pageSizes", std::move(sizes)},
                 {"statistics", StatisticsForPrograms(description.statistics)}};
  if (answers.count.value_or(0) > answers.pages.size()) object["pagesAsked"] = answers.pages.size();
  if (description.stop) object["stopped"] = orxprint::Describe(*description.stop);
  if (!description.error.empty()) object["error"] = description.error;
  return object;
}

std::string SizeForPeople(const std::optional<PageSize>& size, Units units) {
  if (!size) return "not stated";
  const auto points = [&](float value) {
    return ShortNumber(std::round(value * units.pointsPerUnit * 1000) / 1000);
  };
  return ShortNumber(Millimetres(size->width, units)) + " x " +
         ShortNumber(Millimetres(size->height, units)) + " mm (" + points(size->width) + " x " +
         points(size->height) + " pt)";
}

std::string ForPeople(const Description& description, Units units) {
  const PageAnswers& answers = description.answers;
  const std::uint32_t count = answers.count.value_or(0);
  std::string text = "File: " + EscapeForTerminal(description.file) + "\n";
  text += "Pages: " + (answers.count ? std::to_string(count) : "not stated") + "\n";
  text += "Page size: " + SizeForPeople(answers.size, units) + "\n";
  for (std::size_t i = 0; i < answers.pages.size(); ++i) {
    const PageAnswers::Page& page = answers.pages[i];
    const std::string prefix = "Page " + std::to_string(i + 1);
    text += prefix + " label: " + (page.label ? EscapeForTerminal(*page.label) : "none") + "\n";
    if (!description.hasPageBoxes) continue;
    text += prefix + " size: " + SizeForPeople(page.size, units) + "\n";
  }
  if (count > answers.pages.size()) {
    text += "Pages asked about: " + std::to_string(answers.pages.size()) + "\n";
  }
  for (std::size_t i = 0; description.statistics && i < kCounters.size(); ++i) {
    text += std::string(kCounters[i].inReport) + ": " +
            std::to_string((*description.statistics)[i]) + "\n";
  }
  return text;
}

Status DescribeFile(const Plugin& plugin, const CommonOptions& common, Description& description) {
  const std::string file = description.file;
  const Outcome outcome = Attempt(file, [&] {
    const Limits limits = Limits::StartingNow(common.timeLimit);
    description = Describe(plugin, OpenDocument(file, limits), limits);
    if (!description.stop) return Status::Done;
    Tell(file, Describe(*description.stop));
    return Status::LimitReached;
  });
  description.error = outcome.problem;
  return outcome.status;
}

Status Print(std::string_view text) {
  const bool isWritten =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (isWritten) return Status::Done;
  Tell("cannot write standard output: " + std::generic_category().message(errno));
  return Status::FileFailed;
}

}  // namespace

Status Info(const Plugin& plugin, const CommonOptions& common, const InfoOptions& options) {
  const Units units = Units::FromEnvironment();
  Status gravest = Status::Done;
  Json objects = Json::array();
  bool isFirst = true;
  for (const std::string& file : options.files) {
    Description description;
    description.file = file;
    gravest = Gravest(gravest, DescribeFile(plugin, common, description));
    if (options.json) {
      objects.push_back(ForPrograms(description, units));
    } else if (description.error.empty()) {
      const std::string separator = isFirst ? "" : "\n";
      gravest = Gravest(gravest, Print(separator + ForPeople(description, units)));
      isFirst = false;
    }
  }
  if (!options.json) return gravest;
  // Names of files may hold bytes that are not UTF-8.
  const std::string text = objects.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  return Gravest(gravest, Print(text));
}

}  // namespace orxprint
