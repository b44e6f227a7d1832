#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

#include "core/questions/form.hpp"
#include "core/simd.hpp"
#include "core/workbench.hpp"
#include "formats/delimited_text/scan/fast_scan.hpp"
#include "formats/line_blocks.hpp"
#include "fuzz_target.hpp"
#include "import/detect_text_format.hpp"

namespace {

using namespace velmora;

/// Reads with the dialogue as it comes, or with a few of its fields changed by the first byte.
class Reading : public fuzz::BlindAnswers {
 public:
  explicit Reading(unsigned choice) : choice_(choice) {}

  std::string AskInput(const InputQuestion& /*question*/) override { return "100"; }
  std::string AskForm(Form& form) override {
    Change(form, "ParseHasTime", choice_ & 1U, "true");
    Change(form, "ParseTimeColumn", choice_ & 2U, "2");
    Change(form, "ParseSkipToEndOfLine", choice_ & 4U, "true");
    Change(form, "NChan", choice_ & 8U, "3");
    Change(form, "ParseSkip", choice_ & 16U, "1");
    Change(form, "ParseDecimalComma", choice_ & 32U, "true");
    Change(form, "ParseSemicolons", choice_ & 64U, "true");
    Change(form, "ParseLabelsLine", choice_ & 128U, "1");
    const std::string press = forms_ == 1 && (choice_ & 7U) == 5 ? "View Header" : "OK";
    return ++forms_ > 4 ? "Cancel" : press;
  }

 private:
  static void Change(Form& form, const char* name, unsigned change, const char* text) {
    const FormField* field = change != 0 ? form.FindField(name) : nullptr;
    if (field != nullptr) {
      form.Edit(*field, text);
    }
  }

  unsigned choice_;
  int forms_ = 0;
};

void LoadThem(const std::uint8_t* data, std::size_t size, unsigned choice) {
  fuzz::Load<Reading> load(data, size, choice);
  load.trial.FileExt = (choice & 32U) != 0 ? "TSV" : "TXT";
  DetectTextFormat(load.workbench, load.panel);
  fuzz::ReachSamples(load.trial);
}

// One of the vector widths, another for another input: each costs as much as the plain way.
SimdLevel WidthFor(std::string_view text) {
  static const std::vector<SimdLevel> levels = MachineSimdLevels();
  return levels[std::hash<std::string_view>()(text) % levels.size()];
}

// A vector width has to read what the plain way reads, bit for bit.
void CompareScans(const std::uint8_t* data, std::size_t size, unsigned choice) {
  constexpr std::int64_t kRows = 64;
  ScanPlan plan;
  plan.columns = 1 + static_cast<int>(choice % 7);
  plan.stride = plan.columns + 1;
  plan.layout = {.semicolons = (choice & 64U) != 0, .decimalComma = (choice & 32U) != 0};
  for (std::size_t k = 0; k < plan.slot.size(); ++k) {
    plan.slot[k] = static_cast<std::uint8_t>(k + 1);
  }
  std::string buffer(LineBlocks::kPadding, '0');
  buffer.append(reinterpret_cast<const char*>(data), size).append(LineBlocks::kPadding, '1');
  const std::string_view text = std::string_view(buffer).substr(LineBlocks::kPadding, size);
  std::vector<float> expected(static_cast<std::size_t>(plan.stride * kRows));
  ScanFaults expectedFaults;
  const ScanProgress plain = ScanRows(text, plan, {expected.data(), kRows}, 1, expectedFaults);
  std::vector<float> frames(expected.size());
  ScanFaults faults;
  const ScanProgress fast = FastScanRows(text, plan, {frames.data(), kRows}, 1, faults, WidthFor(text));
  if (fast.rows != plain.rows || fast.bytes != plain.bytes || fast.lines != plain.lines ||
      faults.notNumbers.count != expectedFaults.notNumbers.count ||
      std::memcmp(frames.data(), expected.data(), frames.size() * sizeof(float)) != 0) {
    std::abort();
  }
}

}  // namespace

std::vector<std::string> FuzzSeeds() {
  return {
      "7a b\n0 2\n0.5 -3.25\n1 1e-5\n1.5 5\n",
      "1,x,y\r\n1,2.5,3\r\n4,,6\r\n7,8,9,\r\n",
      "@a;b\n1,5;2\n-3;0,25\n4;5\n",
      "0DEMG Channels: 2\nNumber of samples:  3\nSampling frequency: 10\nTime "
      "[s],a,b\n0,1,2\n0.1,3,4\n0.2,5,6\n",
      "0# bioPlux\n#\n# SamplingFrequency\t1000\n# SamplingResolution 12\n1\t0\t2048\t4095\n2\t1\t0\t2049\n",
      "0Channels\t2\nY_Unit_Label\tV\tg\nDelta_X\t0,25\nX_Value\ta\tb\n0\t0\t5\t6\n0.25\t0.25\t7\t8\n",
      "0V3D\nITEM\tForceX\tFreeMoment\nFP\tA\tB\n0\t1\t2\n0.1\t3\t4\n0.2\t5\t6\n",
      "0Formula1\nx\n" + std::string("1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\t14\t15\t16\t17\t18\n") +
          "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\t13\t14\t15\t16\t17\t18\n",
      "0Label\tFx [N]\tFy\nEngineering Units\tN\tN\nRate\t50\n0\t1\t2\n0.02\t3\t4\n",
      "0a b\r\r\n1 2\r\r\n3 4\r\r\n5 6",
      std::string("0\xFF\xFE", 3) + std::string("1\0 \0002\0\n\0003\0 \0004\0\n\0005\0 \0006\0", 20),
  };
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  LoadThem(data + 1, size - 1, data[0]);
  CompareScans(data + 1, size - 1, data[0]);
  return 0;
}
