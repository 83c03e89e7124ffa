// A file of drawn pages while it is being written: what every format's writer is to its user.
//
// Pages are drawn one after the other on the sink that BeginPage gives; bytes leave through the
// sink of bytes as they come, so that memory does not grow with the drawing. The same drawing gives
// the same bytes: nothing of the moment or the machine is written.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

// Takes bytes of a file in order. What it cannot take it remembers itself.
using ByteSink = std::function<void(std::string_view bytes)>;

// Asked now and then during long work; once it says no, the work is to be brought to its end with
// what is there.
using MayGoOn = std::function<bool()>;

struct PicturePage {
  Box area;           // what the page shows, in points
  std::string label;  // UTF-8; may be empty
};

// What could not be drawn.
struct PictureLosses {
  std::uint64_t points = 0;  // not finite
  std::uint64_t images = 0;  // without an area
};

// A picture does not fit into the memory that it may take. The text says what would do.
struct PictureTooLarge : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Picture {
public:
  Picture() = default;
  virtual ~Picture() = default;
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  // Ends the page before, if there is one. The sink lasts as long as the picture and takes the
  // shapes of this page from now on. Throws std::runtime_error for an area that cannot be drawn.
  virtual ShapeSink& BeginPage(const PicturePage& page) = 0;
  // Completes the file. REQUIRES: a page was begun.
  virtual void Finish() = 0;
  [[nodiscard]] virtual PictureLosses Lost() const = 0;
};

}  // namespace orxdrawing
