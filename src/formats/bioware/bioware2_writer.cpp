#include "formats/bioware/bioware2_writer.hpp"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "formats/bioware/bioware2_layout.hpp"
#include "formats/bytes/byte_reader.hpp"

namespace velmora {
namespace {

constexpr double kLowestCount = -2048;
constexpr double kHighestCount = 2047;

/// The header of the file that the trial was read from, up to its data.
struct BioWare2Header {
  std::string bytes;
  std::size_t missing = 0;  // bytes of padding that are not there

  [[nodiscard]] ByteReader Reader() const { return ByteReader(bytes); }
  [[nodiscard]] int Channels() const { return Reader().At<std::int16_t>(bioware2::kChannels); }

  template <typename T>
  void Put(std::size_t at, T value) {
    std::memcpy(bytes.data() + at, &value, sizeof value);
  }
};

// Throws FileError.
BioWare2Header ReadBioWare2Header(const std::string& path) {
  const InputFile file(path);
  BioWare2Header header{.bytes = ReadBytes(file, 0, bioware2::kData)};
  const int channels = header.bytes.size() < bioware2::kData ? 0 : header.Channels();
  if (!header.bytes.starts_with(bioware2::kMagic) || channels < 1) {
    throw FileError("it is no BioWare 2 file any more");
  }
  const std::int64_t frame = 2 * std::int64_t{channels};
  header.missing = (file.Size() - static_cast<std::int64_t>(bioware2::kData)) % frame == 0 ? 0 : 1;
  header.bytes.resize(bioware2::kData - header.missing);
  return header;
}

std::optional<BioWare2Header> HeaderOfTrial(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const auto refuse = [&workbench](const std::string& why) {
    ShowFailure(workbench,
                {.title = "File Format Not Supported",
                 .text = "A BioWare 2 file keeps the header of the file that the trial was read from.\n" +
                         why + "\nSave the trial as Velmora2 Binary (.VMB) or C3D (.C3D) instead.",
                 .icon = Icon::Exclamation});
    return std::nullopt;
  };
  try {
    BioWare2Header header = ReadBioWare2Header(workbench.LoadedFile);
    if (header.Channels() != trial.NChan) {
      return refuse("That has " + CountOf(header.Channels(), "channel") + ", the trial " +
                    std::to_string(trial.NChan) + ".");
    }
    for (int c = 1; c <= trial.NChan; ++c) {
      if (trial.ChanNumber[c] != c - 1) {
        return refuse("The channels of the trial are not in the places that they have in that file.");
      }
    }
    return header;
  } catch (const FileError& error) {
    return refuse(workbench.LoadedFile + " cannot be read: " + error.what() + ".");
  }
}

// Units of the trial by count: volts, of auxiliary devices times their multiplier.
std::vector<double> UnitsByCount(const BioWare2Header& header) {
  const ByteReader reader = header.Reader();
  const auto plates = std::clamp<std::int16_t>(reader.At<std::int16_t>(bioware2::kPlates), 0, 2);
  std::vector<double> units(static_cast<std::size_t>(header.Channels()), bioware2::kVolts);
  std::size_t channel = static_cast<std::size_t>(plates) * bioware2::kChannelsAPlate;
  for (std::size_t k = 0; k < bioware2::kAuxiliaries && channel < units.size(); ++k) {
    if (reader.At<std::uint8_t>(bioware2::kAuxiliary - header.missing + k) != 0) {
      units[channel++] *=
          static_cast<double>(reader.At<float>(bioware2::kMultiplier - header.missing + 4 * k));
    }
  }
  return units;
}

// Returns how many values were clipped.
std::int64_t WriteCounts(const Trial& trial, ProgressPanel& panel, const std::vector<double>& units,
                         OutputFile& file) {
  constexpr std::int32_t kSamplesAtOnce = 4096;
  std::int64_t clipped = 0;
  std::vector<std::int16_t> counts;
  for (std::int32_t j = 1; j <= trial.NData; ++j) {
    const float* frame = trial.matrix.Frame(j) + 1;
    for (std::size_t c = 0; c < units.size(); ++c) {
      const double count =
          units[c] == 0 ? 0.0 : static_cast<double>(RoundHalfEven(static_cast<double>(frame[c]) / units[c]));
      clipped += count < kLowestCount || count > kHighestCount ? 1 : 0;
      counts.push_back(static_cast<std::int16_t>(std::clamp(count, kLowestCount, kHighestCount)));
    }
    if (j % kSamplesAtOnce == 0 || j == trial.NData) {
      file.Write({reinterpret_cast<const char*>(counts.data()), counts.size() * sizeof(std::int16_t)});
      counts.clear();
      panel.SetValue(j);
    }
  }
  return clipped;
}

}  // namespace

void WriteBioWare2(Workbench& workbench, ProgressPanel& panel) {
  const Trial& trial = workbench.trial;
  std::optional<BioWare2Header> header = HeaderOfTrial(workbench);
  if (!header || !AskSaveName(workbench, {.title = "Save data as",
                                          .defaultName = trial.TrialName + ".dat",
                                          .extension = ".dat",
                                          .filter = "BioWare 2 (.dat)|*.dat|All files (*.*)|*.*"})) {
    return;
  }
  header->Put(bioware2::kRate, static_cast<float>(trial.Rate));
  header->Put(bioware2::kSeconds, static_cast<float>(trial.NData / trial.Rate));
  OutputFile file(workbench.OutputFileName);
  file.Write(header->bytes);
  const std::int64_t clipped = WriteCounts(trial, panel, UnitsByCount(*header), file);
  CommitSave(workbench, file);
  if (clipped > 0) {
    AddNotice(workbench, FormatCount(clipped) +
                             " values lay outside the 12 bits of a BioWare 2 file and were clipped in it.");
  }
  DidSave(workbench);
  MarkChanged(workbench, false);
}

}  // namespace velmora
