// Documents cut off anywhere, as transfers leave them: every prefix of the small documents here and
// of the fuzzers' seeds, and evenly spread prefixes of the samples.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/hostile/Documents.h"
#include "tests/hostile/HostileRunner.h"

namespace orxtests {
namespace {

// The bytes that all prefixes of one document together may have.
constexpr std::size_t kBytesPerDocument = std::size_t{1} << 20;

// Each prefix lies in memory of its own size, so that reading beyond its end is seen.
void RunPrefixes(const std::string& document, std::size_t objectsAllowed) {
  const std::size_t stride = 1 + document.size() * document.size() / 2 / kBytesPerDocument;
  for (std::size_t length = 0; length <= document.size(); length += stride) {
    const std::vector<char> prefix(document.begin(),
                                   document.begin() + static_cast<std::ptrdiff_t>(length));
    const HostileRun run = RunPasses({prefix.data(), prefix.size()});
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

TEST(Truncation, OfSamples) {
  const auto samples = FilesIn(ORX_SAMPLES);
  ASSERT_FALSE(samples.empty());
  OnSmallStack([&samples] {
    for (const auto& sample : samples) {
      if (sample.extension() == ".eps") RunPrefixes(BytesOf(sample), 0);
    }
  });
}

}  // namespace
}  // namespace orxtests
