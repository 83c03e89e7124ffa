#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "drawing/Deflater.h"

namespace orxdrawing {

namespace {

constexpr int kLittleEffort = 1;
// Few bytes are packed well even when much effort would be too much for many.
constexpr uLong kFewBytes = 1 << 18;

class ZlibDeflater final : public Deflater {
public:
  ZlibDeflater(Effort effort, ByteSink byteSink) : sink(std::move(byteSink)) {
    if (deflateInit(&stream, effort == Effort::Least ? kLittleEffort : Z_DEFAULT_COMPRESSION) !=
        Z_OK)
      throw std::bad_alloc();
    spares = effort == Effort::Little;
  }
  ~ZlibDeflater() override { deflateEnd(&stream); }

  void Add(std::span<const unsigned char> bytes) override {
    if (spares && stream.total_in >= kFewBytes) SpareEffort();
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
    return Step([this, flush] { return deflate(&stream, flush); });
  }
  // Changing the effort packs what came before, for which there may be too little room at once.
  void SpareEffort() {
    spares = false;
    while (Step([this] { return deflateParams(&stream, kLittleEffort, Z_DEFAULT_STRATEGY); }) ==
           Z_BUF_ERROR) {
    }
  }
  template <typename Work>
  requires std::is_invocable_r_v<int, Work>
  int Step(Work work) {
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    const int result = work();
    const std::size_t made = out.size() - stream.avail_out;
    if (made > 0) sink({reinterpret_cast<const char*>(out.data()), made});
    return result;
  }

  ByteSink sink;
  z_stream stream{};
  bool spares = false;  // effort, as soon as many bytes came
  std::array<unsigned char, 1 << 15> out;
};

}  // namespace

std::unique_ptr<Deflater> MakeZlibDeflater(Effort effort, ByteSink sink) {
  return std::make_unique<ZlibDeflater>(effort, std::move(sink));
}

}  // namespace orxdrawing
