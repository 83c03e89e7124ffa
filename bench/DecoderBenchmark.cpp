// The framework's decoders alone, each over data that its own encoder here makes. Speed is told in
// bytes of what is decoded: text, runs, or codes.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/Encodings.h"
#include "host/ORXRasterDecoders.h"
#include "tests/framework/G4Encoder.h"

namespace {

using Decoder = int (*)(const unsigned char*, unsigned, unsigned char*&, unsigned&, int) noexcept;

void RunTextDecoder(benchmark::State& state, Decoder decoder, const std::string& encoded) {
  for (auto _ : state) {
    unsigned char* out = nullptr;
    unsigned length = 0;
    const int status = decoder(reinterpret_cast<const unsigned char*>(encoded.data()),
                               static_cast<unsigned>(encoded.size()), out, length, 0);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(out, &std::free);
    if (status < 0) state.SkipWithError("refused");
    benchmark::DoNotOptimize(out);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(encoded.size()) * state.iterations());
}

std::string Noise(std::size_t count) {
  std::mt19937 random(1);
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

// Text in one piece, as the filter hands it on, and in lines, as it stands in documents.
void Base85Text(benchmark::State& state) {
  std::string text = orxbench::EncodeBase85(Noise(4'000'000));
  if (state.range(0) == 0) std::erase(text, '\n');
  RunTextDecoder(state, ASCII85Decode, text);
}
BENCHMARK(Base85Text)->ArgName("lines")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Runs of both kinds in turn, up to as long as the argument says.
void RunLengths(benchmark::State& state) {
  std::mt19937 random(1);
  const auto longest = static_cast<unsigned>(state.range(0));
  std::string runs;
  while (runs.size() < 1'000'000) {
    const unsigned length = 2 + random() % (longest - 1);
    if (random() % 2 == 0) {
      runs.append(1, static_cast<char>(257 - length)).append(1, static_cast<char>(random()));
    } else {
      runs.append(1, static_cast<char>(length - 1)).append(length, 'x');
    }
  }
  RunTextDecoder(state, RunLengthDecode, runs);
}
BENCHMARK(RunLengths)->ArgName("longest")->Arg(8)->Arg(128)->Unit(benchmark::kMillisecond);

// A page whose changes move a little from line to line, now and then with new ones, at about the
// distance that the argument says. Short distances are as in halftones, long ones as in text.
orxframework::ccitt::Page Drawing(int columns, int rows, unsigned distance) {
  std::mt19937 random(1);
  orxframework::ccitt::Page page;
  for (int row = 0; row < rows; ++row) {
    std::vector<bool> line(static_cast<std::size_t>(columns));
    bool black = false;
    for (std::size_t x = 0; x < line.size(); ++x) {
      const bool copies = row % 16 != 0 && random() % distance != 0;
      if (!copies && random() % distance == 0) black = !black;
      line[x] = copies ? page.back()[x] : black;
    }
    page.push_back(std::move(line));
  }
  return page;
}

void FaxPage(benchmark::State& state) {
  constexpr int kColumns = 2480;
  constexpr int kRows = 800;
  orxframework::ccitt::G4Encoder encoder([] { return false; });
  const auto codes = orxframework::ccitt::PackBits(
      encoder.Encode(Drawing(kColumns, kRows, static_cast<unsigned>(state.range(0)))));
  std::vector<unsigned char> bitmap(std::size_t{(kColumns + 7) / 8} * kRows);
  int size[] = {kColumns, kRows};
  for (auto _ : state) {
    int rowCount = 0;
    int errorCount = 0;
    if (CCITT_G4_dec(codes.data(), static_cast<int>(codes.size()), size, bitmap.data(), rowCount,
                     errorCount) != 0) {
      state.SkipWithError("refused");
    }
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(codes.size()) * state.iterations());
}
BENCHMARK(FaxPage)->ArgName("distance")->Arg(4)->Arg(40)->Unit(benchmark::kMillisecond);

}  // namespace
