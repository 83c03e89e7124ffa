// A spool in a temporary file that has no name.
//
// The file is gone with the spool, however the program ends; it lies where temporary files do and
// is made with the first byte.
#pragma once

#include "drawing/Spool.h"
#include "orxprint/Descriptor.h"

namespace orxprint {

class TemporarySpool final : public orxdrawing::Spool {
public:
  [[nodiscard]] std::uint64_t Size() const override { return size; }
  // Throw Failure.
  void Add(std::string_view bytes) override;
  void Read(std::uint64_t place, std::uint64_t count, const orxdrawing::ByteSink& sink) override;

private:
  Descriptor file;  // made when it is needed
  std::uint64_t size = 0;
};

}  // namespace orxprint
