#include "formats/hdf5/hdf5_reader.hpp"

#include <hdf5.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <vector>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/recording/columns_in_memory.hpp"

namespace velmora {
namespace {

/// A handle of the library, closed by its own function.
class Hdf5Handle {
 public:
  Hdf5Handle(hid_t id, herr_t (*close)(hid_t)) : id_(id), close_(close) {}
  Hdf5Handle(const Hdf5Handle&) = delete;
  Hdf5Handle& operator=(const Hdf5Handle&) = delete;
  ~Hdf5Handle() {
    if (id_ >= 0) {
      close_(id_);
    }
  }
  [[nodiscard]] bool Opened() const { return id_ >= 0; }
  operator hid_t() const { return id_; }  // NOLINT: the library's functions take it

 private:
  hid_t id_;
  herr_t (*close_)(hid_t);
};

/// A dataset of numbers; its columns are channels.
struct Hdf5Dataset {
  std::string path;
  std::string group;
  std::string name;
  hsize_t rows = 0;
  hsize_t columns = 1;

  [[nodiscard]] hsize_t Longer() const { return std::max(rows, columns); }
  [[nodiscard]] hsize_t Shorter() const { return std::min(rows, columns); }
};

struct Hdf5Listing {
  hid_t file;
  std::int64_t fileBytes;
  std::string group;
  int depth;
  std::vector<Hdf5Dataset>& datasets;
  std::string& others;
};

void NoteHdf5Other(Hdf5Listing& listing, const std::string& path) {
  constexpr std::size_t kTold = 300;
  if (listing.others.size() < kTold) {
    listing.others += (listing.others.empty() ? "" : ", ") + path;
  }
}

void ListDataset(Hdf5Listing& listing, const std::string& name) {
  const std::string path = listing.group + "/" + name;
  const Hdf5Handle dataset(H5Dopen2(listing.file, path.c_str(), H5P_DEFAULT), H5Dclose);
  if (!dataset.Opened()) {
    NoteHdf5Other(listing, path);
    return;
  }
  const Hdf5Handle space(H5Dget_space(dataset), H5Sclose);
  const Hdf5Handle type(H5Dget_type(dataset), H5Tclose);
  const H5T_class_t kind = H5Tget_class(type);
  const int rank = H5Sget_simple_extent_ndims(space);
  std::array<hsize_t, 2> sizes = {0, 1};
  if ((kind != H5T_INTEGER && kind != H5T_FLOAT) || rank < 1 || rank > 2 ||
      H5Sget_simple_extent_dims(space, sizes.data(), nullptr) < 0 || sizes[0] == 0 || sizes[1] == 0) {
    NoteHdf5Other(listing, path);
    return;
  }
  // What takes no room in the file would be made of nothing.
  constexpr hsize_t kMost = hsize_t{1} << 40;
  const bool countable = sizes[0] < kMost && sizes[1] < kMost / sizes[0];
  if (!countable ||
      IsTooLargeFor(static_cast<std::int64_t>(sizes[0] * sizes[1] * sizeof(double)), listing.fileBytes)) {
    throw FileError(path + " counts more values than the file can hold");
  }
  listing.datasets.push_back(
      {.path = path, .group = listing.group, .name = name, .rows = sizes[0], .columns = sizes[1]});
}

herr_t ListLink(hid_t group, const char* name, const H5L_info_t* info, void* data) noexcept;

void ListGroup(Hdf5Listing& listing) {
  const std::string path = listing.group.empty() ? "/" : listing.group;
  const Hdf5Handle group(H5Gopen2(listing.file, path.c_str(), H5P_DEFAULT), H5Gclose);
  if (group.Opened()) {
    H5Literate(group, H5_INDEX_NAME, H5_ITER_INC, nullptr, ListLink, &listing);
  }
}

void ListHardLink(hid_t group, const char* name, Hdf5Listing& listing) {
  constexpr int kDeepest = 6;
  constexpr std::size_t kMostDatasets = 10000;
  H5O_info_t object;
  if (listing.datasets.size() >= kMostDatasets ||
      H5Oget_info_by_name2(group, name, &object, H5O_INFO_BASIC, H5P_DEFAULT) < 0) {
    return;
  }
  if (object.type == H5O_TYPE_DATASET) {
    ListDataset(listing, name);
  } else if (object.type == H5O_TYPE_GROUP && listing.depth < kDeepest) {
    Hdf5Listing inner{listing.file,      listing.fileBytes, listing.group + "/" + name,
                      listing.depth + 1, listing.datasets,  listing.others};
    ListGroup(inner);
  }
}

// The library is C: nothing may be thrown through it.
std::string* TooLargeInHdf5() {
  static thread_local std::string words;
  return &words;
}

herr_t ListLink(hid_t group, const char* name, const H5L_info_t* info, void* data) noexcept {
  try {
    if (info->type == H5L_TYPE_HARD) {
      ListHardLink(group, name, *static_cast<Hdf5Listing*>(data));
    }
    return 0;
  } catch (const std::exception& error) {
    *TooLargeInHdf5() = error.what();
    return -1;
  }
}

// A number at an object; 0: there is none of that name.
double NumberAttribute(hid_t file, const std::string& object, const std::string& name) {
  if (H5Aexists_by_name(file, object.c_str(), name.c_str(), H5P_DEFAULT) <= 0) {
    return 0.0;
  }
  const Hdf5Handle attribute(H5Aopen_by_name(file, object.c_str(), name.c_str(), H5P_DEFAULT, H5P_DEFAULT),
                             H5Aclose);
  const Hdf5Handle type(H5Aget_type(attribute), H5Tclose);
  const Hdf5Handle space(H5Aget_space(attribute), H5Sclose);
  const H5T_class_t kind = H5Tget_class(type);
  double value = 0.0;
  const bool oneNumber =
      (kind == H5T_INTEGER || kind == H5T_FLOAT) && H5Sget_simple_extent_npoints(space) == 1;
  return oneNumber && H5Aread(attribute, H5T_NATIVE_DOUBLE, &value) >= 0 ? value : 0.0;
}

std::string TextAttribute(hid_t file, const std::string& object, const std::string& name) {
  if (H5Aexists_by_name(file, object.c_str(), name.c_str(), H5P_DEFAULT) <= 0) {
    return {};
  }
  const Hdf5Handle attribute(H5Aopen_by_name(file, object.c_str(), name.c_str(), H5P_DEFAULT, H5P_DEFAULT),
                             H5Aclose);
  const Hdf5Handle type(H5Aget_type(attribute), H5Tclose);
  constexpr std::size_t kLongest = 1000;
  const std::size_t size = H5Tget_size(type);
  if (H5Tget_class(type) != H5T_STRING || H5Tis_variable_str(type) != 0 || size == 0 || size > kLongest) {
    return {};
  }
  std::string text(size, '\0');
  const Hdf5Handle space(H5Aget_space(attribute), H5Sclose);
  if (H5Sget_simple_extent_npoints(space) != 1 || H5Aread(attribute, type, text.data()) < 0) {
    return {};
  }
  return FixedFieldText(text);
}

double Hdf5RateAt(hid_t file, const std::string& object) {
  for (const char* name : {"sampling rate", "sampling_rate", "SamplingRate", "SampleRate", "sample_rate",
                           "samplerate", "sfreq", "fs", "Fs", "rate", "FrameRate"}) {
    if (const double rate = NumberAttribute(file, object, name); rate > 0 && std::isfinite(rate)) {
      return rate;
    }
  }
  return 0.0;
}

std::vector<double> ReadDataset(hid_t file, const Hdf5Dataset& dataset) {
  const Hdf5Handle handle(H5Dopen2(file, dataset.path.c_str(), H5P_DEFAULT), H5Dclose);
  std::vector<double> values(static_cast<std::size_t>(dataset.rows * dataset.columns));
  if (!handle.Opened() ||
      H5Dread(handle, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()) < 0) {
    throw FileError("the samples of " + dataset.path + " cannot be read");
  }
  return values;
}

bool IsRawGroup(const std::string& group) {
  return group.ends_with("/raw") && std::count(group.begin(), group.end(), '/') == 2;
}

class Hdf5Recording : public ColumnsInMemory {
 public:
  explicit Hdf5Recording(const std::string& path) {
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);  // nothing to the standard error
    H5PLset_loading_state(0);                     // no code from elsewhere
    const std::int64_t bytes = InputFile(path).Size();
    const Hdf5Handle file(H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose);
    if (!file.Opened()) {
      throw FileError("this is no HDF5 file, or a damaged one");
    }
    std::vector<Hdf5Dataset> datasets;
    Hdf5Listing listing{file, bytes, "", 0, datasets, others_};
    TooLargeInHdf5()->clear();
    ListGroup(listing);
    if (!TooLargeInHdf5()->empty()) {
      throw FileError(*TooLargeInHdf5());
    }
    const std::vector<Hdf5Dataset> chosen = Choose(file, datasets);
    if (chosen.empty()) {
      throw FileError("it holds no dataset of numbers that could be channels" +
                      (others_.empty() ? "" : ": " + others_));
    }
    TakeChannels(file, chosen);
    TellOthers(datasets, chosen);
  }

 private:
  std::vector<Hdf5Dataset> Choose(hid_t file, const std::vector<Hdf5Dataset>& datasets) {
    std::map<std::pair<std::string, hsize_t>, std::vector<Hdf5Dataset>> sets;
    for (const Hdf5Dataset& dataset : datasets) {
      if (IsRawGroup(dataset.group) && dataset.name.starts_with("channel_") &&
          NumberAttribute(file, DeviceOf(dataset), "sampling rate") > 0) {
        openSignals_ = true;
      }
    }
    for (const Hdf5Dataset& dataset : datasets) {
      const bool channel =
          !openSignals_ || (IsRawGroup(dataset.group) && dataset.name.starts_with("channel_"));
      if (channel && dataset.Longer() > 1) {
        sets[{dataset.group, dataset.Longer()}].push_back(dataset);
      }
    }
    std::vector<Hdf5Dataset> chosen;
    hsize_t length = 0;
    for (const auto& [key, set] : sets) {
      if (set.size() > chosen.size() || (set.size() == chosen.size() && key.second > length)) {
        chosen = set;
        length = key.second;
      }
    }
    // "channel_10" behind "channel_9"
    std::stable_sort(chosen.begin(), chosen.end(), [](const Hdf5Dataset& a, const Hdf5Dataset& b) {
      return a.name.size() < b.name.size() && a.name.starts_with("channel_") &&
             b.name.starts_with("channel_");
    });
    return chosen;
  }

  static std::string DeviceOf(const Hdf5Dataset& dataset) {
    return dataset.group.substr(0, dataset.group.rfind('/'));
  }

  [[nodiscard]] static double RateOf(hid_t file, const Hdf5Dataset& dataset) {
    std::string object = dataset.path;
    while (true) {
      if (const double rate = Hdf5RateAt(file, object.empty() ? "/" : object); rate > 0) {
        return rate;
      }
      if (object.empty()) {
        return 0.0;
      }
      object = object.substr(0, object.rfind('/'));
    }
  }

  void TakeChannels(hid_t file, const std::vector<Hdf5Dataset>& chosen) {
    std::int64_t missing = 0;
    std::vector<double> times;
    for (const Hdf5Dataset& dataset : chosen) {
      const std::vector<double> values = ReadDataset(file, dataset);
      if (dataset.Shorter() == 1 && (EqualNoCase(dataset.name, "time") || EqualNoCase(dataset.name, "t")) &&
          chosen.size() > 1 && RateOfTimes(values) > 0) {
        times = values;
        continue;
      }
      const double rate = RateOf(file, dataset);
      for (hsize_t k = 0; k < dataset.Shorter(); ++k) {
        std::vector<double> series;
        for (hsize_t i = 0; i < dataset.Longer(); ++i) {
          const hsize_t at =
              dataset.rows >= dataset.columns ? i * dataset.columns + k : k * dataset.columns + i;
          series.push_back(values[static_cast<std::size_t>(at)]);
        }
        const std::string label =
            dataset.Shorter() == 1 ? dataset.name : dataset.name + " " + std::to_string(k + 1);
        AddColumn({.label = label, .rate = times.empty() ? rate : RateOfTimes(times)},
                  SamplesOf(series, dataset.path, missing));
      }
    }
    if (!times.empty()) {
      for (RecordedChannel& channel : found_.channels) {
        channel.rate = RateOfTimes(times);
      }
    }
    if (missing > 0) {
      found_.remarks.push_back(FormatCount(missing) + " values are NaN, which means missing; they are 0.");
    }
    const std::string device = DeviceOf(chosen.front());
    for (const char* name : {"device", "device name", "date", "time"}) {
      if (const std::string text = TextAttribute(file, device.empty() ? "/" : device, name); !text.empty()) {
        found_.lines.push_back(std::string(name) + " " + text);
      }
    }
    found_.lines.push_back("HDF5 group " + (chosen.front().group.empty() ? "/" : chosen.front().group));
  }

  // The counter, the digital port and the summaries of OpenSignals are known not to be channels.
  void TellOthers(const std::vector<Hdf5Dataset>& datasets, const std::vector<Hdf5Dataset>& chosen) {
    int count = 0;
    for (const Hdf5Dataset& dataset : datasets) {
      const bool taken = std::any_of(chosen.begin(), chosen.end(), [&dataset](const Hdf5Dataset& other) {
        return other.path == dataset.path;
      });
      const bool known = openSignals_ && !dataset.name.starts_with("channel_");
      const bool summary = openSignals_ && dataset.group.find("/support") != std::string::npos;
      count += taken || known || summary ? 0 : 1;
    }
    if (count > 0) {
      found_.remarks.push_back(CountOf(count, "dataset") + " of other groups or lengths were not read.");
    }
  }

  bool openSignals_ = false;
  std::string others_;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenHdf5(const std::string& path) {
  return std::make_unique<Hdf5Recording>(path);
}

}  // namespace velmora
