#include "run/report/info.hpp"

#include "run/report/deed_json.hpp"
#include "run/report/info_json.hpp"
#include "run/report/json_text.hpp"
#include "run/report/view_info.hpp"

namespace velmora {
namespace {

int Flag(bool value) {
  return value ? -1 : 0;
}

Json ChannelInfo(const Workbench& workbench, std::size_t c) {
  const Trial& trial = workbench.trial;
  const ThresholdMemory& thresholds = workbench.thresholds;
  return {
      {"index", c},
      {"ChanLabel", trial.ChanLabel[c].Text()},
      {"ChanUnits", trial.ChanUnits[c].Text()},
      {"ChanRate", JsonNumber(trial.ChanRate[c])},
      {"ChanGain", JsonNumber(trial.ChanGain[c])},
      {"ChanOffset", JsonNumber(trial.ChanOffset[c])},
      {"ChanNumber", trial.ChanNumber[c]},
      {"ChanAutozero", trial.ChanAutozero[c]},
      {"ChanColour", trial.ChanColour[c]},
      {"ChanGraphSlot", trial.ChanGraphSlot[c]},
      {"ChanMean", JsonNumber(thresholds.ChanMean[c])},
      {"ChanSD", JsonNumber(thresholds.ChanSD[c])},
      {"ChanThreshold", JsonNumber(thresholds.ChanThreshold[c])},
  };
}

Json EventsInfo(const EventMemory& events) {
  Json records = Json::array();
  for (const EventRecord& record : events.ChannelEvents) {
    Json pairs = Json::array();
    for (std::size_t c = 1; c <= kMaxChannels; ++c) {
      pairs.push_back({JsonNumber(record[c].on), JsonNumber(record[c].off)});
    }
    records.push_back(std::move(pairs));
  }
  return records;
}

Json UsedHeaderLines(const Trial& trial) {
  Json lines = Json::array();
  for (int i = 1; i <= std::min(trial.HeaderLineCount, kMaxHeaderLines); ++i) {
    lines.push_back(trial.HeaderLines[i]);
  }
  return lines;
}

Json AllChannels(const Workbench& workbench) {
  Json channels = Json::array();
  for (int c = 0; c <= workbench.trial.NChan; ++c) {
    channels.push_back(ChannelInfo(workbench, static_cast<std::size_t>(c)));
  }
  return channels;
}

Json SpectrumInfo(const SpectrumMemory& spectrum) {
  Json info = Json::object();
  if (!spectrum.HarmFreq.empty()) {
    info["NHarm"] = spectrum.NHarm;
  }
  if (!spectrum.WindowName.empty()) {
    info["WindowName"] = spectrum.WindowName;
  }
  const auto list = [&info](const char* name, const std::vector<double>& values) {
    if (!values.empty()) {
      info[name] = values;  // what is not finite is written as null
    }
  };
  list("HarmFreq", spectrum.HarmFreq);
  list("CosCoef", spectrum.CosCoef);
  list("SinCoef", spectrum.SinCoef);
  list("PowerNorm", spectrum.PowerNorm);
  list("PowerCum", spectrum.PowerCum);
  list("PowerRel", spectrum.PowerRel);
  list("PowerAbs", spectrum.PowerAbs);
  list("PowerAbsCum", spectrum.PowerAbsCum);
  if (spectrum.FrequenciesMade) {
    info["MedianFreq"] = spectrum.MedianFreq;
    info["MeanFreq"] = spectrum.MeanFreq;
    info["Percentile95Freq"] = spectrum.Percentile95Freq;
    info["Percentile99Freq"] = spectrum.Percentile99Freq;
  }
  return info;
}

Json PlateInfo(const ForcePlate& plate) {
  Json gains = Json::array();
  for (const double gain : plate.comGains) {
    gains.push_back(JsonNumber(gain));
  }
  return {
      {"PlateName", plate.PlateName},
      {"PlateType", plate.PlateType},
      {"a", JsonNumber(plate.a)},
      {"b", JsonNumber(plate.b)},
      {"az0", JsonNumber(plate.az0)},
      {"Width", JsonNumber(plate.Width)},
      {"Length", JsonNumber(plate.Length)},
      {"Thickness", JsonNumber(plate.Thickness)},
      {"XYRange", JsonNumber(plate.XYRange)},
      {"ZRange", JsonNumber(plate.ZRange)},
      {"XSens", JsonNumber(plate.XSens)},
      {"YSens", JsonNumber(plate.YSens)},
      {"ZSens", JsonNumber(plate.ZSens)},
      {"comGains", gains},
      {"optFormulas", plate.optFormulas},
      {"optDistance", plate.optDistance},
  };
}

Json PlateTableInfo(const PlateMemory& plates, int numPlates) {
  Json list = Json::array();
  for (int k = 0; k < std::min(numPlates, kMostPlates); ++k) {
    list.push_back(PlateInfo(plates.PlateTable.at(static_cast<std::size_t>(k))));
  }
  return {
      {"FirstChannel", plates.FirstChannel},
      {"PlateOffsetX", JsonNumber(plates.PlateOffsetX)},
      {"PlateOffsetY", JsonNumber(plates.PlateOffsetY)},
      {"PlateOffsetZ", JsonNumber(plates.PlateOffsetZ)},
      {"PlateAngle", JsonNumber(plates.PlateAngle)},
      {"ProgressionAngle", JsonNumber(plates.ProgressionAngle)},
      {"plates", list},
  };
}

Json StateInfo(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  return {
      {"NChan", trial.NChan},
      {"NData", trial.NData},
      {"Rate", JsonNumber(trial.Rate)},
      {"Duration", JsonNumber(trial.Duration)},
      {"OriginalDuration", JsonNumber(trial.OriginalDuration)},
      {"PreviousRate", JsonNumber(trial.PreviousRate)},
      {"FirstSample", trial.FirstSample},
      {"LastSample", trial.LastSample},
      {"TrialTitle", trial.TrialTitle},
      {"TrialName", trial.TrialName},
      {"FileName", trial.FileName},
      {"FileExt", trial.FileExt},
      {"FileTypeCode", trial.FileTypeCode},
      {"TrialIndex", trial.TrialIndex},
      {"HeaderLines", UsedHeaderLines(trial)},
      {"Notices", trial.Notices},
      {"FileChanged", Flag(trial.FileChanged)},
      {"CursorLo", trial.CursorLo},
      {"CursorHi", trial.CursorHi},
      {"ForcesReduced", Flag(trial.ForcesReduced)},
      {"NPlates", trial.NPlates},
      {"PairedGraphs", Flag(trial.PairedGraphs)},
      {"WindowType", workbench.spectrum.WindowType},
      {"FirstChanShown", workbench.FirstChanShown},
      {"LastChanShown", workbench.LastChanShown},
      {"SDMultiplier", JsonNumber(workbench.thresholds.SDMultiplier)},
      {"ThresholdsValid", Flag(workbench.thresholds.ThresholdsValid)},
      {"ViewDuration", JsonNumber(workbench.graph.ViewDuration)},
      {"PanSize", JsonNumber(workbench.graph.PanSize)},
      {"StatLo", workbench.graph.StatLo},
      {"StatHi", workbench.graph.StatHi},
      {"ValuePattern", workbench.patterns.ValuePattern},
      {"EventTracking", Flag(workbench.events.EventTracking)},
      {"EventAmplitudes", Flag(workbench.events.EventAmplitudes)},
      {"EventsUnsaved", Flag(workbench.events.EventsUnsaved)},
      {"NEvents", workbench.events.NEvents()},
      {"CurrentEvent", workbench.events.CurrentEvent},
      {"ChannelEvents", EventsInfo(workbench.events)},
      {"EpochCount", workbench.emg.EpochCount},
      {"channels", AllChannels(workbench)},
  };
}

}  // namespace

Json InfoJson(const Workbench& workbench, std::span<const Deed> done) {
  const Trial& trial = workbench.trial;
  Json info = StateInfo(workbench);
  for (const Deed& deed : done) {
    info["Done"].push_back(DeedJson(deed));
  }
  if (trial.NPlates > 0) {
    info["PlateTable"] = PlateTableInfo(workbench.plates, trial.NPlates);
    info["PlatesCombined"] = Flag(trial.PlatesCombined);
  }
  if (!workbench.results.ResultText.empty()) {
    info["ResultText"] = workbench.results.ResultText;
  }
  if (!workbench.spectrum.PowerNorm.empty()) {
    info["spectrum"] = SpectrumInfo(workbench.spectrum);
  }
  if (!workbench.results.Clipboard.empty()) {
    info["Clipboard"] = workbench.results.Clipboard;
  }
  if (workbench.view != nullptr) {
    info["view"] = ViewInfo(*workbench.view);
  }
  for (const ResultTable& table : workbench.results.ResultTables) {
    info[table.name] = JsonTable(table);
  }
  return info;
}

std::string InfoText(const Workbench& workbench, std::span<const Deed> done) {
  return JsonText(InfoJson(workbench, done), 2) + "\n";
}

}  // namespace velmora
