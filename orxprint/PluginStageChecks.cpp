// Interpreters of a build of the plug-in beside and after each other, and their ends at every
// stage.
#include <future>

#if defined(__GLIBC__)
#  include <malloc.h>
#endif

#include "host/ORXListValORXUnicodeString.h"
#include "orxprint/PluginCandidate.h"
#include "orxprint/PluginChecks.h"
#include "orxprint/PluginTroubles.h"

namespace orxprint {

namespace {

const std::string_view kDocuments[] = {kShapes, kPages, kImage, kUnfinished};

std::string DrawsSideBySide(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const std::string pages = Host(candidate, kPages).Draw();
  Host first(candidate, kShapes);
  Host second(candidate, kPages);
  // The second draws its whole document at every call of the first.
  ActingGenerator generator(first.Generator(), [&] {
    RequireSameCalls(second.Draw(), pages);
    return 0;
  });
  RequireEqual(first->Generate(&generator), 1, "Generate answers");
  RequireSameCalls(first.TakeCalls(), std::string(kShapesCalls));
  second.Destroy();
  RequireSameCalls(first.Draw(), std::string(kShapesCalls));
  first.Destroy();
  return {};
}

std::string DrawsOnTwoThreads(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const auto draw = [&candidate](std::string_view document, const std::string& calls) {
    for (int round = 0; round < 200; ++round) {
      Host host(candidate, document);
      RequireSameCalls(host.Draw(), calls);
      host.Destroy();
    }
  };
  auto other = std::async(std::launch::async, draw, kImage, std::string(kImageCalls));
  draw(kShapes, std::string(kShapesCalls));
  other.get();
  return {};
}

std::string DrawsOneAfterAnother(const std::filesystem::path& file) {
  const Candidate candidate(file);
  orxframework::MemoryInputStream stream(kShapes);
  for (int round = 0; round < 100; ++round) {
    Host host(candidate, stream);
    RequireSameCalls(host.Draw(), std::string(kShapesCalls));
    host.Destroy();
  }
  return {};
}

std::string StandsGarbage(const std::filesystem::path& file) {
  const Candidate candidate(file);
  std::string bytes;
  std::uint32_t state = 1;
  for (int i = 0; i < 20000; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(state >> 24U);
  }
  const std::string openings = std::string(200000, '{') + std::string(200000, '}');
  const std::string arrays = std::string(200000, '[') + std::string(200000, ']');
  for (const std::string& document :
       {bytes, openings, arrays, std::string(100000, '('), std::string("/f {f} def f"),
        std::string("1e99 neg -1 array")}) {
    Host host(candidate, document);
    host.Draw();
    host.Count();
    host.Destroy();
  }
  return {};
}

void DestroyAfter(const Candidate& candidate, std::string_view document,
                  const std::function<void(Host&)>& work) {
  Host host(candidate, document);
  work(host);
  host.Destroy();
}

std::string DestroysAtEveryStage(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string_view document : kDocuments) {
    const std::function<void(Host&)> stages[] = {
        [](Host& /*unused*/) {},
        [](Host& host) {
          unsigned count = 0;
          host->GetPageCount(&count);
        },
        [](Host& host) { host.Draw(); },
        [](Host& host) { host.Count(); },
        [](Host& host) {
          host.Draw();
          host.Count();
          host.Draw();
        },
    };
    for (const auto& stage : stages) DestroyAfter(candidate, document, stage);
    // In the middle: the document ends after any of its bytes.
    for (std::size_t length = 0; length < document.size(); ++length) {
      DestroyAfter(candidate, document.substr(0, length), [](Host& host) { host.Draw(); });
    }
  }
  return {};
}

// Bytes that the process has allocated now; 0 where the C library does not tell.
std::size_t AllocatedBytes() {
#if defined(__GLIBC__)
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

std::string LeavesNothing(const std::filesystem::path& file) {
  if (AllocatedBytes() == 0) return "not looked at: nobody tells what is allocated";
  const Candidate candidate(file);
  const auto drawAll = [&candidate] {
    for (const std::string_view document : kDocuments) {
      DestroyAfter(candidate, document, [](Host& host) {
        host.Draw();
        host.Count();
      });
    }
  };
  constexpr std::size_t kRounds = 50;
  for (std::size_t round = 0; round < kRounds; ++round) drawAll();
  const std::size_t before = AllocatedBytes();
  for (std::size_t round = 0; round < kRounds; ++round) drawAll();
  const std::size_t after = AllocatedBytes();
  // Less than a byte for each interpreter is no leak but the allocator's own doing.
  Require(after < before + kRounds, "leaves " + std::to_string(after - before) + " bytes behind " +
                                        std::to_string(kRounds * std::size(kDocuments)) +
                                        " interpreters");
  return {};
}

constexpr PluginCheck kChecks[] = {
    {"side-by-side", "two interpreters draw within each other and do not meet", &DrawsSideBySide},
    {"threads", "two interpreters draw on two threads", &DrawsOnTwoThreads},
    {"one-after-another", "a hundred interpreters draw one input one after another",
     &DrawsOneAfterAnother},
    {"garbage", "bytes of all kinds and endless nesting are come back from", &StandsGarbage},
    {"destroy", "an interpreter can be destroyed at every stage and calls nobody then",
     &DestroysAtEveryStage},
    {"memory", "interpreters leave no memory behind", &LeavesNothing},
};

}  // namespace

std::span<const PluginCheck> StageChecks() { return kChecks; }

}  // namespace orxprint
