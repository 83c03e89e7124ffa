// What info knows of a document: what the library answers, what the comments say, what was drawn,
// and what is suspicious about it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/DrawnExtents.h"
#include "orxprint/Session.h"
#include "orxprint/Statements.h"

namespace orxprint {

// The counters of a counting pass: how the report and how programs call them.
struct CounterName {
  std::string_view inReport;
  const char* inJson;
};
inline constexpr std::array<CounterName, 5> kCounters = {{{"Curve count", "curves"},
                                                          {"Line count", "lines"},
                                                          {"Arc count", "arcs"},
                                                          {"Image count", "images"},
                                                          {"Closed Path count", "closedPaths"}}};
using Statistics = std::array<int, kCounters.size()>;

// The names stay; docs/info.schema.json lists them.
struct InfoWarning {
  std::string_view name;
  std::string text;
  std::uint64_t line = 0;  // 0: of no line
};

struct Description {
  std::string file;
  bool isQuick = false;
  PageAnswers answers;
  std::string_view preview;  // a kind; empty: none
  Statements statements;
  // The first box of each page and comment that has an area, by its place among the boxes.
  std::map<std::pair<std::uint32_t, std::string_view>, std::size_t> firstBoxes;
  std::uint32_t pageComments = 0;
  std::optional<Statistics> statistics;
  std::shared_ptr<const orxdrawing::DrawnExtents> drawn;  // null: nothing was run
  std::vector<InfoWarning> warnings;
  std::optional<Stop> stop;
  std::optional<ORXPassEnd> limitMet;
  std::string error;  // not empty: nothing else is known

  [[nodiscard]] bool HasPageBoxes() const;
  // The box of that comment with an area: of a page, or of the document for page 0. Null if none.
  [[nodiscard]] const StatedBox* BoxOf(std::string_view comment, std::uint32_t page) const;
  // The box that a size of the library comes from; null where none has that size.
  [[nodiscard]] const StatedBox* SourceOf(const PageSize& size, std::uint32_t page,
                                          Units units) const;
};

// Runs no PostScript when it is to be quick.
[[nodiscard]] Description DescribeDocument(Session& session, bool isQuick);

}  // namespace orxprint
