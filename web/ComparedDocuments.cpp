#include "web/ComparedDocuments.h"

#include "drawing/ComparisonPicture.h"
#include "drawing/Extent.h"

namespace orxweb {

using orxdrawing::Box;
using orxdrawing::Difference;
using orxdrawing::ShapeList;

void ComparedDocuments::Draw(PageReceiver& receiver, const OpenDocument::Progress& progress) {
  before.Gather(progress);
  const std::uint64_t done = before.Size();
  after.Gather([&progress, done](std::uint64_t bytes) { return progress(done + bytes); });
  const ShapeList& listBefore = before.Index().List();
  const ShapeList& listAfter = after.Index().List();
  differences = orxdrawing::Compare(listBefore, listAfter, orxdrawing::kUsualTolerance);
  const auto differing = orxdrawing::DifferingPages(listBefore, listAfter, differences);
  pages.assign(differing.begin(), differing.end());
  if (!pages.empty()) DrawPages(receiver, progress);
}

void ComparedDocuments::DrawPages(PageReceiver& receiver, const OpenDocument::Progress& progress) {
  const std::uint64_t done = before.Size() + after.Size();
  PageSink sink(
      receiver, [this](std::uint32_t i) { return AreaOf(pages[i]); },
      PageSettings([&progress, done] { return progress(done); }));
  for (const std::uint32_t page : pages) {
    if (page != pages.front()) sink.NextPage();
    orxdrawing::DrawComparison(sink, before.Index().List(), after.Index().List(), differences,
                               page);
  }
  sink.Finish();
}

Box ComparedDocuments::AreaOf(std::uint32_t page) const {
  const auto areaIn = [page](const OpenDocument& document) {
    return orxdrawing::AreaOfPage(document.Comments(), document.Index().List(), page);
  };
  const std::optional<Box> area = orxdrawing::Union(areaIn(before), areaIn(after));
  return orxdrawing::AtLeastVisible(area.value_or(Box{}));
}

std::optional<std::size_t> ComparedDocuments::At(std::uint32_t page, orxdrawing::Point point,
                                                 double reach) const {
  const auto isHit = [&](const OpenDocument& document, std::optional<std::size_t> shape) {
    if (!shape) return false;
    const orxdrawing::ListedShape& listed = document.Index().List().Shapes()[*shape];
    return listed.record.page == page && document.Index().IsHit(listed, point, reach);
  };
  for (std::size_t i = differences.size(); i-- > 0;) {
    const Difference& difference = differences[i];
    if (isHit(after, difference.after) || isHit(before, difference.before)) return i;
  }
  return std::nullopt;
}

}  // namespace orxweb
