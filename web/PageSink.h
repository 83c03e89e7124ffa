// Writes each page of a drawing as an SVG file of its own.
//
// Draw on it from the first page to the last, then finish. Files leave through the receiver as they
// come, which is the worker's way to the page.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "drawing/Picture.h"
#include "drawing/SvgPicture.h"
#include "web/StoredDeflater.h"

namespace orxweb {

// Of pages that are drawn in the interpreter's usual unit. Images stay in the browser's memory,
// where compressing them would gain nothing.
inline orxdrawing::SvgSettings PageSettings(std::function<bool()> mayGoOn) {
  const auto store = [](orxdrawing::Effort /*effort*/, orxdrawing::ByteSink sink) {
    return std::make_unique<StoredDeflater>(std::move(sink));
  };
  return {orxdrawing::kPointsPerMillimetre, store, std::move(mayGoOn)};
}

// Where the files go: bytes of the page that is drawn, then its end.
class PageReceiver {
public:
  virtual void TakeBytes(std::string_view bytes) = 0;
  virtual void TakePage(std::uint32_t page, const orxdrawing::Box& area) = 0;

protected:
  ~PageReceiver() = default;
};

class PageSink final : public orxdrawing::ShapeSink {
public:
  // The area of a page, counted from 0, in points.
  using AreaOf = std::function<orxdrawing::Box(std::uint32_t page)>;

  // Borrows the receiver.
  PageSink(PageReceiver& pageReceiver, AreaOf findArea, orxdrawing::SvgSettings svgSettings)
      : receiver(pageReceiver), areaOf(std::move(findArea)), settings(std::move(svgSettings)) {
    Begin();
  }

  // The last page is complete.
  void Finish() { End(); }
  [[nodiscard]] std::uint64_t LostPoints() const { return lostPoints; }

  void NextPage() override {
    End();
    ++page;
    Begin();
  }
  void Draw(const orxdrawing::StrokeShape& stroke) override { sink->Draw(stroke); }
  void Draw(const orxdrawing::FillShape& fill) override { sink->Draw(fill); }
  void Draw(const orxdrawing::ImageShape& image) override { sink->Draw(image); }

private:
  void Begin() {
    area = areaOf(page);
    picture.emplace(settings, [this](std::string_view bytes) { receiver.TakeBytes(bytes); });
    sink = &picture->BeginPage({area, {}});
  }
  void End() {
    picture->Finish();
    lostPoints += picture->Lost().points;
    receiver.TakePage(page, area);
  }

  PageReceiver& receiver;
  AreaOf areaOf;
  orxdrawing::SvgSettings settings;
  std::optional<orxdrawing::SvgPicture> picture;
  orxdrawing::ShapeSink* sink = nullptr;
  orxdrawing::Box area;
  std::uint32_t page = 0;
  std::uint64_t lostPoints = 0;
};

}  // namespace orxweb
