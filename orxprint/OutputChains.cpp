#include "orxprint/OutputChains.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "orxprint/OutputFile.h"
#include "orxprint/OutputNames.h"

namespace orxprint {

namespace {

// A folder that is not made yet is known by its name.
FilePlace OutputPlace(const std::string& name) {
  return PlaceOf(name).value_or(FilePlace{{}, name});
}

// Sets of documents, each known by its first one.
class Sets {
public:
  explicit Sets(std::size_t count) : parents(count) {
    std::iota(parents.begin(), parents.end(), std::size_t{0});
  }
  std::size_t FirstOf(std::size_t member) {
    while (parents[member] != member) {
      parents[member] = parents[parents[member]];
      member = parents[member];
    }
    return member;
  }
  void Unite(std::size_t a, std::size_t b) {
    a = FirstOf(a);
    b = FirstOf(b);
    parents[std::max(a, b)] = std::min(a, b);
  }

private:
  std::vector<std::size_t> parents;
};

}  // namespace

std::vector<Chain> ChainsOf(const std::vector<std::string>& outputs, bool numbered) {
  Sets sets(outputs.size());
  std::map<FilePlace, std::size_t> writers;
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    const auto [writer, isFirst] = writers.emplace(OutputPlace(outputs[i]), i);
    if (!isFirst) sets.Unite(writer->second, i);
  }
  for (const auto& [place, document] : writers) {
    if (!numbered) break;
    const auto other = writers.find({place.folder, WithoutPageNumber(place.name)});
    if (other != writers.end()) sets.Unite(other->second, document);
  }
  std::vector<Chain> chains;
  std::map<std::size_t, std::size_t> chainOf;
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    const auto [place, isNew] = chainOf.emplace(sets.FirstOf(i), chains.size());
    if (isNew) chains.emplace_back();
    chains[place->second].push_back(i);
  }
  return chains;
}

}  // namespace orxprint
