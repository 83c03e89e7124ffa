#include "graphics/GraphicsStates.h"

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
  for (std::size_t i = saved.size(); i > 0 && saved[i - 1].path.begin == current.path.begin; --i) {
    saved[i - 1].path.count = 0;
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
