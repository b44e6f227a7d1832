#include "formats/fourier/fourier_file_reader.hpp"
#include "fuzz_target.hpp"

using namespace velmora;

namespace {

std::string File(const std::string& lines) {
  return "Filename:\t/a/Harmonic Bias\nTrial code:\tx\tTrial:\t-1\nDuration (s):\t1.000\n"
         "Sampling rate (Hz):\t100.00\n\nChannel:\t00\tEMG\nWindowing type:\tHamming\n"
         "Slope=\t0.0000\tBias=\t-1.2500\n\nHarmonic\t Freq.(Hz)\t    Cosine\t      Sine\n" +
         lines;
}

const char* const kLines =
    "       001\t    0.5000\t    2.0000\t   -1.0000\t  100.0000\n"
    "       002\t100000.123\t1e300\t    1.0000\r\n       003\t   \n";

}  // namespace

std::vector<std::string> FuzzSeeds() {
  return {File(kLines), File(""), File(kLines).substr(0, 330), "Harmonic\n       001\t\t\n"};
}

// An even size has a trial open, whose length then serves.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Load load(data, size);
  Trial& trial = load.trial;
  if (size % 2 == 0) {
    trial.AllocateData(2, 50);
    trial.Duration = 0.49;
  }
  try {
    ReadFourierFile(load.workbench, load.panel);
  } catch (const CommandAbandoned&) {
    return 0;
  }
  fuzz::ReachSamples(trial);
  return 0;
}
