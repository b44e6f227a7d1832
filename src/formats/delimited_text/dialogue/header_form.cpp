#include "formats/delimited_text/dialogue/header_form.hpp"

#include <array>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

class HeaderForm : public Form {
 public:
  HeaderForm(LineBlocks& blocks, std::int32_t& linesToSkip)
      : Form("frmHeader", "Header"), linesToSkip_(linesToSkip) {
    std::string line;
    for (int k = 1; k <= kMaxHeaderLines && blocks.ReadTextLine(line); ++k) {
      bool& skipped = skipped_[static_cast<std::size_t>(k)];
      skipped = k <= linesToSkip;
      fields_.push_back({.name = "lstHeader" + std::to_string(k),
                         .caption = FormatNumber(k, "00") + "  " + DecodeLine(line),
                         .target = &skipped});
    }
    buttons_ = {{.caption = "&OK", .role = FormButton::Role::Accept, .press = [this] { return Accept(); }},
                {.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }}};
  }

 private:
  // A data start beyond the lines shown cannot be seen here and stays.
  bool Accept() {
    std::size_t last = fields_.size();
    while (last > 0 && !skipped_[last]) {
      --last;
    }
    if (last < fields_.size()) {
      linesToSkip_ = static_cast<std::int32_t>(last);
    }
    return true;
  }

  std::int32_t& linesToSkip_;
  std::array<bool, kMaxHeaderLines + 1> skipped_{};
};

}  // namespace

void ShowHeader(Workbench& workbench, const std::string& path, std::int32_t& linesToSkip) {
  TextSource source(path);
  LineBlocks blocks(source);
  HeaderForm(blocks, linesToSkip).Show(workbench);
}

}  // namespace velmora
