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
  fuzz::Load load(data, size);
  load.trial.PreviousRate = 100.0;
  ReadRecording(load.workbench, load.panel, "TDMS", OpenTdms);
  fuzz::WantNumbers(load.trial);
  return 0;
}
