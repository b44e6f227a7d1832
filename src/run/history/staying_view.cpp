#include "run/history/staying_view.hpp"

#include <utility>

#include "core/trial/helpers.hpp"

namespace velmora {

StayingView::StayingView(Workbench& workbench, Recorder& recorder)
    : workbench_(workbench), recorder_(recorder) {
  if (!workbench_.AfterView) {  // else it belongs to the form that waits behind it
    looks_ = recorder_.LooksOfOpenView();
  }
  if (!looks_.empty()) {
    workbench_.view->Leave();
    view_ = std::move(workbench_.view);
  }
  workbench_.AfterView = nullptr;
  CloseView(workbench_);
}

void StayingView::ComeBack() {
  if (view_ == nullptr || workbench_.view != nullptr || workbench_.trial.NData < 1) {
    return;
  }
  try {
    if (view_->TrialChanged()) {
      workbench_.view = std::move(view_);
      recorder_.AddStayed(std::move(looks_));
    }
  } catch (...) {  // NOLINT: there is no memory left to draw it; the trial is as it should be
  }
}

}  // namespace velmora
