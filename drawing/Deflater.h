// Compression as writers of files need it, so that each host can bring its own.
//
// A writer is given a function that makes deflaters and owns those that it has made; packed bytes
// leave through the sink as they come. A command line brings zlib, a browser its own.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>

#include "drawing/Picture.h"

namespace orxdrawing {

// Makes one stream in zlib's format (RFC 1950) of the bytes that it is given.
class Deflater {
public:
  Deflater() = default;
  virtual ~Deflater() = default;
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  virtual void Add(std::span<const unsigned char> bytes) = 0;
  virtual void Finish() = 0;
};

// How much time the packing may take.
enum class Effort {
  Least,   // for what goes on after much has been packed
  Little,  // for what is printed: more saves little and takes long
  Normal,
};

using MakeDeflater = std::function<std::unique_ptr<Deflater>(Effort effort, ByteSink sink)>;

// With zlib. Throws std::bad_alloc, as do the calls of what it gives.
[[nodiscard]] std::unique_ptr<Deflater> MakeZlibDeflater(Effort effort, ByteSink sink);

}  // namespace orxdrawing
