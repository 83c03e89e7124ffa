// Whole drawing passes, from a document in memory to a generator that only counts, for every kind
// of document at two sizes: the time of a token, point, pixel or byte must not grow with the
// document.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "bench/CountingGenerator.h"
#include "bench/Documents.h"
#include "framework/InputStreams.h"
#include "plugin/ORXPrintEPSInterpreter.h"

namespace {

using orxbench::CountingGenerator;
using orxbench::Kind;
using orxbench::Unit;

constexpr std::int64_t kMegabyte = 1'000'000;

const std::string& DocumentOf(const Kind& kind, std::int64_t megabytes) {
  static std::map<std::pair<std::string_view, std::int64_t>, std::string> documents;
  std::string& document = documents[{kind.name, megabytes}];
  if (document.empty()) document = kind.make(static_cast<std::size_t>(megabytes * kMegabyte));
  return document;
}

std::pair<const char*, std::int64_t> UnitsOf(Unit unit, const std::string& document,
                                             const CountingGenerator& drawn) {
  switch (unit) {
    case Unit::Token:
      return {"s/token", static_cast<std::int64_t>(orxbench::CountTokens(document))};
    case Unit::Point:
      return {"s/point", drawn.points};
    case Unit::Pixel:
      return {"s/pixel", drawn.pixels};
    case Unit::Byte:
      break;
  }
  return {"s/byte", static_cast<std::int64_t>(document.size())};
}

void RunPasses(benchmark::State& state, const Kind& kind) {
  const std::string& document = DocumentOf(kind, state.range(0));
  CountingGenerator drawn;
  for (auto _ : state) {
    drawn = {};
    orxframework::MemoryInputStream input{std::string_view(document)};
    orxeps::ORXPrintEPSInterpreter interpreter(&input);
    benchmark::DoNotOptimize(interpreter.Generate(&drawn));
  }
  const auto [name, units] = UnitsOf(kind.unit, document, drawn);
  if (units == 0) state.SkipWithError("nothing was drawn");
  state.counters[name] =
      benchmark::Counter(static_cast<double>(units), benchmark::Counter::kIsIterationInvariantRate |
                                                         benchmark::Counter::kInvert);
  state.SetBytesProcessed(static_cast<std::int64_t>(document.size()) * state.iterations());
}

[[maybe_unused]] const bool areRegistered = [] {
  for (const Kind& kind : orxbench::Kinds()) {
    benchmark::RegisterBenchmark(std::string(kind.name).c_str(),
                                 [&kind](benchmark::State& state) { RunPasses(state, kind); })
        ->ArgName("MB")
        ->Arg(1)
        ->Arg(10)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
