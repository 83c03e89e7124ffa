#include "drawing/SegmentSet.h"

#include <bit>

namespace orxdrawing {

namespace {

std::uint64_t Mixed(std::uint64_t bits) {
  bits = (bits ^ bits >> 32) * 0xD6E8FEB86659FD93U;
  bits = (bits ^ bits >> 32) * 0xD6E8FEB86659FD93U;
  return bits ^ bits >> 32;
}

std::uint64_t HashOf(const Point& point) {
  return Mixed(Mixed(std::bit_cast<std::uint64_t>(point.x)) +
               std::bit_cast<std::uint64_t>(point.y));
}

}  // namespace

bool SegmentSet::Insert(const Point& a, const Point& b) {
  if (slots.empty()) slots.resize(kSlots);
  const std::uint64_t first = HashOf(a);
  const std::uint64_t last = HashOf(b);
  const std::uint64_t hash = (Mixed(first + last) ^ first ^ last) | 1;
  auto slot = static_cast<std::uint32_t>(hash >> 32) % kSlots;
  for (; slots[slot] != 0; slot = (slot + 1) % kSlots) {
    if (slots[slot] == hash) return false;
  }
  if (taken.size() >= kMostSegments) return true;
  taken.push_back(static_cast<std::uint32_t>(slot));
  slots[slot] = hash;
  return true;
}

void SegmentSet::Clear() {
  for (const std::uint32_t slot : taken) slots[slot] = 0;
  taken.clear();
}

}  // namespace orxdrawing
