// The rules of the input stream, shared by every kind of data, and bytes in memory.
#include "framework/InputStreams.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

namespace orxframework {

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = -1;

}  // namespace

int WindowedInputStream::Open(const char* mode) {
  if (!mode || std::strcmp(mode, "rb") != 0) return kFailure;
  isOpen = true;
  hasMoreData = true;
  MoveTo(0);
  return kSuccess;
}

int WindowedInputStream::Close() {
  current = end = stepLimit = nullptr;
  isOpen = false;
  return kSuccess;
}

int WindowedInputStream::Read(void* buffer, int count, int* countRead) {
  int done = 0;
  while (done < count && (current != end || Advance())) {
    const auto chunk = static_cast<int>(std::min<std::ptrdiff_t>(count - done, end - current));
    std::memcpy(static_cast<char*>(buffer) + done, current, static_cast<std::size_t>(chunk));
    current += chunk;
    done += chunk;
  }
  if (countRead) *countRead = done;
  return done == count ? kSuccess : kFailure;
}

int WindowedInputStream::ReadByteBeyond(char* byte) {
  if (!Advance()) return kFailure;
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): bytes are left, so there is a window
  *byte = *current++;
  return kSuccess;
}

// Makes further bytes readable after the last one. At the end of the data there are none, and that
// is what HasMoreData tells from then on.
bool WindowedInputStream::Advance() {
  if (!isOpen) return false;
  if (IsInSlot()) {
    current = resume;
    end = window.end;
  }
  if (current == end) LoadNextWindow();
  stepLimit = current;
  if (current == end) hasMoreData = false;
  return current != end;
}

void WindowedInputStream::LoadNextWindow() {
  const std::uint64_t position = Position();
  if (position == size) return;
  window = Load(position);
  if (!window.begin) {
    size = position;
    window.position = position;
  }
  current = window.begin + (position - window.position);
  end = window.end;
}

int WindowedInputStream::SetPosition(unsigned position) {
  if (!isOpen) return kFailure;
  MoveTo(std::min<std::uint64_t>(position, size));
  return kSuccess;
}

int WindowedInputStream::Seek(int offset, int origin) {
  if (!isOpen || (origin != 0 && origin != 2)) return kFailure;
  const std::uint64_t base = origin == 0 ? 0 : size;
  const auto distance = static_cast<std::uint64_t>(offset < 0 ? -std::int64_t{offset} : offset);
  if (offset < 0) {
    MoveTo(base - std::min(base, distance));
  } else {
    MoveTo(base + std::min(size - base, distance));
  }
  return kSuccess;
}

// Goes to a position within the data and drops what was pushed back.
void WindowedInputStream::MoveTo(std::uint64_t position) noexcept {
  const auto length = static_cast<std::uint64_t>(window.end - window.begin);
  if (position < window.position || position - window.position > length) {
    window = Window{nullptr, nullptr, position};
  }
  current = window.begin + (position - window.position);
  end = window.end;
  stepLimit = current;
}

int WindowedInputStream::UnreadByte(char byte) {
  if (!isOpen) return kFailure;
  if (current != stepLimit && current[-1] == byte) {
    stepLimit = --current;
    return kSuccess;
  }
  if (!IsInSlot()) resume = current;
  slot = byte;
  current = stepLimit = &slot;
  end = &slot + 1;
  return kSuccess;
}

// The position of the next byte that has one.
std::uint64_t WindowedInputStream::Position() const noexcept {
  const char* place = IsInSlot() ? resume : current;
  return window.position + static_cast<std::uint64_t>(place - window.begin);
}

int WindowedInputStream::GetPosition(unsigned* position) {
  const std::uint64_t place = Position();
  if (!isOpen || place > UINT_MAX) return kFailure;
  *position = static_cast<unsigned>(place);
  return kSuccess;
}

int WindowedInputStream::IsReadable() {
  return current != end || (isOpen && Position() < size) ? 1 : 0;
}

int WindowedInputStream::HasMoreData() { return hasMoreData ? 1 : 0; }

int WindowedInputStream::GetState() { return kSuccess; }

int WindowedInputStream::ClearEndOfFile() {
  hasMoreData = true;
  return kSuccess;
}

MemoryInputStream::MemoryInputStream(std::string_view borrowed) noexcept : data(borrowed) {
  SetSize(data.size());
}

MemoryInputStream::MemoryInputStream(const char* borrowed) noexcept
    : MemoryInputStream(std::string_view(borrowed)) {}

MemoryInputStream::MemoryInputStream(std::string&& bytes) noexcept
    : own(std::move(bytes)), data(own) {
  SetSize(data.size());
}

WindowedInputStream::Window MemoryInputStream::Load(std::uint64_t /*position*/) {
  return {data.data(), data.data() + data.size(), 0};
}

}  // namespace orxframework
