// Hands on the pages of a drawing that are pages of the document.
//
// It stands between the gatherer of shapes and whatever draws pages, and borrows the latter. Call
// Finish behind the last shape, for the pages that are blank.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "drawing/Shapes.h"

namespace orxdrawing {

// Leaves out every page that is blank and begins where the document only says that another one
// ends. Such a page may still be drawn on, so its beginning is handed on with its first shape.
class PageFilter final : public ShapeSink {
public:
  enum class Pages { All, First };

  // `starts` says of each page whether it begins as a page; those beyond its end do. Borrows the
  // sink.
  PageFilter(ShapeSink& shapeSink, Pages itsPages, std::vector<bool> itsStarts)
      : sink(shapeSink), pages(itsPages), starts(std::move(itsStarts)) {}

  void NextPage() override {
    BeginIfReal();
    ++page;
    isBegun = false;
  }
  void Draw(const StrokeShape& stroke) override { DrawAny(stroke); }
  void Draw(const FillShape& fill) override { DrawAny(fill); }
  void Draw(const ImageShape& image) override { DrawAny(image); }
  // No more shapes will come.
  void Finish() { BeginIfReal(); }

private:
  template <typename AnyShape>
  void DrawAny(const AnyShape& shape) {
    if (pages == Pages::First && page > 0) return;
    Begin();
    sink.Draw(shape);
  }
  void BeginIfReal() {
    if (page >= starts.size() || starts[page]) Begin();
  }
  void Begin() {
    if (isBegun || (pages == Pages::First && page > 0)) return;
    sink.NextPage();
    isBegun = true;
  }

  ShapeSink& sink;
  Pages pages;
  std::vector<bool> starts;
  std::size_t page = 0;
  bool isBegun = true;  // the first needs no call
};

}  // namespace orxdrawing
