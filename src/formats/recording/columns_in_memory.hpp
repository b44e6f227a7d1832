#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formats/recording/recording.hpp"

namespace velmora {

/// A file whose library hands over whole arrays. What is not finite: NaN means missing, becomes 0 and is
/// told; infinities end the read.
class ColumnsInMemory : public RecordingFile {
 public:
  std::int64_t ReadSamples(const SampleTarget& target) override;

 protected:
  /// A channel with its samples, which are all there.
  void AddColumn(RecordedChannel channel, std::vector<float> samples);

 private:
  std::vector<std::vector<float>> columns_;
};

/// Samples in 32 bits, NaN as 0; `missing` counts those. Throws FileError for a value outside the range, by
/// `name`.
std::vector<float> SamplesOf(const std::vector<double>& values, const std::string& name,
                             std::int64_t& missing);

/// The rate of times in seconds that rise throughout, Hz; 0: they do not.
double RateOfTimes(const std::vector<double>& times);

/// Whether a scalar of this name is a sampling rate: fs, rate, SampleRate, "sampling rate", ...
bool NamesRate(const std::string& name);

/// No file holds arrays this much larger than itself, however it is packed.
bool IsTooLargeFor(std::int64_t arrayBytes, std::int64_t fileBytes);

}  // namespace velmora
