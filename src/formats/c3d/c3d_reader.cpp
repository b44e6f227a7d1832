#include "formats/c3d/c3d_reader.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/c3d/c3d_header.hpp"
#include "formats/c3d/c3d_layout.hpp"
#include "formats/c3d/c3d_plates.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

// An offset that went over the end of its word.
constexpr double kOverflown = -32768.0;

template <typename T>
T ItemAt(const std::vector<T>& list, std::size_t index, T otherwise) {
  return index < list.size() ? list[index] : otherwise;
}

InterleavedLayout AnalogLayoutOf(const C3dHead& head) {
  return {.offset = head.dataAt,
          .skipped = head.points * 4 * (head.floats ? 4 : 2),
          .samplesPerBlock = head.samplesPerFrame,
          .channels = head.channels,
          .type = head.floats ? SampleType::Float32 : SampleType::Int16,
          .order = head.order};
}

/// What the file says of itself, in lines.
std::vector<std::string> LinesAbout(const C3dHead& head) {
  const auto first = [&head](const char* group, const char* name) {
    const std::vector<std::string> texts = head.parameters.Texts(group, name);
    return texts.empty() ? std::string() : texts.front();
  };
  std::vector<std::string> lines;
  const auto add = [&lines](const std::string& what, const std::string& text) {
    if (!text.empty()) {
      lines.push_back(what + text);
    }
  };
  add("Subject: ", first("SUBJECTS", "NAMES"));
  std::string device = first("MANUFACTURER", "COMPANY");
  const std::string software = first("MANUFACTURER", "SOFTWARE");
  device += (device.empty() || software.empty() ? "" : ", ") + software;
  add("Recorded with: ", device);
  if (head.StartTime() > 0) {
    lines.push_back("The recording starts at " + FormatNumber(head.StartTime(), "0.000") + " s, frame " +
                    std::to_string(head.firstFrame));
  }
  lines.insert(lines.end(), head.lines.begin(), head.lines.end());
  return lines;
}

/// The analog channels of a file.
class C3dAnalogFile : public RecordingFile {
 public:
  C3dAnalogFile(const std::string& path, std::unique_ptr<C3dHead> head)
      : file_(path), head_(std::move(head)), layout_(AnalogLayoutOf(*head_)) {
    isUnsigned_ = ItemAt<std::string>(head_->parameters.Texts("ANALOG", "FORMAT"), 0, "") == "UNSIGNED";
    if (isUnsigned_ && !head_->floats) {
      layout_.type = SampleType::UInt16;
    }
    found_.promised = head_->frames * head_->samplesPerFrame;
    samples_ = std::min(layout_.SamplesIn(file_.Size()), found_.promised);
    Describe();
    TakeScalings();
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    MendOffsets(target.channels);
    return ReadInterleaved(file_, layout_, scalings_, target);
  }

 private:
  void Describe() {
    const C3dParameters& parameters = head_->parameters;
    const std::vector<std::string> labels = parameters.LongTexts("ANALOG", "LABELS");
    const std::vector<std::string> units = parameters.LongTexts("ANALOG", "UNITS");
    for (std::int64_t c = 0; c < head_->channels; ++c) {
      const auto k = static_cast<std::size_t>(c);
      found_.channels.push_back({.label = ItemAt<std::string>(labels, k, ""),
                                 .units = ItemAt<std::string>(units, k, ""),
                                 .rate = head_->analogRate,
                                 .samples = samples_});
    }
    found_.lines = LinesAbout(*head_);
    if (const std::int64_t bits = parameters.Count("ANALOG", "BITS", 0); bits > 0) {
      found_.lines.push_back("Converter: " + std::to_string(bits) + " bits");
    }
    if (head_->points > 0) {
      found_.lines.push_back(CountOf(head_->points, "point") + " at " +
                             PlainNumber(static_cast<float>(head_->frameRate)) + " Hz, not read");
    }
    found_.events = C3dEvents(*head_);
    found_.plates = C3dPlates(*head_);
    found_.remarks = head_->remarks;
  }

  void TakeScalings() {
    const C3dParameters& parameters = head_->parameters;
    const std::vector<double> scales = parameters.LongNumbers("ANALOG", "SCALE");
    std::vector<double> offsets = parameters.LongNumbers("ANALOG", "OFFSET", isUnsigned_);
    if (offsets.empty()) {
      offsets = parameters.LongNumbers("ANALOG", "OFFSETS", isUnsigned_);
    }
    double general = parameters.Number("ANALOG", "GEN_SCALE", 1.0);
    if (general == 0) {
      general = 1.0;
      found_.remarks.emplace_back("The general scale of the analog channels is 0; 1 was taken.");
    }
    layout_.general = general;
    for (std::size_t c = 0; c < found_.channels.size(); ++c) {
      const Scaling scaling{.offset = -ItemAt(offsets, c, 0.0), .gain = ItemAt(scales, c, 1.0)};
      if (!std::isfinite(scaling.offset) || !std::isfinite(scaling.gain * general)) {
        throw FileError("the scale of channel " + std::to_string(c + 1) + " is no number");
      }
      scalings_.push_back(scaling);
      found_.channels[c].offset = scaling.offset;
      found_.channels[c].gain = scaling.gain * general;
    }
  }

  // An offset of -32768 among signed numbers that are never negative was meant to be 32768.
  void MendOffsets(std::span<const int> channels) {
    std::vector<int> doubtful;
    for (const int c : channels) {
      if (!isUnsigned_ && scalings_[static_cast<std::size_t>(c)].offset == -kOverflown) {
        doubtful.push_back(c);
      }
    }
    if (doubtful.empty()) {
      return;
    }
    InterleavedLayout layout = layout_;
    layout.general = 1.0;
    SampleMatrix raw;
    raw.Allocate(static_cast<int>(doubtful.size()), samples_, SampleMatrix::Fill::None);
    const std::int64_t read = ReadInterleaved(
        file_, layout, {},
        {.matrix = raw, .channels = doubtful, .rate = 1.0, .turn = [](double) { return false; }});
    for (std::size_t k = 0; k < doubtful.size(); ++k) {
      const ChannelView view = raw.Channel(static_cast<int>(k) + 1);
      std::int64_t i = 0;
      while (i < read && view[i] >= 0) {
        ++i;
      }
      const auto c = static_cast<std::size_t>(doubtful[k]);
      if (i == read) {
        scalings_[c].offset = kOverflown;
        found_.channels[c].offset = kOverflown;
      }
    }
  }

  InputFile file_;
  std::unique_ptr<C3dHead> head_;
  InterleavedLayout layout_;
  bool isUnsigned_ = false;
  std::int64_t samples_ = 0;
  std::vector<Scaling> scalings_;
};

/// The coordinates of the points of a file without analog channels.
class C3dPointFile : public RecordingFile {
 public:
  C3dPointFile(const std::string& path, std::unique_ptr<C3dHead> head) : file_(path), head_(std::move(head)) {
    layout_ = {.offset = head_->dataAt,
               .channels = head_->points * kWords,
               .type = head_->floats ? SampleType::Float32 : SampleType::Int16,
               .order = head_->order};
    found_.promised = head_->frames;
    const std::int64_t samples = std::min(layout_.SamplesIn(file_.Size()), head_->frames);
    const std::vector<std::string> labels = head_->parameters.LongTexts("POINT", "LABELS");
    const std::string units = ItemAt<std::string>(head_->parameters.Texts("POINT", "UNITS"), 0, "");
    for (std::int64_t p = 0; p < head_->points; ++p) {
      const std::string label = ItemAt<std::string>(labels, static_cast<std::size_t>(p), "");
      for (const char* axis : {" X", " Y", " Z"}) {
        found_.channels.push_back({.label = (label.empty() ? "Point " + std::to_string(p + 1) : label) + axis,
                                   .units = units,
                                   .rate = head_->frameRate,
                                   .samples = samples,
                                   .gain = head_->floats ? 1.0 : std::abs(head_->pointScale)});
      }
    }
    found_.lines = LinesAbout(*head_);
    found_.events = C3dEvents(*head_);
    found_.remarks = head_->remarks;
    found_.remarks.emplace_back(
        "The file holds no analog channels: the coordinates of its points were read.");
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    const std::int64_t frameBytes = layout_.BlockBytes();
    std::vector<float> words(static_cast<std::size_t>(head_->points * kWords));
    std::string frame(static_cast<std::size_t>(frameBytes), '\0');
    std::int64_t missing = 0;
    std::int64_t done = 0;
    for (; done < target.matrix.Samples(); ++done) {
      constexpr std::int64_t framesInATurn = 1000;
      if (done % framesInATurn == 0 &&
          target.turn(static_cast<double>(done) / static_cast<double>(target.matrix.Samples()))) {
        break;
      }
      if (file_.ReadAt(head_->dataAt + done * frameBytes, frame.data(), frame.size()) < frame.size()) {
        break;
      }
      missing += Convert(frame, target, target.matrix.Frame(done + 1) + 1);
    }
    StoreTimes(1, done, target);
    CheckFinite(1, done, target);
    if (missing > 0) {
      found_.remarks.push_back(FormatCount(missing) +
                               " coordinates are of points that were not seen; they are 0.");
    }
    return done;
  }

 private:
  static constexpr std::int64_t kWords = 4;  // of a point: x, y, z and what the cameras saw

  // One frame; returns the coordinates that are missing.
  std::int64_t Convert(const std::string& frame, const SampleTarget& target, float* out) const {
    const ByteReader reader(frame, head_->order);
    const auto word = [&](std::size_t index) {
      return head_->floats ? double{reader.At<float>(4 * index)}
                           : static_cast<double>(reader.At<std::int16_t>(2 * index));
    };
    std::int64_t missing = 0;
    for (const int channel : target.channels) {
      const auto point = static_cast<std::size_t>(channel / 3);
      const double value = word(kWords * point + static_cast<std::size_t>(channel % 3));
      const bool seen = word(kWords * point + 3) >= 0 && value != c3d::kMissingPoint;
      missing += seen ? 0 : 1;
      *out++ =
          seen ? static_cast<float>(value * found_.channels[static_cast<std::size_t>(channel)].gain) : 0.0F;
    }
    return missing;
  }

  InputFile file_;
  std::unique_ptr<C3dHead> head_;
  InterleavedLayout layout_;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenC3d(const std::string& path) {
  auto head = std::make_unique<C3dHead>(InputFile(path));
  if (head->channels > 0) {
    return std::make_unique<C3dAnalogFile>(path, std::move(head));
  }
  if (head->points > 0) {
    return std::make_unique<C3dPointFile>(path, std::move(head));
  }
  throw FileError("the file holds neither analog channels nor points");
}

}  // namespace velmora
