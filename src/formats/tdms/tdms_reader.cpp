#include "formats/tdms/tdms_reader.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <map>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/recording/interleaved.hpp"
#include "formats/recording/usable_rate.hpp"
#include "formats/tdms/tdms_metadata.hpp"

namespace velmora {
namespace {

std::string TextOf(const TdmsChannel& channel, const std::string& name) {
  const auto it = channel.texts.find(name);
  return it == channel.texts.end() ? std::string() : FixedFieldText(it->second);
}

double NumberOf(const TdmsChannel& channel, const std::string& name, double otherwise) {
  const auto it = channel.numbers.find(name);
  return it == channel.numbers.end() ? otherwise : it->second;
}

/// Scales one behind the other, each a polynomial; a straight line has two coefficients.
struct TdmsScale {
  std::vector<std::vector<double>> polynomials;
  bool known = true;  // all kinds of the file's scales are

  [[nodiscard]] double Of(double value) const {
    for (const std::vector<double>& coefficients : polynomials) {
      double sum = 0.0;
      for (std::size_t k = coefficients.size(); k-- > 0;) {
        sum = sum * value + coefficients[k];
      }
      value = sum;
    }
    return value;
  }
};

std::vector<double> CoefficientsOf(const TdmsChannel& channel, const std::string& scale) {
  constexpr double kMost = 100;
  const double size = NumberOf(channel, scale + "_Polynomial_Coefficients_Size", 4);
  std::vector<double> coefficients;
  for (int k = 0; k < std::clamp(size, 0.0, kMost); ++k) {
    coefficients.push_back(
        NumberOf(channel, scale + "_Polynomial_Coefficients[" + std::to_string(k) + "]", 0.0));
  }
  return coefficients;
}

TdmsScale ScaleOf(const TdmsChannel& channel) {
  constexpr double kMost = 100;
  TdmsScale scale;
  if (TextOf(channel, "NI_Scaling_Status") != "unscaled") {
    return scale;
  }
  const double count = NumberOf(channel, "NI_Number_Of_Scales", 0);
  for (int k = 0; k < std::clamp(count, 0.0, kMost); ++k) {
    const std::string name = "NI_Scale[" + std::to_string(k) + "]";
    const std::string type = TextOf(channel, name + "_Scale_Type");
    if (type == "Linear") {
      scale.polynomials.push_back({NumberOf(channel, name + "_Linear_Y_Intercept", 0.0),
                                   NumberOf(channel, name + "_Linear_Slope", 1.0)});
    } else if (type == "Polynomial") {
      scale.polynomials.push_back(CoefficientsOf(channel, name));
    } else if (!type.empty()) {  // the raw data of a card are scale 0, without a kind
      scale.known = false;
    }
  }
  if (!scale.known) {
    scale.polynomials.clear();
  }
  return scale;
}

template <typename T>
void ConvertRun(const std::string& bytes, const TdmsRun& run, const TdmsScale& scale, float* out,
                std::ptrdiff_t stride) {
  for (std::size_t at = 0; at + sizeof(T) <= bytes.size(); at += static_cast<std::size_t>(run.stride)) {
    T value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    value = run.big ? SwappedBytes(value) : value;
    *out = static_cast<float>(scale.Of(static_cast<double>(value)));
    out += stride;
  }
}

using ConvertTdms = void (*)(const std::string&, const TdmsRun&, const TdmsScale&, float*, std::ptrdiff_t);

ConvertTdms ConversionOf(TdmsType type) {
  switch (type) {
    case TdmsType::Int8:
      return ConvertRun<std::int8_t>;
    case TdmsType::UInt8:
    case TdmsType::Boolean:
      return ConvertRun<std::uint8_t>;
    case TdmsType::Int16:
      return ConvertRun<std::int16_t>;
    case TdmsType::UInt16:
      return ConvertRun<std::uint16_t>;
    case TdmsType::Int32:
      return ConvertRun<std::int32_t>;
    case TdmsType::UInt32:
      return ConvertRun<std::uint32_t>;
    case TdmsType::Int64:
      return ConvertRun<std::int64_t>;
    case TdmsType::UInt64:
      return ConvertRun<std::uint64_t>;
    case TdmsType::Float32:
    case TdmsType::Float32WithUnit:
      return ConvertRun<float>;
    default:
      return ConvertRun<double>;
  }
}

bool CanBeChannel(const TdmsChannel& channel) {
  return channel.samples > 0 && BytesOfTdms(channel.type) > 0;
}

/// Channels of one group with the same number of samples: the most there are, and of equal many the longest.
std::vector<std::size_t> LargestSet(const std::vector<TdmsChannel>& channels) {
  std::map<std::pair<std::string, std::int64_t>, std::vector<std::size_t>> sets;
  for (std::size_t c = 0; c < channels.size(); ++c) {
    if (CanBeChannel(channels[c])) {
      sets[{channels[c].group, channels[c].samples}].push_back(c);
    }
  }
  std::vector<std::size_t> largest;
  std::int64_t samples = 0;
  for (const auto& [key, set] : sets) {
    if (set.size() > largest.size() || (set.size() == largest.size() && key.second > samples)) {
      largest = set;
      samples = key.second;
    }
  }
  return largest;
}

class TdmsRecording : public RecordingFile {
 public:
  explicit TdmsRecording(const std::string& path) : file_(path) {
    TdmsFile metadata = ReadTdmsMetadata(file_);
    const std::vector<std::size_t> chosen = LargestSet(metadata.channels);
    if (chosen.empty()) {
      throw FileError("it holds no channel of numbers that can be read");
    }
    TellOthers(metadata, chosen);
    for (const std::size_t c : chosen) {
      channels_.push_back(std::move(metadata.channels[c]));
    }
    Describe();
    found_.title = metadata.texts.contains("name") ? FixedFieldText(metadata.texts["name"]) : "";
    for (const char* name : {"author", "datetime", "description"}) {
      if (metadata.texts.contains(name)) {
        found_.lines.push_back(std::string(name) + " " + FixedFieldText(metadata.texts[name]));
      }
    }
    found_.lines.push_back("TDMS group " + channels_.front().group);
    if (metadata.cut) {
      found_.remarks.emplace_back("The file ends inside its last segment: what is there was read.");
    }
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    const std::int64_t wanted = target.matrix.Samples();
    std::int64_t read = wanted;
    for (std::size_t k = 0; k < target.channels.size(); ++k) {
      const auto done = static_cast<double>(k) / static_cast<double>(target.channels.size());
      read = std::min(read, ReadChannel(channels_[static_cast<std::size_t>(target.channels[k])],
                                        static_cast<int>(k) + 1, read, done, target));
      if (read == 0) {
        return 0;
      }
    }
    StoreTimes(1, read, target);
    CheckFinite(1, read, target);
    return read;
  }

 private:
  void TellOthers(const TdmsFile& metadata, const std::vector<std::size_t>& chosen) {
    std::string others;
    int count = 0;
    for (std::size_t c = 0; c < metadata.channels.size(); ++c) {
      const TdmsChannel& channel = metadata.channels[c];
      if (std::find(chosen.begin(), chosen.end(), c) == chosen.end()) {
        constexpr int kNamed = 5;
        others += ++count <= kNamed
                      ? (others.empty() ? "" : ", ") + FixedFieldText(channel.group + "/" + channel.name)
                      : "";
      }
    }
    if (count > 0) {
      found_.remarks.push_back(CountOf(count, "channel") + " of other groups, lengths or kinds not read: " +
                               others + (count > 5 ? ", ..." : "") + ".");
    }
  }

  void Describe() {
    std::string raw;
    for (const TdmsChannel& channel : channels_) {
      const double step = NumberOf(channel, "wf_increment", 0.0);
      const TdmsScale scale = ScaleOf(channel);
      RecordedChannel recorded{.label = FixedFieldText(channel.name),
                               .units = FixedUnitsText(TextOf(channel, "unit_string")),
                               .rate = RateOfStep(step),
                               .samples = channel.samples};
      if (scale.polynomials.size() == 1 && scale.polynomials[0].size() == 2 && scale.polynomials[0][1] != 0) {
        recorded.gain = scale.polynomials[0][1];
        recorded.offset = scale.polynomials[0][0] / recorded.gain;
      }
      raw += scale.known ? "" : (raw.empty() ? "" : ", ") + recorded.label;
      scales_.push_back(scale);
      found_.channels.push_back(std::move(recorded));
    }
    if (!raw.empty()) {
      found_.remarks.push_back(
          "Counts as the card gave them, since their scale is of a kind that is not read: " + raw + ".");
    }
  }

  // A step is the nearest 64-bit number to 1/rate: twelve digits of the rate are meant.
  static double RateOfStep(double step) {
    constexpr int kDigits = 12;
    const double rate = step > 0 ? UsableRate(1 / step) : 0.0;
    if (rate == 0) {
      return 0.0;
    }
    const double unit = std::pow(10.0, std::floor(std::log10(rate)) + 1 - kDigits);
    return std::round(rate / unit) * unit;
  }

  // Returns the samples that are there, at most `wanted`; 0 when it was stopped.
  std::int64_t ReadChannel(const TdmsChannel& channel, int column, std::int64_t wanted, double done,
                           const SampleTarget& target) {
    constexpr std::int64_t kReadAtOnce = std::int64_t{4} << 20;
    const ConvertTdms convert = ConversionOf(channel.type);
    const TdmsScale& scale = scales_[static_cast<std::size_t>(&channel - channels_.data())];
    const std::int64_t each = BytesOfTdms(channel.type);
    std::int64_t row = 0;
    for (const TdmsRun& run : channel.runs) {
      const std::int64_t atOnce = std::max<std::int64_t>(1, kReadAtOnce / run.stride);
      for (std::int64_t first = 0; first < run.count && row < wanted; first += atOnce) {
        const std::int64_t count = std::min({atOnce, run.count - first, wanted - row});
        const std::string bytes =
            ReadBytes(file_, run.offset + first * run.stride, (count - 1) * run.stride + each);
        const std::int64_t there = static_cast<std::int64_t>(bytes.size()) < each
                                       ? 0
                                       : (static_cast<std::int64_t>(bytes.size()) - each) / run.stride + 1;
        convert(bytes, run, scale, target.matrix.Frame(row + 1) + column, target.matrix.Stride());
        row += there;
        const double part = static_cast<double>(row) / static_cast<double>(wanted);
        if (target.turn(done + part / static_cast<double>(target.channels.size()))) {
          return 0;  // the other channels would end elsewhere
        }
        if (there < count) {
          return row;  // the file has become shorter
        }
      }
    }
    return row;
  }

  InputFile file_;
  std::vector<TdmsChannel> channels_;
  std::vector<TdmsScale> scales_;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenTdms(const std::string& path) {
  return std::make_unique<TdmsRecording>(path);
}

}  // namespace velmora
