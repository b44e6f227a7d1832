#include <cmath>
#include <cstdlib>

#include "core/workbench.hpp"
#include "formats/tdms/tdms_reader.hpp"
#include "fuzz_target.hpp"
#include "import/read_recording.hpp"
#include "support/instrument_files/tdms_file.hpp"

using namespace velmora;

std::vector<std::string> FuzzSeeds() {
  test::TdmsBuilder interleaved;
  interleaved.Object("/'g'/'x'", interleaved.Index(9, 2)).Object("/'g'/'y'", interleaved.Index(10, 2));
  interleaved.Segment(std::string(28, '\x01'), 2 + 4 + 8 + 0x20);
  test::TdmsBuilder card;
  ByteBuilder index;
  index.Add(std::uint32_t{0x1269}).Add(std::uint32_t{0xFFFFFFFF}).Add(std::uint32_t{1}).Add(std::uint64_t{3});
  index.Add(std::uint32_t{1})
      .Add(std::uint32_t{3})
      .Add(std::uint32_t{0})
      .Add(std::uint32_t{0})
      .Add(std::uint64_t{0});
  index.Add(std::uint32_t{1}).Add(std::uint32_t{2});
  card.Object("/'g'/'x'", index.Bytes()).Segment("abcdef", 2 + 4 + 8 + 0x80);
  return {test::SmallTdms(), test::SmallTdms(ByteOrder::Big), interleaved.Bytes(), card.Bytes()};
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::MemoryFile file(data, size);
  fuzz::BlindAnswers answers;
  Workbench workbench(answers);
  Trial& trial = workbench.trial;
  trial.FileName = file.Path();
  trial.PreviousRate = 100.0;
  ProgressPanel panel(workbench);
  ReadRecording(workbench, panel, "TDMS", OpenTdms);
  for (int c = 0; trial.NData > 0 && c <= trial.NChan; ++c) {
    for (std::int64_t i = 1; i <= trial.NData; ++i) {
      if (!std::isfinite(trial.Data(i, c))) {
        std::abort();
      }
    }
  }
  return 0;
}
