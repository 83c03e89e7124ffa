// What was found in a document: each kind of loss by each name that caused it, how often, and where
// first.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/LossKinds.h"

namespace orxdrawing {

inline constexpr std::size_t kMostPlaces = 10;

// A place in the document: bytes from the start of its PostScript section. The definition is that
// of the procedure that ran; kNoPlace without one.
struct LossPlace {
  static constexpr std::uint64_t kNoPlace = ~std::uint64_t{0};

  std::uint64_t token = kNoPlace;
  std::uint64_t definition = kNoPlace;

  friend bool operator==(const LossPlace&, const LossPlace&) = default;
};

struct Finding {
  Loss loss = Loss::NameUnknown;
  std::string name;    // the operator, the unknown name, or what else was met
  std::string detail;  // what is special to it, for people; often empty
  std::uint64_t count = 0;
  double ratio = 0;               // of widths: drawn to meant, the one farthest from 1
  std::vector<LossPlace> places;  // the first, without repeats
};

struct DrawingSummary {
  std::uint64_t strokes = 0;
  std::uint64_t fills = 0;
  std::uint64_t images = 0;
  std::uint64_t pages = 0;
  bool hasExtent = false;
  Box extent;  // in output units
};

class Findings {
public:
  Finding& Add(Loss loss, std::string_view name, LossPlace place);

  // The gravest first, among equals the order of the kinds.
  [[nodiscard]] std::vector<Finding> Sorted() const;
  // Kinds worse than without visible effect.
  [[nodiscard]] std::size_t VisibleCount() const;
  [[nodiscard]] Severity Gravest() const;
  // Finds of more different names than this are counted under none.
  static constexpr std::size_t kMostFindings = 1000;

  DrawingSummary summary;

private:
  std::map<std::pair<Loss, std::string>, Finding, std::less<>> findings;
};

}  // namespace orxdrawing
