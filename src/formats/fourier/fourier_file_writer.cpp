#include "formats/fourier/fourier_file_writer.hpp"

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::size_t kWidth = 10;

// Longer texts are cut: the reader goes by columns.
void AppendField(std::string& text, double value) {
  text += '\t';
  text += PadLeft(FormatNumber(value, "0.0000"), kWidth).substr(0, kWidth);
}

std::string HeadText(const Workbench& workbench, int channel) {
  const Trial& trial = workbench.trial;
  const SpectrumMemory& spectrum = workbench.spectrum;
  const auto value = [&](double number) { return FormatNumber(number, workbench.patterns.ValuePattern); };
  const bool hasDirectory = FileNamePart(trial.FileName) != trial.FileName;
  return "Filename:\t" + OneLine((hasDirectory ? "" : workbench.DataDir) + trial.FileName) +
         "\nTrial code:\t" + OneLine(trial.TrialName) + "\tTrial:\t" + std::to_string(trial.TrialIndex) +
         "\nDuration (s):\t" + FormatNumber(trial.Duration, workbench.patterns.TimePattern) +
         "\nSampling rate (Hz):\t" + FormatNumber(trial.Rate, workbench.patterns.RatePattern) +
         "\n\nChannel:\t" + ChannelNumber(channel) + "\t" + OneLine(trial.ChanLabel[channel].Text()) +
         "\nWindowing type:\t" + spectrum.WindowName + "\nSlope=\t" + value(0.0) + "\tBias=\t" +
         value(spectrum.SinCoef[0]) + "\nMedian frequency (Hz)=\t" + value(spectrum.MedianFreq) +
         "\nMean  frequency  (Hz)=\t" + value(spectrum.MeanFreq) + "\n95%ile frequency (Hz)=\t" +
         value(spectrum.Percentile95Freq) +
         "\n\nHarmonic\t Freq.(Hz)\t    Cosine\t      Sine\tNorm.power\t Cum.power\t Rel.power\n";
}

}  // namespace

std::string FourierFileText(const Workbench& workbench, int channel) {
  const SpectrumMemory& spectrum = workbench.spectrum;
  std::string text = HeadText(workbench, channel);
  for (std::size_t k = 1; k <= static_cast<std::size_t>(spectrum.NHarm); ++k) {
    text += PadLeft(FormatNumber(static_cast<double>(k), "000"), kWidth);
    for (const std::vector<double>* list : {&spectrum.HarmFreq, &spectrum.CosCoef, &spectrum.SinCoef,
                                            &spectrum.PowerNorm, &spectrum.PowerCum, &spectrum.PowerRel}) {
      AppendField(text, (*list)[k]);
    }
    text += '\n';
  }
  return text;
}

}  // namespace velmora
