// The lines of places in a document, asked about in any order.
//
// Make one for a document and ask it; it reads the document again through the function that it was
// given, never the whole into memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace orxdrawing {

// A line ends with a newline, a carriage return, or both. The document is read as far as the places
// asked about, mostly once; of what was read a few bytes are kept for every 4 KiB.
class LineIndex {
public:
  // Gives bytes from a place on: fewer than asked for only where there are no more.
  using Reader = std::function<std::size_t(std::uint64_t place, char* buffer, std::size_t count)>;

  explicit LineIndex(Reader documentReader) : read(std::move(documentReader)) {}

  // The line, from 1, of the byte at that place, or of the document's end when it is behind it.
  [[nodiscard]] std::uint64_t LineOf(std::uint64_t place);

private:
  static constexpr std::size_t kBlockBytes = 4096;

  // What has been met before a byte.
  struct Count {
    std::uint64_t line = 1;
    bool isAfterReturn = false;
  };

  void Load(std::size_t block);
  void Step(Count& count, std::size_t from, std::size_t to) const;

  Reader read;
  std::vector<Count> starts{Count()};  // of blocks
  std::array<char, kBlockBytes> bytes{};
  std::size_t loaded = SIZE_MAX;  // the block that `bytes` holds
  std::size_t size = 0;           // of it
  Count near;                     // at the place in it that was asked about last
  std::size_t nearPlace = 0;
};

}  // namespace orxdrawing
