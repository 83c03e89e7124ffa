// Places of a pass as lines and bytes of its document.
//
// One serves one document and keeps its own copy of the way to read it; ask it in any order, best
// in the document's.
#pragma once

#include <cstdint>
#include <optional>

#include "drawing/LineIndex.h"
#include "drawing/TraceGenerator.h"
#include "host/ORXInterpreterWatcher.h"
#include "orxprint/Document.h"
#include "orxprint/RunControl.h"

namespace orxprint {

// Where the pass of a run is; kNone where its module does not tell. To be asked in the run.
[[nodiscard]] inline ORXPlace PlaceOf(const RunControl& control) {
  return control.watched ? control.watched->Place() : ORXPlace{};
}

// Lines count in the PostScript section, bytes from the file's start.
class SourcePlaces {
public:
  explicit SourcePlaces(const Document& itsDocument)
      : document(itsDocument), lines([this](std::uint64_t place, char* buffer, std::size_t count) {
          return document.Read(place, buffer, count);
        }) {}
  SourcePlaces(const SourcePlaces&) = delete;
  SourcePlaces& operator=(const SourcePlaces&) = delete;

  // None for a place that is not known.
  [[nodiscard]] std::optional<orxdrawing::TraceOrigin> Locate(const ORXPlace& place);

private:
  // Neighbours in a trace mostly come from the same place.
  struct Located {
    std::uint64_t place = ORXPlace::kNone;
    orxdrawing::TracePlace found;
  };
  const orxdrawing::TracePlace& Find(Located& last, std::uint64_t place);

  Document document;
  orxdrawing::LineIndex lines;
  Located token;
  Located procedure;
};

}  // namespace orxprint
