// Whole drawing passes, from a document in memory to a generator that takes the calls and drops
// them.

#include <benchmark/benchmark.h>

#include "bench/Documents.h"
#include "framework/InputStreams.h"
#include "host/PrintGenerator.h"
#include "plugin/ORXPrintEPSInterpreter.h"

namespace {

class DroppingGenerator final : public PrintGenerator {
public:
  int NewPage() override { return ++calls; }
  int MoveTo(float, float) override { return ++calls; }
  int LineTo(float, float) override { return ++calls; }
  int FillArea(int, int*, float*) override { return ++calls; }
  int DrawImage(float, float, int, ORXPixelImage*) override { return ++calls; }
  int DefineColor(int, float, float, float) override { return ++calls; }
  int SetLineColor(int) override { return ++calls; }
  int SetFillColor(int) override { return ++calls; }
  int SetLineWidth(float) override { return ++calls; }
  int SetLineCap(int) override { return ++calls; }
  int SetFillRule(int) override { return ++calls; }

  int calls = 0;
};

void RunPasses(benchmark::State& state, const std::string& document) {
  int calls = 0;
  for (auto _ : state) {
    orxframework::MemoryInputStream input{std::string_view(document)};
    DroppingGenerator generator;
    orxeps::ORXPrintEPSInterpreter interpreter(&input);
    benchmark::DoNotOptimize(interpreter.Generate(&generator));
    calls = generator.calls;
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(document.size()) * state.iterations());
  state.counters["calls"] = calls;
}

void PlainLines(benchmark::State& state) {
  RunPasses(state, orxbench::PlainLines(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(PlainLines)->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void PrologLines(benchmark::State& state) {
  RunPasses(state, orxbench::PrologLines(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(PrologLines)->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void Curves(benchmark::State& state) {
  RunPasses(state, orxbench::Curves(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(Curves)->Arg(10'000)->Unit(benchmark::kMillisecond);

void Circles(benchmark::State& state) {
  RunPasses(state, orxbench::Circles(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(Circles)->Arg(10'000)->Unit(benchmark::kMillisecond);

// The second argument is how many dictionaries every look-up passes.
void Arithmetic(benchmark::State& state) {
  RunPasses(state, orxbench::Arithmetic(static_cast<std::size_t>(state.range(0)),
                                        static_cast<std::size_t>(state.range(1))));
}
BENCHMARK(Arithmetic)->Args({100'000, 0})->Args({100'000, 20})->Unit(benchmark::kMillisecond);

void GreyImage(benchmark::State& state) {
  RunPasses(state, orxbench::GreyImage(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(GreyImage)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Arg(80'000'000)
    ->Unit(benchmark::kMillisecond);

void EncryptedSection(benchmark::State& state) {
  RunPasses(state, orxbench::EncryptedSection(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(EncryptedSection)->Arg(5'000'000)->Arg(50'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
