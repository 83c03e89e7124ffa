// Areas with soft edges, computed by AGG: outlines go in, covered pixels come out row by row.
//
// AGG drops what is beyond its limit of cells without a word. So nothing may come near that limit:
// whoever adds an outline asks HasRoom as it grows, and paints a part of the tile when there is
// none. Sums are wide enough for any number of outlines over each other.
#pragma once

#include <agg_basics.h>
#include <agg_rasterizer_cells_aa.h>
#include <agg_rasterizer_sl_clip.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "drawing/PixelFrame.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

class AreaRasteriser {
public:
  // Starts anew, for what lies on the tile.
  void Begin(const PixelRect& tileToPaint) {
    tile = tileToPaint;
    cells.reset();
    clipper.clip_box(tile.left, tile.top, tile.right, tile.bottom);
    mostCells = tile.Width() == 1 && tile.Height() == 1 ? kMostCellsOfAPixel : kMostCells;
    isOpen = false;
  }

  // Whether more may be added. Once this says no, nothing of the tile may be painted.
  [[nodiscard]] bool HasRoom() const { return cells.total_cells() < mostCells; }

  // Coordinates are in pixels and finite. An open outline is closed by the next one, or by Sweep.
  void MoveTo(double x, double y) {
    Close();
    startX = x;
    startY = y;
    isOpen = true;
    clipper.move_to(x, y);
  }
  void LineTo(double x, double y) { clipper.line_to(cells, x, y); }

  // Calls visit(x, y, length, cover) for runs of pixels of equal cover, 1 to 255, from above.
  // REQUIRES: HasRoom().
  template <typename Visitor>
  void Sweep(FillRule rule, Visitor visit) {
    Close();
    cells.sort_cells();
    if (cells.total_cells() == 0) return;
    const int last = std::min(cells.max_y(), tile.bottom - 1);
    for (int y = std::max(cells.min_y(), tile.top); y <= last; ++y) SweepRow(y, rule, visit);
  }

private:
  struct Cell {
    int x;
    int y;
    int cover;
    std::int64_t area;

    void initial() {
      x = y = std::numeric_limits<int>::max();
      cover = 0;
      area = 0;
    }
    void style(const Cell& /*other*/) {}
    [[nodiscard]] bool not_equal(int otherX, int otherY, const Cell& /*other*/) const {
      return x != otherX || y != otherY;
    }
  };

  static constexpr unsigned kMostCells = 192 << 10;
  // A tile that cannot be divided has to take them all.
  static constexpr unsigned kMostCellsOfAPixel = 256 << 20;
  // AGG counts blocks of 4,096 cells. One line adds no more cells than the tile has rows and
  // columns.
  static constexpr unsigned kBlocks = 1U << 17;

  void Close() {
    if (isOpen) clipper.line_to(cells, startX, startY);
    isOpen = false;
  }

  // From twice the area in 256ths of a pixel each way.
  static unsigned CoverOf(std::int64_t doubleArea, FillRule rule) {
    std::int64_t cover = doubleArea >> (2 * agg::poly_subpixel_shift + 1 - 8);
    if (cover < 0) cover = -cover;
    if (rule == FillRule::EvenOdd) {
      cover &= 511;
      if (cover > 256) cover = 512 - cover;
    }
    return static_cast<unsigned>((std::min<std::int64_t>(cover, 256) * 255 + 128) >> 8);
  }

  template <typename Visitor>
  void SweepRow(int y, FillRule rule, Visitor& visit) {
    unsigned left = cells.scanline_num_cells(static_cast<unsigned>(y));
    if (left == 0) return;
    const Cell* const* next = cells.scanline_cells(static_cast<unsigned>(y));
    const auto emit = [&](int x, int end, std::int64_t doubleArea) {
      const unsigned cover = CoverOf(doubleArea, rule);
      end = std::min(end, tile.right);
      if (cover > 0 && x < end) visit(x, y, end - x, cover);
    };
    constexpr std::int64_t kWhole = 2 * agg::poly_subpixel_scale;
    std::int64_t cover = 0;
    while (left > 0) {
      int x = (*next)->x;
      std::int64_t area = 0;
      for (; left > 0 && (*next)->x == x; --left, ++next) {
        area += (*next)->area;
        cover += (*next)->cover;
      }
      if (area != 0) {
        emit(x, x + 1, cover * kWhole - area);
        ++x;
      }
      if (left > 0 && (*next)->x > x) emit(x, (*next)->x, cover * kWhole);
    }
  }

  PixelRect tile;
  agg::rasterizer_cells_aa<Cell> cells{kBlocks};
  agg::rasterizer_sl_clip_dbl clipper;
  unsigned mostCells = kMostCells;
  double startX = 0;
  double startY = 0;
  bool isOpen = false;
};

}  // namespace orxdrawing
