// The current graphics state with its path, and the states saved by "gsave".
//
// There is always a current state. Nobody may keep a pointer to it across Restore.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "graphics/GraphicsState.h"
#include "graphics/PathBuffer.h"
#include "ps/Limits.h"

namespace orxeps {

class GraphicsStates {
public:
  GraphicsState current;

  // Saves a copy of the current state. Returns false, and saves nothing, when the ceiling is met.
  [[nodiscard]] bool Save();
  // Brings the state saved last back, path included; does nothing when none is saved.
  void Restore() noexcept;
  [[nodiscard]] std::size_t SavedCount() const noexcept { return saved.size(); }

  // Whether the path may grow by this many points.
  [[nodiscard]] bool HasRoomFor(std::size_t points) const noexcept {
    return buffer.Count() + points <= kMaxPathPoints;
  }
  // Adds a point, in device space, to the path; it becomes the current point. A Move begins a
  // subpath.
  void AppendPoint(double x, double y, PathPointKind kind) {
    buffer.Append({x, y, kind});
    ++current.path.count;
    if (kind == PathPointKind::Move) {
      current.subpathStart = static_cast<std::int32_t>(current.path.count);
    }
    current.currentX = x;
    current.currentY = y;
  }
  // Adds lines to points, at least one; the last becomes the current point.
  void AppendLines(std::span<const float> xs, std::span<const float> ys) {
    buffer.AppendLines(xs, ys);
    current.path.count += xs.size();
    current.currentX = xs.back();
    current.currentY = ys.back();
  }
  // Empties the path; the current point and the subpath's start stay as they are.
  void ClearPath() noexcept;

  [[nodiscard]] std::size_t PathCount() const noexcept { return current.path.count; }
  // A point of the path. REQUIRES: 1 <= position <= PathCount().
  [[nodiscard]] const PathPoint& PathAt(std::size_t position) const noexcept {
    return buffer.At(current.path.begin + position - 1);
  }

  // Calls visit(std::span<const PathPoint>) for the points of the path, piece by piece.
  template <typename Visitor>
  void VisitPath(Visitor visit) const {
    buffer.VisitPieces(current.path, visit);
  }

private:
  PathBuffer buffer;
  std::vector<GraphicsState> saved;
};

}  // namespace orxeps
