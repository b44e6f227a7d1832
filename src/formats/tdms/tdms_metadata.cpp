#include "formats/tdms/tdms_metadata.hpp"

#include <algorithm>
#include <array>

#include "formats/bytes/byte_reader.hpp"

namespace velmora {
namespace {

constexpr std::uint32_t kHasMetadata = 2;
constexpr std::uint32_t kNewList = 4;
constexpr std::uint32_t kInterleaved = 0x20;
constexpr std::uint32_t kBigEndian = 0x40;
constexpr std::int64_t kLeadInBytes = 28;
constexpr std::uint32_t kNoRawData = 0xFFFFFFFF;
constexpr std::uint32_t kAsBefore = 0;
constexpr std::uint32_t kDaqMxFormat = 0x1269;
constexpr std::uint32_t kDaqMxDigital = 0x126A;
constexpr std::uint32_t kDaqMxDigitalLine = 0x1369;
// By the codes that such raw data have of their own.
constexpr std::array kDaqMxTypes = {TdmsType::UInt8, TdmsType::Int8,   TdmsType::UInt16,
                                    TdmsType::Int16, TdmsType::UInt32, TdmsType::Int32};
constexpr std::int64_t kMostMetadata = std::int64_t{256} << 20;

struct TdmsLeadIn {
  std::uint32_t mask = 0;
  std::int64_t at = 0;
  std::int64_t rawAt = 0;
  std::int64_t next = 0;  // end of this segment
  bool cut = false;

  [[nodiscard]] bool Has(std::uint32_t flag) const { return (mask & flag) != 0; }
};

/// How an object's values lie in the raw data of a segment.
struct TdmsRawIndex {
  bool present = false;
  TdmsType type = TdmsType::Void;
  std::int64_t count = 0;  // in one chunk
  // Of raw data from a card: one buffer of whole scans.
  bool daqMx = false;
  std::int64_t scanBytes = 0;
  std::int64_t offsetInScan = 0;
};

std::string TakeTdmsString(ByteReader& reader) {
  return std::string(reader.TakeBytes(reader.Take<std::uint32_t>()));
}

// "/'group'/'channel'": quotes inside are doubled.
std::vector<std::string> TdmsPathParts(const std::string& path) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at + 1 < path.size();) {
    if (path[at] != '/' || path[at + 1] != '\'') {
      break;
    }
    std::string part;
    for (at += 2; at < path.size(); ++at) {
      if (path[at] != '\'') {
        part += path[at];
      } else if (at + 1 < path.size() && path[at + 1] == '\'') {
        part += path[at++];
      } else {
        ++at;
        break;
      }
    }
    parts.push_back(part);
  }
  return parts;
}

double TakeTdmsNumber(ByteReader& reader, TdmsType type) {
  switch (type) {
    case TdmsType::Int8:
      return reader.Take<std::int8_t>();
    case TdmsType::Int16:
      return reader.Take<std::int16_t>();
    case TdmsType::Int32:
      return reader.Take<std::int32_t>();
    case TdmsType::Int64:
      return static_cast<double>(reader.Take<std::int64_t>());
    case TdmsType::UInt8:
    case TdmsType::Boolean:
      return reader.Take<std::uint8_t>();
    case TdmsType::UInt16:
      return reader.Take<std::uint16_t>();
    case TdmsType::UInt32:
      return reader.Take<std::uint32_t>();
    case TdmsType::UInt64:
      return static_cast<double>(reader.Take<std::uint64_t>());
    case TdmsType::Float32:
    case TdmsType::Float32WithUnit:
      return static_cast<double>(reader.Take<float>());
    case TdmsType::Float64:
    case TdmsType::Float64WithUnit:
      return reader.Take<double>();
    default:
      throw FileError("it has a property of a type that is not known");
  }
}

class TdmsMetadataReader {
 public:
  explicit TdmsMetadataReader(const InputFile& file) : file_(file) {}

  TdmsFile Read() {
    std::int64_t at = 0;
    while (at + kLeadInBytes <= file_.Size()) {
      const TdmsLeadIn segment = ReadTdmsLeadIn(at);
      if (segment.Has(kHasMetadata)) {
        ReadObjects(segment);
      }
      PlaceRawData(segment);
      found_.cut = found_.cut || segment.cut;
      at = segment.next;
    }
    if (at == 0) {
      throw FileError("the file ends inside its header");
    }
    return std::move(found_);
  }

 private:
  [[nodiscard]] TdmsLeadIn ReadTdmsLeadIn(std::int64_t at) const {
    constexpr std::uint64_t kToTheEnd = ~std::uint64_t{0};
    const std::string bytes = ReadBytes(file_, at, kLeadInBytes);
    if (!bytes.starts_with("TDSm")) {
      throw FileError(at == 0 ? "this is no TDMS file"
                              : "a segment does not start where the one before it ends");
    }
    TdmsLeadIn segment{.mask = ByteReader(bytes).At<std::uint32_t>(4), .at = at};
    const ByteReader reader(bytes, segment.Has(kBigEndian) ? ByteOrder::Big : ByteOrder::Little);
    const auto next = reader.At<std::uint64_t>(12);
    const auto raw = reader.At<std::uint64_t>(20);
    const auto rest = static_cast<std::uint64_t>(file_.Size() - at - kLeadInBytes);
    segment.cut = next > rest;
    segment.next = at + kLeadInBytes + static_cast<std::int64_t>(std::min(next, rest));
    // Of a segment whose writing was interrupted the place of the raw data may be unknown, too.
    if (raw > rest && raw != kToTheEnd) {
      throw FileError("its header points behind the end of the file");
    }
    segment.rawAt = at + kLeadInBytes + static_cast<std::int64_t>(std::min(raw, rest));
    return segment;
  }

  void ReadObjects(const TdmsLeadIn& segment) {
    const std::int64_t size = segment.rawAt - segment.at - kLeadInBytes;
    if (size > kMostMetadata) {
      throw FileError("its header is larger than any that is known");
    }
    const std::string bytes = ReadBytes(file_, segment.at + kLeadInBytes, size);
    ByteReader reader(bytes, segment.Has(kBigEndian) ? ByteOrder::Big : ByteOrder::Little);
    if (segment.Has(kNewList)) {
      order_.clear();
    }
    const auto objects = reader.Take<std::uint32_t>();
    for (std::uint32_t k = 0; k < objects; ++k) {
      ReadObject(reader);
    }
  }

  void ReadObject(ByteReader& reader) {
    const std::string path = TakeTdmsString(reader);
    const std::vector<std::string> parts = TdmsPathParts(path);
    TdmsRawIndex index = TakeIndex(reader, path);
    const bool channel = parts.size() == 2;
    TdmsChannel* to = channel ? &ChannelOf(path, parts) : nullptr;
    if (channel && index.present) {
      indices_[path] = index;
      if (std::find(order_.begin(), order_.end(), path) == order_.end()) {
        order_.push_back(path);
      }
      to->type = index.type;
    } else if (channel) {
      std::erase(order_, path);
    }
    const auto properties = reader.Take<std::uint32_t>();
    for (std::uint32_t k = 0; k < properties; ++k) {
      TakeProperty(reader, to, parts.empty());
    }
  }

  TdmsRawIndex TakeIndex(ByteReader& reader, const std::string& path) {
    const auto length = reader.Take<std::uint32_t>();
    if (length == kNoRawData) {
      return {};
    }
    if (length == kAsBefore) {
      const auto before = indices_.find(path);
      if (before == indices_.end()) {
        throw FileError("it refers to a channel that was not described");
      }
      return before->second;
    }
    if (length == kDaqMxFormat || length == kDaqMxDigital || length == kDaqMxDigitalLine) {
      return TakeDaqMxIndex(reader, length);
    }
    TdmsRawIndex index{.present = true, .type = static_cast<TdmsType>(reader.Take<std::uint32_t>())};
    reader.Skip(4);  // dimensions, always 1
    index.count = TakeCount(reader);
    if (index.type == TdmsType::Text) {
      reader.Skip(8);  // bytes of all texts
    }
    return index;
  }

  std::int64_t TakeCount(ByteReader& reader) {
    const auto count = reader.Take<std::uint64_t>();
    if (count > static_cast<std::uint64_t>(INT64_MAX) / 16) {
      throw FileError("it counts more samples than a file can hold");
    }
    return static_cast<std::int64_t>(count);
  }

  // Scalers and the widths of the buffers. Channels of one buffer, 16 or 32 bits each, are read.
  TdmsRawIndex TakeDaqMxIndex(ByteReader& reader, std::uint32_t kind) {
    TdmsRawIndex index{.present = true, .type = TdmsType::DaqMx, .daqMx = true};
    reader.Skip(8);  // type and dimensions
    index.count = TakeCount(reader);
    const auto scalers = reader.Take<std::uint32_t>();
    for (std::uint32_t k = 0; k < scalers; ++k) {
      const auto type = reader.Take<std::uint32_t>();
      const auto buffer = reader.Take<std::uint32_t>();
      const auto offset = reader.Take<std::uint32_t>();
      reader.Skip(kind == kDaqMxFormat ? 8 : 5);
      if (k == 0 && buffer == 0 && kind == kDaqMxFormat && type < kDaqMxTypes.size()) {
        index.offsetInScan = offset;
        index.type = kDaqMxTypes.at(type);
      }
    }
    const auto buffers = reader.Take<std::uint32_t>();
    for (std::uint32_t k = 0; k < buffers; ++k) {
      const auto width = reader.Take<std::uint32_t>();
      index.scanBytes = k == 0 ? width : index.scanBytes;
    }
    if (buffers != 1 || index.offsetInScan + BytesOfTdms(index.type) > index.scanBytes) {
      index.type = TdmsType::DaqMx;
    }
    return index;
  }

  void TakeProperty(ByteReader& reader, TdmsChannel* channel, bool ofFile) {
    constexpr std::size_t kTimeBytes = 16;
    const std::string name = TakeTdmsString(reader);
    const auto type = static_cast<TdmsType>(reader.Take<std::uint32_t>());
    if (type == TdmsType::Text) {
      const std::string text = TakeTdmsString(reader);
      if (channel != nullptr) {
        channel->texts[name] = text;
      } else if (ofFile) {
        found_.texts[name] = text;
      }
    } else if (type == TdmsType::Time) {
      reader.Skip(kTimeBytes);
    } else {
      const double number = TakeTdmsNumber(reader, type);
      if (channel != nullptr) {
        channel->numbers[name] = number;
      }
    }
  }

  TdmsChannel& ChannelOf(const std::string& path, const std::vector<std::string>& parts) {
    const auto [it, isNew] = places_.emplace(path, found_.channels.size());
    if (isNew) {
      found_.channels.push_back({.group = parts[0], .name = parts[1]});
    }
    return found_.channels[it->second];
  }

  /// Bytes of one chunk of the list, 0 when they are not known.
  [[nodiscard]] std::int64_t ChunkBytes() const {
    std::int64_t bytes = 0;
    for (const std::string& path : order_) {
      const TdmsRawIndex& index = indices_.at(path);
      if (index.daqMx) {
        return index.scanBytes > 0 && index.count < INT64_MAX / index.scanBytes
                   ? index.count * index.scanBytes
                   : 0;
      }
      const std::int64_t each = BytesOfTdms(index.type);
      if (each == 0 || index.count > (INT64_MAX - bytes) / each) {
        return 0;
      }
      bytes += index.count * each;
    }
    return bytes;
  }

  /// Whether the list is of channels that a measuring card wrote scan by scan: all of them or none.
  [[nodiscard]] bool ListIsDaqMx() const {
    const auto cards = std::count_if(order_.begin(), order_.end(),
                                     [this](const std::string& path) { return indices_.at(path).daqMx; });
    if (cards > 0 && static_cast<std::size_t>(cards) < order_.size()) {
      throw FileError(
          "a segment in it has samples of a measuring card and others, whose places are not known");
    }
    return cards > 0;
  }

  // The list may stand in the raw data several times over.
  void PlaceRawData(const TdmsLeadIn& segment) {
    constexpr std::int64_t kMostRuns = 1 << 20;
    const bool cards = ListIsDaqMx();
    const std::int64_t chunk = ChunkBytes();
    const std::int64_t raw = segment.next - segment.rawAt;
    if (chunk == 0 || raw <= 0 || order_.empty()) {
      return;
    }
    if (cards || segment.Has(kInterleaved)) {
      PlaceScans(segment, raw);
      return;
    }
    for (std::int64_t at = 0; at < raw; at += chunk) {
      std::int64_t in = 0;
      for (const std::string& path : order_) {
        const TdmsRawIndex& index = indices_.at(path);
        const std::int64_t each = BytesOfTdms(index.type);
        const std::int64_t count = std::clamp<std::int64_t>((raw - at - in) / each, 0, index.count);
        Append(path, {segment.rawAt + at + in, count, each, segment.Has(kBigEndian)});
        in += index.count * each;
      }
      if (++runs_ > kMostRuns) {
        throw FileError("its samples lie in more pieces than any that is known");
      }
    }
  }

  void PlaceScans(const TdmsLeadIn& segment, std::int64_t raw) {
    std::int64_t scan = 0;
    for (const std::string& path : order_) {
      const TdmsRawIndex& index = indices_.at(path);
      scan = index.daqMx ? index.scanBytes : scan + BytesOfTdms(index.type);
    }
    std::int64_t in = 0;
    for (const std::string& path : order_) {
      const TdmsRawIndex& index = indices_.at(path);
      const std::int64_t offset = index.daqMx ? index.offsetInScan : in;
      in += BytesOfTdms(index.type);
      if (scan > 0 && BytesOfTdms(index.type) > 0) {
        Append(path, {segment.rawAt + offset, raw / scan, scan, segment.Has(kBigEndian)});
      }
    }
  }

  void Append(const std::string& path, const TdmsRun& run) {
    if (run.count > 0) {
      TdmsChannel& channel = found_.channels[places_.at(path)];
      channel.runs.push_back(run);
      channel.samples += run.count;
    }
  }

  const InputFile& file_;
  TdmsFile found_;
  std::map<std::string, std::size_t> places_;  // of channels, by path
  std::map<std::string, TdmsRawIndex> indices_;
  std::vector<std::string> order_;  // of the channels in the raw data
  std::int64_t runs_ = 0;
};

}  // namespace

std::int64_t BytesOfTdms(TdmsType type) {
  switch (type) {
    case TdmsType::Int8:
    case TdmsType::UInt8:
    case TdmsType::Boolean:
      return 1;
    case TdmsType::Int16:
    case TdmsType::UInt16:
      return 2;
    case TdmsType::Int32:
    case TdmsType::UInt32:
    case TdmsType::Float32:
    case TdmsType::Float32WithUnit:
      return 4;
    case TdmsType::Int64:
    case TdmsType::UInt64:
    case TdmsType::Float64:
    case TdmsType::Float64WithUnit:
      return 8;
    default:
      return 0;
  }
}

TdmsFile ReadTdmsMetadata(const InputFile& file) {
  return TdmsMetadataReader(file).Read();
}

}  // namespace velmora
