// Areas with soft edges, computed by AGG: outlines go in, covered pixels come out row by row.
//
// AGG drops what is beyond its limit of cells without a word. So nothing may come near that limit:
// whoever adds an outline asks HasRoom as it grows, and begins anew when there is none, densely on
// a tile that is small enough for that. Sums are wide enough for any number of outlines over each
// other.
#pragma once

#include <agg_basics.h>
#include <agg_rasterizer_cells_aa.h>
#include <agg_rasterizer_sl_clip.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "drawing/DenseCells.h"
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
    isDense = false;
    isOpen = false;
  }
  // The same with room for everything. REQUIRES: MayBeDense(tile). Throws std::bad_alloc.
  void BeginDensely(const PixelRect& tileToPaint) {
    Begin(tileToPaint);
    dense.Begin(tile);
    isDense = true;
  }
  [[nodiscard]] static bool MayBeDense(const PixelRect& tile) {
    return std::int64_t{tile.Width()} * tile.Height() <= DenseCells::kMostPixels;
  }

  // Whether more may be added. Once this says no, nothing of the tile may be painted.
  [[nodiscard]] bool HasRoom() const { return isDense || cells.total_cells() < kMostCells; }

  // Coordinates are in pixels and finite. An open outline is closed by the next one, or by Sweep.
  void MoveTo(double x, double y) {
    Close();
    startX = x;
    startY = y;
    isOpen = true;
    clipper.move_to(x, y);
  }
  void LineTo(double x, double y) {
    isDense ? clipper.line_to(dense, x, y) : clipper.line_to(cells, x, y);
  }

  // Calls visit(x, y, length, cover) for runs of pixels of equal cover, 1 to 255, from above.
  // REQUIRES: HasRoom().
  template <typename Visitor>
  void Sweep(FillRule rule, Visitor visit) {
    Close();
    if (isDense) {
      for (int y = tile.top; y < tile.bottom; ++y) SweepDenseRow(y, rule, visit);
      return;
    }
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
  // AGG counts blocks of 4,096 cells. One line adds no more cells than the tile has rows and
  // columns.
  static constexpr unsigned kBlocks = 1U << 17;

  void Close() {
    if (isOpen) LineTo(startX, startY);
    isOpen = false;
  }

  static constexpr std::int64_t kWhole = std::int64_t{2} * agg::poly_subpixel_scale;

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

  template <typename Visitor>
  void SweepDenseRow(int y, FillRule rule, Visitor& visit) {
    const DenseCells::Cell* const row = dense.Row(y);
    std::int64_t cover = 0;
    unsigned current = 0;
    int begin = tile.left;
    for (int x = tile.left; x < tile.right; ++x) {
      const DenseCells::Cell& cell = row[x - tile.left];
      cover += cell.cover;
      const unsigned here = CoverOf(cover * kWhole - cell.area, rule);
      if (here == current) continue;
      if (current > 0) visit(begin, y, x - begin, current);
      current = here;
      begin = x;
    }
    if (current > 0) visit(begin, y, tile.right - begin, current);
  }

  PixelRect tile;
  agg::rasterizer_cells_aa<Cell> cells{kBlocks};
  agg::rasterizer_sl_clip_dbl clipper;
  DenseCells dense;
  bool isDense = false;
  double startX = 0;
  double startY = 0;
  bool isOpen = false;
};

}  // namespace orxdrawing
