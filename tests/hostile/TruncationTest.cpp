// Documents cut off anywhere, as transfers leave them: every prefix of the small documents here and
// of the fuzzers' seeds, and evenly spread prefixes of the samples.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "ps/MemoryPoisoning.h"
#include "tests/hostile/Documents.h"
#include "tests/hostile/HostileRunner.h"

namespace orxtests {
namespace {

// The bytes that all prefixes of one document together may have: enough for every length of all
// samples but two that are mostly image data. The sanitizers make this slow.
#if defined(ORXEPS_HAS_ASAN)
constexpr std::size_t kBytesPerDocument = std::size_t{1} << 20;
#else
constexpr std::size_t kBytesPerDocument = std::size_t{56} << 20;
#endif

// Each prefix lies in memory of its own size, so that reading beyond its end is seen.
void RunPrefixes(const std::string& document, std::size_t objectsAllowed) {
  const std::size_t stride = 1 + document.size() * document.size() / 2 / kBytesPerDocument;
  for (std::size_t length = 0; length <= document.size(); length += stride) {
    const std::vector<char> prefix(document.begin(),
                                   document.begin() + static_cast<std::ptrdiff_t>(length));
    const HostileRun run = RunPasses({prefix.data(), prefix.size()}, Passes::Drawing);
    ASSERT_LE(run.objectsLeft, objectsAllowed) << "at " << length << " of:\n" << document;
    ASSERT_EQ(run.violation, "") << "at " << length << " of:\n" << document;
  }
}

std::vector<std::filesystem::path> FilesIn(const std::string& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

std::string BytesOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Truncation, OfEveryKindOfDocument) {
  OnSmallStack([] {
    for (const std::string& document : TenDocuments()) RunPrefixes(document, 0);
  });
}

TEST(Truncation, OfFuzzerSeeds) {
  // Some seeds make circles on purpose; their heap takes those back.
  constexpr std::size_t kAnyNumber = 1'000'000;
  const auto seeds = FilesIn(ORX_SAMPLES "/../fuzz/seeds");
  ASSERT_FALSE(seeds.empty());
  OnSmallStack([&seeds] {
    for (const auto& seed : seeds) RunPrefixes(BytesOf(seed), kAnyNumber);
  });
}

class SampleTruncation : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SampleTruncation, Anywhere) {
  OnSmallStack([] { RunPrefixes(BytesOf(GetParam()), 0); });
}

std::vector<std::filesystem::path> Samples() {
  std::vector<std::filesystem::path> samples = FilesIn(ORX_SAMPLES);
  std::erase_if(samples, [](const auto& file) { return file.extension() != ".eps"; });
  std::ranges::sort(samples);
  return samples;
}

INSTANTIATE_TEST_SUITE_P(All, SampleTruncation, testing::ValuesIn(Samples()), [](const auto& row) {
  std::string name = row.param.stem().string();
  std::ranges::replace(name, '-', '_');
  return name;
});

}  // namespace
}  // namespace orxtests
