#include "drawing/Comparison.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <unordered_map>

namespace orxdrawing {

namespace {

// Colours are told apart where an eight-bit picture may show it.
constexpr double kSameColour = 0.001;

// What is not finite is the same only as itself.
bool AreNear(double a, double b, double tolerance) {
  return a == b || std::abs(a - b) <= tolerance || (std::isnan(a) && std::isnan(b));
}

// The points of one page's shapes that have no partner yet.
struct OpenShapes {
  std::vector<std::size_t> before;
  std::vector<std::size_t> after;
};

class Comparer {
public:
  Comparer(const ShapeList& listBefore, const ShapeList& listAfter, double millimetres)
      : before(listBefore),
        after(listAfter),
        tolerance(millimetres),
        partners(listBefore.Shapes().size(), kNone),
        isPartner(listAfter.Shapes().size(), false) {}

  std::vector<Difference> Run() {
    MatchTheSame();
    for (const auto& [page, open] : OpenByPage()) MatchByForm(open);
    AddUnmatched();
    Sort();
    return std::move(differences);
  }

private:
  static constexpr std::size_t kNone = SIZE_MAX;

  using Key = std::pair<std::uint32_t, std::uint64_t>;  // a page, and what shapes have in common
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return static_cast<std::size_t>(key.second ^ key.first * 0x9e3779b97f4a7c15U);
    }
  };

  // The n-th of several that look the same is matched with the n-th.
  void MatchTheSame() {
    struct Queue {
      std::vector<std::size_t> places;
      std::size_t next = 0;
    };
    std::unordered_map<Key, Queue, KeyHash> places;
    for (std::size_t i = 0; i < after.Shapes().size(); ++i) {
      const ListedShape& shape = after.Shapes()[i];
      places[{shape.record.page, shape.content}].places.push_back(i);
    }
    std::vector<std::size_t> matched;
    for (std::size_t i = 0; i < before.Shapes().size(); ++i) {
      const ListedShape& shape = before.Shapes()[i];
      const auto found = places.find({shape.record.page, shape.content});
      if (found == places.end() || found->second.next == found->second.places.size()) continue;
      const std::size_t partner = found->second.places[found->second.next];
      if (DifferenceOf(shape, after.Shapes()[partner]) != 0)
        continue;  // equal hashes prove nothing
      ++found->second.next;
      Join(i, partner);
      matched.push_back(i);
    }
    TellReordered(matched);
  }

  // All but a longest run of partners that stand in the same order in both.
  void TellReordered(const std::vector<std::size_t>& matched) {
    std::vector<std::size_t> tails;  // places in `matched` that end the best run of each length
    std::vector<std::size_t> previous(matched.size(), kNone);
    for (std::size_t i = 0; i < matched.size(); ++i) {
      const auto tail = std::lower_bound(
          tails.begin(), tails.end(), partners[matched[i]],
          [&](std::size_t place, std::size_t value) { return partners[matched[place]] < value; });
      if (tail != tails.begin()) previous[i] = *(tail - 1);
      if (tail == tails.end()) {
        tails.push_back(i);
      } else {
        *tail = i;
      }
    }
    std::vector<bool> isInRun(matched.size(), false);
    for (std::size_t i = tails.empty() ? kNone : tails.back(); i != kNone; i = previous[i]) {
      isInRun[i] = true;
    }
    for (std::size_t i = 0; i < matched.size(); ++i) {
      if (!isInRun[i]) differences.push_back({matched[i], partners[matched[i]], kOrderDiffers});
    }
  }

  [[nodiscard]] std::map<std::uint32_t, OpenShapes> OpenByPage() const {
    std::map<std::uint32_t, OpenShapes> open;
    for (std::size_t i = 0; i < partners.size(); ++i) {
      if (partners[i] == kNone) open[before.Shapes()[i].record.page].before.push_back(i);
    }
    for (std::size_t i = 0; i < isPartner.size(); ++i) {
      if (!isPartner[i]) open[after.Shapes()[i].record.page].after.push_back(i);
    }
    return open;
  }

  void MatchByForm(const OpenShapes& open) {
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> places;
    for (std::size_t i = open.after.size(); i-- > 0;) {
      places[after.Shapes()[open.after[i]].form].push_back(open.after[i]);
    }
    for (const std::size_t i : open.before) {
      const auto found = places.find(before.Shapes()[i].form);
      if (found == places.end() || found->second.empty()) continue;
      const std::size_t partner = found->second.back();
      found->second.pop_back();
      Join(i, partner);
      const std::uint8_t what = DifferenceOf(before.Shapes()[i], after.Shapes()[partner]);
      if (what != 0) differences.push_back({i, partner, what});
    }
  }

  void Join(std::size_t i, std::size_t partner) {
    partners[i] = partner;
    isPartner[partner] = true;
  }

  void AddUnmatched() {
    for (std::size_t i = 0; i < partners.size(); ++i) {
      if (partners[i] == kNone) differences.push_back({i, std::nullopt, 0});
    }
    for (std::size_t i = 0; i < isPartner.size(); ++i) {
      if (!isPartner[i]) differences.push_back({std::nullopt, i, 0});
    }
  }

  [[nodiscard]] std::uint8_t DifferenceOf(const ListedShape& a, const ListedShape& b) const {
    int what = PointsDiffer(a, b);
    const Colour& one = a.record.colour;
    const Colour& other = b.record.colour;
    if (!AreNear(one.red, other.red, kSameColour) ||
        !AreNear(one.green, other.green, kSameColour) ||
        !AreNear(one.blue, other.blue, kSameColour)) {
      what |= kColourDiffers;
    }
    if (!AreNear(a.record.width, b.record.width, tolerance)) what |= kWidthDiffers;
    if (a.record.cap != b.record.cap || a.record.rule != b.record.rule) what |= kStyleDiffers;
    if (a.samples != b.samples || a.record.columns != b.record.columns ||
        a.record.rows != b.record.rows) {
      what |= kSamplesDiffer;
    }
    return static_cast<std::uint8_t>(what);
  }

  // REQUIRES: both have the same form.
  [[nodiscard]] int PointsDiffer(const ListedShape& a, const ListedShape& b) const {
    const auto one = before.ContoursOf(a).coordinates;
    const auto other = after.ContoursOf(b).coordinates;
    const double oneScale = before.PointsPerUnit() / kPointsPerMillimetre;
    const double otherScale = after.PointsPerUnit() / kPointsPerMillimetre;
    double first[2] = {0, 0};
    bool isSame = true;
    bool isShifted = true;
    for (std::size_t i = 0; i < one.size(); ++i) {
      const double x = one[i] * oneScale;
      const double y = other[i] * otherScale;
      if (AreNear(x, y, tolerance) && first[i % 2] == 0) continue;
      isSame = isSame && AreNear(x, y, tolerance);
      if (i < 2) first[i] = y - x;
      isShifted = isShifted && AreNear(y - x, first[i % 2], tolerance);
    }
    return isSame ? 0 : isShifted ? kPlaceDiffers : kOutlineDiffers;
  }

  void Sort() {
    const auto key = [this](const Difference& difference) {
      const ListedShape& shape = difference.after ? after.Shapes()[*difference.after]
                                                  : before.Shapes()[*difference.before];
      return std::tuple(shape.record.page, !difference.after.has_value(),
                        difference.after.value_or(difference.before.value_or(0)));
    };
    std::sort(differences.begin(), differences.end(),
              [&](const Difference& a, const Difference& b) { return key(a) < key(b); });
  }

  const ShapeList& before;
  const ShapeList& after;
  double tolerance;
  std::vector<std::size_t> partners;  // of the shapes before
  std::vector<bool> isPartner;        // of the shapes after
  std::vector<Difference> differences;
};

}  // namespace

DifferenceNumbers Count(const std::vector<Difference>& differences) {
  DifferenceNumbers numbers;
  for (const Difference& difference : differences) {
    const bool isChange = difference.before && difference.after;
    ++(isChange ? numbers.changed : difference.after ? numbers.added : numbers.removed);
  }
  return numbers;
}

std::vector<Difference> Compare(const ShapeList& before, const ShapeList& after, double tolerance) {
  return Comparer(before, after, tolerance).Run();
}

}  // namespace orxdrawing
