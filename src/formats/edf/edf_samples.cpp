#include "formats/edf/edf_samples.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/trial/transpose.hpp"
#include "core/trial/trial.hpp"

namespace velmora {
namespace {

// Of every column, side by side before they are turned into frames.
constexpr std::int64_t kTile = 256;
constexpr std::int64_t kTileStride = kTile + 16;  // keeps the columns out of each other's cache sets

std::int32_t CountAt(const char* bytes, std::int64_t index, bool isBdf) {
  if (!isBdf) {
    std::int16_t count = 0;
    std::memcpy(&count, bytes + 2 * index, sizeof count);
    return count;
  }
  std::array<unsigned char, 3> b{};
  std::memcpy(b.data(), bytes + 3 * index, b.size());
  const std::uint32_t high = static_cast<std::uint32_t>(b[2]) << 24U;
  const std::uint32_t low = static_cast<std::uint32_t>(b[1]) << 16U | static_cast<std::uint32_t>(b[0]) << 8U;
  return static_cast<std::int32_t>(high | low) / 256;  // the sign is that of the third byte
}

template <bool isBdf>
void Convert(const char* bytes, std::int64_t first, std::int64_t count, EdfColumn& column, float* to) {
  const double added = column.added;
  const double gain = column.gain;
  const auto lowest = static_cast<std::int32_t>(std::clamp(column.lowest, -2147483648.0, 2147483647.0));
  const auto highest = static_cast<std::int32_t>(std::clamp(column.highest, -2147483648.0, 2147483647.0));
  std::int32_t atLimit = 0;
  for (std::int64_t i = 0; i < count; ++i) {
    const std::int32_t value = CountAt(bytes, first + i, isBdf);
    atLimit += static_cast<std::int32_t>(value <= lowest) | static_cast<std::int32_t>(value >= highest);
    to[i] = static_cast<float>((value + added) * gain);
  }
  column.atLimit += atLimit;
}

void ConvertAny(bool isBdf, const char* bytes, std::int64_t first, std::int64_t count, EdfColumn& column,
                float* to) {
  if (isBdf) {
    Convert<true>(bytes, first, count, column, to);
  } else {
    Convert<false>(bytes, first, count, column, to);
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
      ConvertAny(isBdf, record + columns[k].offset, done, count, columns[k],
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
    ConvertAny(isBdf, record + column.offset, done, count, column, row.data());
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
