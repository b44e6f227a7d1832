#include "formats/native_binary/native_samples.hpp"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <tuple>

#include "core/trial/transpose.hpp"
#include "formats/native_binary/native_binary_layout.hpp"

namespace velmora {
namespace {

using native::kFloat;
using native::kPieceSamples;
using native::kPieceStride;

// How far ahead of the reading the system is asked for each row; matters for files not in memory.
constexpr std::int64_t kAheadSamples = 32 * kPieceSamples;
constexpr int kFewestBundleRows = 16;
// A trial of these many bytes is still in the second-level cache when it is used.
constexpr std::int64_t kShortTrial = std::int64_t{1} << 20;

using Loss = NativeSamplesRead::Loss;

struct Source {
  const InputFile& file;
  NativeRows rows;
  std::int64_t samples;  // wanted of each row

  [[nodiscard]] std::int64_t At(int row, std::int64_t sample) const {
    return rows.offset + (row * rows.samples + sample) * kFloat;
  }
};

// Rows first to last, both included.
struct Bundle {
  int first;
  int last;
};

int RowsInBundle(std::int64_t samples, std::int64_t bytes) {
  const std::int64_t fitting = bytes / std::max<std::int64_t>(samples * kFloat, 1);
  return static_cast<int>(std::clamp<std::int64_t>(fitting, kFewestBundleRows, kMaxChannels + 1));
}

void Prefetch(const Source& source, Bundle bundle, std::int64_t sample) {
  const std::int64_t count = std::min(kAheadSamples, source.samples - sample);
  for (int row = bundle.first; row <= bundle.last && count > 0; ++row) {
    source.file.Prefetch(source.At(row, sample), count * kFloat);
  }
}

void Add(std::optional<Loss>& lost, const Loss& more) {
  if (!lost) {
    lost = more;
    return;
  }
  const std::int64_t samples = lost->samples + more.samples;
  if (std::tie(more.row, more.sample) < std::tie(lost->row, lost->sample)) {
    lost = more;
  }
  lost->samples = samples;
}

// One row's piece; what the file does not hold, or the disk does not give, is 0.
void ReadPiece(const Source& source, int row, std::int64_t sample, std::int64_t count, float* piece,
               std::optional<Loss>& lost) {
  const std::int64_t at = source.At(row, sample);
  const std::int64_t there = std::clamp<std::int64_t>((source.file.Size() - at) / kFloat, 0, count);
  std::int64_t got = 0;
  std::string why = "the file became shorter";
  try {
    got = static_cast<std::int64_t>(source.file.ReadAt(at, piece, static_cast<std::size_t>(count * kFloat))) /
          kFloat;
  } catch (const FileError& error) {
    why = error.what();
  }
  std::fill(piece + got, piece + count, 0.0F);
  if (got < there) {
    Add(lost, {.row = row, .sample = sample + got + 1, .samples = there - got, .why = why});
  }
}

// All rows of a short trial, which lie behind each other, by one call of the system. False when they are to
// be read one by one, for what is missing of them.
bool ReadTogether(const Source& source, Bundle bundle, float* rows) {
  if (source.samples < 1 || source.samples > kPieceSamples || source.rows.samples != source.samples) {
    return false;
  }
  const auto bytes = static_cast<std::size_t>((bundle.last - bundle.first + 1) * source.samples * kFloat);
  try {
    return source.file.ReadAt(source.At(bundle.first, 0), rows, bytes) == bytes;
  } catch (const FileError&) {
    return false;
  }
}

void ReadBundle(Trial& trial, ProgressPanel& panel, const Source& source, Bundle bundle, float* pieces,
                std::optional<Loss>& lost) {
  const bool isShort = trial.matrix.Stride() * source.samples * kFloat <= kShortTrial;
  const auto toFrames = isShort ? RowsToFramesInCaches : RowsToFrames;
  if (isShort && ReadTogether(source, bundle, pieces)) {
    toFrames(pieces, source.samples, bundle.last - bundle.first + 1, source.samples,
             trial.matrix.Frame(1) + bundle.first, trial.matrix.Stride());
    return;
  }
  Prefetch(source, bundle, 0);
  for (std::int64_t sample = 0; sample < source.samples; sample += kPieceSamples) {
    if (source.At(bundle.first, sample) >= source.file.Size()) {
      break;  // nothing more in the first row, so nothing in the later ones: the matrix is 0 already
    }
    if (sample % kAheadSamples == 0) {
      if (panel.GiveTurn()) {
        bundle.last = bundle.first;  // the first row's end is where Cancel counts: the others are not kept
      }
      Prefetch(source, bundle, sample + kAheadSamples);
    }
    const std::int64_t count = std::min(kPieceSamples, source.samples - sample);
    for (int row = bundle.first; row <= bundle.last; ++row) {
      ReadPiece(source, row, sample, count, pieces + (row - bundle.first) * kPieceStride, lost);
    }
    toFrames(pieces, kPieceStride, bundle.last - bundle.first + 1, count,
             trial.matrix.Frame(sample + 1) + bundle.first, trial.matrix.Stride());
  }
}

void ShowRow(ProgressPanel& panel, int row, int channels) {
  if (row == 0) {
    panel.SetStatus("Header read.  Reading times.");
    panel.SetValue(1);
  } else {
    panel.SetStatus("Reading channel " + std::to_string(row) + " of " + std::to_string(channels) + ".");
  }
}

}  // namespace

NativeSamplesRead ReadNativeSamples(Trial& trial, ProgressPanel& panel, const InputFile& file,
                                    NativeRows rows, std::int64_t bundleBytes) {
  const int channels = trial.NChan;
  const Source source{file, rows, trial.NData};
  NativeSamplesRead read;
  const bool complete = source.At(channels + 1, 0) <= file.Size();
  trial.AllocateData(channels, source.samples,
                     complete ? SampleMatrix::Fill::None : SampleMatrix::Fill::Zero);
  const int step = std::min(RowsInBundle(source.samples, bundleBytes), channels + 1);
  const auto pieces = std::make_unique_for_overwrite<float[]>(static_cast<std::size_t>(step * kPieceStride));
  for (int first = 0; first <= channels; first += step) {
    const Bundle bundle{first, std::min(first + step - 1, channels)};
    ReadBundle(trial, panel, source, bundle, pieces.get(), read.lost);
    for (int row = bundle.first; row <= bundle.last; ++row) {
      ShowRow(panel, row, channels);
      if (panel.GiveTurn()) {
        read.cancelledAfter = row;
        return read;
      }
      panel.SetValue(row + 2);
    }
  }
  return read;
}

}  // namespace velmora
