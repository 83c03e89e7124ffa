#include "graphics/GraphicsStates.h"

namespace orxeps {

bool GraphicsStates::Save() {
  if (saved.size() >= kMaxSavedStates) return false;
  saved.push_back(current);
  return true;
}

void GraphicsStates::Restore() noexcept {
  if (saved.empty()) return;
  current = saved.back();
  saved.pop_back();
  buffer.Truncate(current.path.End());
}

void GraphicsStates::ClearPath() noexcept {
  const std::size_t floor = saved.empty() ? 0 : saved.back().path.End();
  current.path = {floor, 0};
  buffer.Truncate(floor);
}

}  // namespace orxeps
