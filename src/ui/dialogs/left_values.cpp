#include "ui/dialogs/left_values.hpp"

#include "core/files/paths.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

LeftValues::LeftValues(const std::string& enteredFor, const Workbench& workbench, double none,
                       std::function<double(int channel)> value)
    : none_(none), value_(std::move(value)) {
  if (enteredFor.empty() || enteredFor == workbench.LoadedFile) {
    return;
  }
  from_ = ToQt(FileNamePart(enteredFor));
  for (int c = 0; c <= workbench.trial.NChan; ++c) {
    offered_.push_back(c == 0 ? none_ : value_(c));
  }
}

QString LeftValues::Hint(int channel) const {
  const auto c = static_cast<std::size_t>(channel);
  const bool left = c < offered_.size() && offered_[c] != none_ && value_(channel) == offered_[c];
  return left ? QObject::tr("from %1").arg(from_) : QString();
}

QString LeftValues::Remark() const {
  for (std::size_t c = 1; c < offered_.size(); ++c) {
    if (!Hint(static_cast<int>(c)).isEmpty()) {
      return QObject::tr("Values in italics were entered for %1.").arg(from_);
    }
  }
  return {};
}

}  // namespace velmora::ui
