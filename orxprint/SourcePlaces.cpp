#include "orxprint/SourcePlaces.h"

namespace orxprint {

using orxdrawing::TraceOrigin;
using orxdrawing::TracePlace;

const TracePlace& SourcePlaces::Find(Located& last, std::uint64_t place) {
  if (last.place != place) last = {place, {lines.LineOf(place), document.Offset() + place}};
  return last.found;
}

std::optional<TraceOrigin> SourcePlaces::Locate(const ORXPlace& place) {
  if (place.token == ORXPlace::kNone) return std::nullopt;
  TraceOrigin origin{Find(token, place.token), {}};
  if (place.definition != ORXPlace::kNone) origin.procedure = Find(procedure, place.definition);
  return origin;
}

}  // namespace orxprint
