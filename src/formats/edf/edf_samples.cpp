#include "formats/edf/edf_samples.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/trial/transpose.hpp"
#include "core/trial/trial.hpp"
#include "formats/recording/scale_samples.hpp"

namespace velmora {
namespace {

// Of every column, side by side before they are turned into frames.
constexpr std::int64_t kTile = 256;
constexpr std::int64_t kTileStride = kTile + 16;  // keeps the columns out of each other's cache sets

std::int32_t Count24(const char* bytes, std::int64_t index) {
  std::array<unsigned char, 3> b{};
  std::memcpy(b.data(), bytes + 3 * index, b.size());
  const std::uint32_t high = static_cast<std::uint32_t>(b[2]) << 24U;
  const std::uint32_t low = static_cast<std::uint32_t>(b[1]) << 16U | static_cast<std::uint32_t>(b[0]) << 8U;
  return static_cast<std::int32_t>(high | low) / 256;  // the sign is that of the third byte
}

std::int32_t LimitOf(double limit) {
  return static_cast<std::int32_t>(std::clamp(limit, -2147483648.0, 2147483647.0));
}

// Samples from `first` of a record on.
void Convert(bool isBdf, const char* bytes, std::int64_t first, std::int64_t count, EdfColumn& column,
             float* to) {
  const std::int32_t lowest = LimitOf(column.lowest);
  const std::int32_t highest = LimitOf(column.highest);
  if (!isBdf) {
    column.atLimit += ScaleRun({.counts = bytes + 2 * first,
                                .samples = count,
                                .offset = column.added,
                                .gain = column.gain,
                                .lowest = lowest,
                                .highest = highest,
                                .out = to});
    return;
  }
  for (std::int64_t i = 0; i < count; ++i) {
    const std::int32_t value = Count24(bytes, first + i);
    column.atLimit += value <= lowest || value >= highest ? 1 : 0;
    to[i] = static_cast<float>((value + column.added) * column.gain);
  }
}

// Columns of one rate: tile by tile into frames.
void StoreTogether(const char* record, bool isBdf, std::vector<EdfColumn>& columns, std::int64_t at,
                   SampleMatrix& matrix) {
  static thread_local std::array<float, kMaxChannels * kTileStride> rows;
  const std::int64_t samples = std::min(columns.front().samples, matrix.Samples() - at);
  for (std::int64_t done = 0; done < samples; done += kTile) {
    const std::int64_t count = std::min(kTile, samples - done);
    for (std::size_t k = 0; k < columns.size(); ++k) {
      Convert(isBdf, record + columns[k].offset, done, count, columns[k],
              rows.data() + static_cast<std::int64_t>(k) * kTileStride);
    }
    RowsToFrames(rows.data(), kTileStride, static_cast<int>(columns.size()), count,
                 matrix.Frame(at + done + 1) + 1, matrix.Stride());
  }
}

void StoreAlone(const char* record, bool isBdf, EdfColumn& column, std::int64_t at, const ChannelView& to) {
  std::array<float, kTile> row{};
  const std::int64_t samples = std::min(column.samples, to.size() - at);
  for (std::int64_t done = 0; done < samples; done += kTile) {
    const std::int64_t count = std::min(kTile, samples - done);
    Convert(isBdf, record + column.offset, done, count, column, row.data());
    for (std::int64_t i = 0; i < count; ++i) {
      to[at + done + i] = row[static_cast<std::size_t>(i)];
    }
  }
}

}  // namespace

void StoreEdfRecord(const char* record, bool isBdf, std::vector<EdfColumn>& columns, std::int64_t number,
                    SampleMatrix& matrix) {
  const bool oneRate = std::all_of(columns.begin(), columns.end(), [&columns](const EdfColumn& column) {
    return column.samples == columns.front().samples;
  });
  if (oneRate) {
    StoreTogether(record, isBdf, columns, number * columns.front().samples, matrix);
    return;
  }
  for (std::size_t k = 0; k < columns.size(); ++k) {
    StoreAlone(record, isBdf, columns[k], number * columns[k].samples,
               matrix.Channel(static_cast<int>(k) + 1));
  }
}

}  // namespace velmora
