// The command info: what the interpreter says about documents, for people or for programs.
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <numeric>

#include "drawing/Text.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/PageAnswers.h"
#include "orxprint/Session.h"
#include "orxprint/StandardOutput.h"

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

std::vector<std::uint32_t> PagesToAskAbout(const PageAnswers& answers) {
  std::vector<std::uint32_t> pages(std::min(answers.count.value_or(0), kMostAskedPages));
  std::iota(pages.begin(), pages.end(), 1U);
  return pages;
}

Description DescribeDocument(const Session& session) {
  Description description;
  description.file = session.Name();
  description.hasPageBoxes = session.Source().Comments().MentionPageBoxes();
  description.answers = session.Ask(PagesToAskAbout);
  const Session::Counts counts = session.Count();
  description.stop = counts.stop;
  if (counts.lines) description.statistics = ReadStatistics(*counts.lines);
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
  if (description.stop) object["stopped"] = Describe(*description.stop);
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
    description = DescribeDocument(Session(plugin, common, file));
    if (!description.stop) return Status::Done;
    Tell(file, Describe(*description.stop));
    return Status::LimitReached;
  });
  description.error = outcome.problem;
  return outcome.status;
}

Status Print(std::string_view text, const CommonOptions& common) {
  StandardOutput output(DeadlineIn(common.timeLimit));
  if (output.Write(text)) return Status::Done;
  Tell("cannot write standard output: " + ErrorText(output.Error()));
  return output.Error() == ETIMEDOUT ? Status::LimitReached : Status::FileFailed;
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
      const Status printed = Print(separator + ForPeople(description, units), common);
      // Nobody reads what the other files would say either.
      if (printed != Status::Done) return Gravest(gravest, printed);
      isFirst = false;
    }
  }
  if (!options.json) return gravest;
  // Names of files may hold bytes that are not UTF-8.
  const std::string text = objects.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  return Gravest(gravest, Print(text, common));
}

}  // namespace orxprint
