#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <utility>

#include "drawing/Deflater.h"

namespace orxdrawing {

namespace {

constexpr int kLittleEffort = 2;

class ZlibDeflater final : public Deflater {
public:
  ZlibDeflater(Effort effort, ByteSink byteSink) : sink(std::move(byteSink)) {
    const int level = effort == Effort::Little ? kLittleEffort : Z_DEFAULT_COMPRESSION;
    if (deflateInit(&stream, level) != Z_OK) throw std::bad_alloc();
  }
  ~ZlibDeflater() override { deflateEnd(&stream); }

  void Add(std::span<const unsigned char> bytes) override {
    while (!bytes.empty()) {
      const std::size_t count =
          std::min<std::size_t>(bytes.size(), std::numeric_limits<uInt>::max());
      stream.next_in = const_cast<unsigned char*>(bytes.data());
      stream.avail_in = static_cast<uInt>(count);
      while (stream.avail_in > 0) Step(Z_NO_FLUSH);
      bytes = bytes.subspan(count);
    }
  }
  void Finish() override {
    while (Step(Z_FINISH) != Z_STREAM_END) {
    }
  }

private:
  int Step(int flush) {
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    const int result = deflate(&stream, flush);
    const std::size_t made = out.size() - stream.avail_out;
    if (made > 0) sink({reinterpret_cast<const char*>(out.data()), made});
    return result;
  }

  ByteSink sink;
  z_stream stream{};
  std::array<unsigned char, 1 << 15> out;
};

}  // namespace

std::unique_ptr<Deflater> MakeZlibDeflater(Effort effort, ByteSink sink) {
  return std::make_unique<ZlibDeflater>(effort, std::move(sink));
}

}  // namespace orxdrawing
