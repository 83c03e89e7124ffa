#include "plugin/SystemOperators.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "graphics/GraphicsOperators.h"
#include "image/ImageOperators.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "ps/LanguageOperators.h"

namespace orxeps {

namespace {

using Owner = ORXPrintEPSInterpreter;

constexpr std::size_t kOperatorCount = std::size(kLanguageOperators<Owner>) +
                                       std::size(kGraphicsOperators<Owner>) +
                                       std::size(kImageOperators<Owner>);

constexpr auto JoinLists() {
  std::array<OperatorRow, kOperatorCount> rows;
  auto* next = std::ranges::copy(kLanguageOperators<Owner>, rows.begin()).out;
  next = std::ranges::copy(kGraphicsOperators<Owner>, next).out;
  std::ranges::copy(kImageOperators<Owner>, next);
  std::ranges::sort(rows, {}, &OperatorRow::position);
  return rows;
}

constexpr std::array<OperatorRow, kOperatorCount> kRows = JoinLists();

template <typename Value>
constexpr bool AreUnique(Value OperatorTraits::*field, Value none) {
  auto rows = kRows;
  std::ranges::sort(rows, {}, field);
  return std::ranges::adjacent_find(rows, [&](const OperatorRow& a, const OperatorRow& b) {
           return a.*field == b.*field && a.*field != none;
         }) == rows.end();
}

static_assert(kOperatorCount == 93);
static_assert(kRows.front().position == 1 && kRows.back().position == kOperatorCount);
static_assert(AreUnique(&OperatorTraits::position, 0));
static_assert(AreUnique(&OperatorTraits::name, std::string_view()));
static_assert(AreUnique(&OperatorTraits::systemNameIndex, kNoIndex));
// A handler each: without one Row does not compile.
static_assert(std::ranges::all_of(kRows, [](const OperatorRow& row) {
  return !row.name.empty() && row.systemNameIndex < 256 && row.counter < kCounterCount;
}));

constexpr OperatorTable kTable{kRows};

}  // namespace

const OperatorTable& SystemOperators() noexcept { return kTable; }

}  // namespace orxeps
