#include "orxprint/PictureFiles.h"

#include <string_view>
#include <utility>

namespace orxprint {

PictureFiles::PictureFiles(Plan drawingPlan) : plan(std::move(drawingPlan)) {
  plan.settings.mayGoOn = [this] { return MayGoOn(); };
}

// What a run that was stopped has drawn is painted all the same.
bool PictureFiles::MayGoOn() {
  if (!isFinishing) return control->MayGoOn();
  if (finishEnd && Clock::now() >= *finishEnd) isCutShort = true;
  return !isCutShort;
}

void PictureFiles::BeginRun(std::shared_ptr<RunControl> runControl, std::uint32_t number) {
  control = std::move(runControl);
  BeginPage(number);
}

void PictureFiles::BeginPage(std::uint32_t number) {
  Attempt([this, number] {
    page = number;
    const std::optional<orxdrawing::Box> area = plan.areas->Of(number);
    if (!area) {  // measuring was stopped before
      sink = nullptr;
      return control->StopNow(Stop::GaveUp);
    }
    if (!picture || plan.format.pages == PagesInFile::One) {
      EndFile();
      BeginFile();
    }
    ++pageCount;
    const auto label = plan.labels.find(number);
    sink = &picture->BeginPage({*area, label == plan.labels.end() ? "" : label->second});
  });
}

// Names follow from the number of pages, which is known for sure when a second one comes.
void PictureFiles::BeginFile() {
  if (pageCount == 0) firstPage = page;
  if (pageCount == 1 && !plan.numbered) {
    plan.numbered = true;
    NameFirst(plan.outputName.ForPage(firstPage, plan.greatestPage));
  }
  if (pageCount == 1) outputs.front().Close();
  OutputFile& output = outputs.emplace_back(
      plan.numbered ? plan.outputName.ForPage(page, plan.greatestPage) : plan.outputName.Whole());
  picture = plan.format.make(plan.settings, [this, &output](std::string_view bytes) {
    if (!output.Write(bytes)) control->StopNow(Stop::OutputFailed);
  });
}

// The first output is left open as long as its name may change.
void PictureFiles::EndFile() {
  if (!picture) return;
  picture->Finish();
  losses.points += picture->Lost().points;
  losses.images += picture->Lost().images;
  picture.reset();
  if (outputs.size() > 1) outputs.back().Close();
}

void PictureFiles::NameFirst(const std::string& name) {
  if (outputs.front().Name() != name) outputs.front().MoveTo(name);
}

void PictureFiles::Finish(const Deadline& deadline) {
  isFinishing = true;
  finishEnd = deadline;
  Attempt([this] { EndFile(); });
  if (failure) std::rethrow_exception(failure);
  if (outputs.size() > 1) return;
  if (plan.format.pages == PagesInFile::One && !plan.outputName.HasNumberPlace()) {
    NameFirst(plan.outputName.Whole());
  }
  outputs.front().Close();
}

}  // namespace orxprint
