// Areas of outlines that cross each other so often that a list of touched cells would be longer
// than the pixels are many: every pixel of a tile has its sums at once.
//
// A line adds to each pixel that it touches how far it goes down in it, and twice the area between
// it and the pixel's left side, in 256ths of a pixel each way. Takes the lines that AGG's clipper
// gives, which lie on the tile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "drawing/PixelFrame.h"

namespace orxdrawing {

class DenseCells {
public:
  struct Cell {
    std::int64_t area = 0;
    std::int64_t cover = 0;
  };

  // Tiles of more pixels are to be divided.
  static constexpr std::int64_t kMostPixels = 256 << 10;

  // Throws std::bad_alloc.
  void Begin(const PixelRect& tileOfLines);
  // By the name that the clipper calls. Coordinates are in 256ths of pixels.
  void line(int x1, int y1, int x2, int y2);

  // The cells of a row, one more than the tile has columns. REQUIRES: the row is the tile's.
  [[nodiscard]] const Cell* Row(int y) const {
    return cells.data() + static_cast<std::size_t>(y - tile.top) * stride;
  }

private:
  void AddInRow(int row, int x1, int y1, int x2, int y2, bool goesDown);

  PixelRect tile;
  std::size_t stride = 0;
  std::vector<Cell> cells;
};

}  // namespace orxdrawing
