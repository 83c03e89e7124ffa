#include "orxprint/TemporarySpool.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include "orxprint/Failure.h"
#include "orxprint/Files.h"

namespace orxprint {

namespace {

constexpr std::size_t kBlockBytes = 1 << 16;

void Require(int error) {
  if (error != 0) throw Failure("cannot be kept in a temporary file: " + ErrorText(error));
}

}  // namespace

void TemporarySpool::Add(std::string_view bytes) {
  if (!file.IsOpen()) {
    file = OpenNamelessFile(TemporaryFolder());
    Require(file.IsOpen() ? 0 : errno);
  }
  Require(WriteAll(file.Number(), bytes, {}));
  size += bytes.size();
}

void TemporarySpool::Read(std::uint64_t place, std::uint64_t count,
                          const orxdrawing::ByteSink& sink) {
  std::vector<char> block(kBlockBytes);
  while (count > 0) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(count, block.size()));
    const Transfer read = ReadAt(file.Number(), place, block.data(), wanted);
    Require(read.count == 0 && read.error == 0 ? EIO : read.error);
    sink({block.data(), read.count});
    place += read.count;
    count -= read.count;
  }
}

}  // namespace orxprint
