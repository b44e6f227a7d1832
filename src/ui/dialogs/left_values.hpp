#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "core/workbench.hpp"

namespace velmora::ui {

/// The values of a dialogue, one a channel, that were entered for another trial and not touched since.
class LeftValues {
 public:
  /// `enteredFor` is the file of that trial; `none` is the value that does nothing.
  LeftValues(const std::string& enteredFor, const Workbench& workbench, double none,
             std::function<double(int channel)> value);

  /// "from walk01.vmb", or nothing.
  [[nodiscard]] QString Hint(int channel) const;
  /// One sentence for below the table, empty when there are none.
  [[nodiscard]] QString Remark() const;

 private:
  QString from_;  // empty: they are this trial's, or nobody's
  double none_;
  std::function<double(int channel)> value_;
  std::vector<double> offered_;  // by channel
};

}  // namespace velmora::ui
