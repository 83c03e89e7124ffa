#include "graphics/GraphicsStates.h"

#include <ranges>

namespace orxeps {

bool GraphicsStates::Save() {
  if (saved.size() >= kMaxSavedStates) return false;
  saved.push_back(current);
  try {
    budget.Take(kSavedStateCost);
  } catch (...) {
    saved.pop_back();
    throw;
  }
  return true;
}

void GraphicsStates::Restore() noexcept {
  if (saved.empty()) return;
  current = saved.back();
  saved.pop_back();
  budget.Give(kSavedStateCost);
  buffer.Truncate(current.path.End());
}

// States saved since the path began hold the same points.
void GraphicsStates::EmptyFullPath() noexcept {
  if (!pathWasFull) return;
  pathWasFull = false;
  for (GraphicsState& state : saved | std::views::reverse) {
    if (state.path.begin != current.path.begin) break;
    state.path.count = 0;
  }
  current.path.count = 0;
  buffer.Truncate(current.path.begin);
}

void GraphicsStates::ClearPath() noexcept {
  const std::size_t floor = saved.empty() ? 0 : saved.back().path.End();
  current.path = {floor, 0};
  buffer.Truncate(floor);
}

}  // namespace orxeps
