#include "drawing/Findings.h"

#include <algorithm>

namespace orxdrawing {

Finding& Findings::Add(Loss loss, std::string_view name, LossPlace place) {
  constexpr std::size_t kLongestName = 128;
  const bool isFull = findings.size() >= kMostFindings;
  const std::string key(isFull ? std::string_view() : name.substr(0, kLongestName));
  Finding& finding = findings[{loss, key}];
  finding.loss = loss;
  finding.name = key;
  ++finding.count;
  const bool isNew = place.token != LossPlace::kNoPlace &&
                     (finding.places.empty() || finding.places.back() != place);
  if (isNew && finding.places.size() < kMostPlaces) finding.places.push_back(place);
  return finding;
}

std::vector<Finding> Findings::Sorted() const {
  std::vector<Finding> sorted;
  for (const auto& [key, finding] : findings) sorted.push_back(finding);
  std::ranges::stable_sort(sorted, [](const Finding& a, const Finding& b) {
    return KindOf(a.loss).severity > KindOf(b.loss).severity;
  });
  return sorted;
}

std::size_t Findings::VisibleCount() const {
  return static_cast<std::size_t>(std::ranges::count_if(findings, [](const auto& entry) {
    return KindOf(entry.first.first).severity > Severity::NoEffect;
  }));
}

Severity Findings::Gravest() const {
  Severity gravest = Severity::NoEffect;
  for (const auto& [key, finding] : findings) {
    gravest = std::max(gravest, KindOf(key.first).severity);
  }
  return gravest;
}

}  // namespace orxdrawing
