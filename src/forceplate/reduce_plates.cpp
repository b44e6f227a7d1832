#include "forceplate/reduce_plates.hpp"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>
#include <vector>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/amti_reduction.hpp"
#include "forceplate/define_plate_form.hpp"
#include "forceplate/file_plates.hpp"
#include "forceplate/kistler_reduction.hpp"
#include "forceplate/plate_form.hpp"
#include "forceplate/plate_geometry.hpp"
#include "forceplate/plate_types.hpp"
#include "forceplate/published_reduction.hpp"

namespace velmora {
namespace {

constexpr int kFewestChannels = 6;
constexpr const char* kInvalidFiletype = "Invaild Filetype";
constexpr const char* kCannotBeReduced = "Data in file cannot be reduced.";

void Refuse(Workbench& workbench, const char* title, const std::string& text) {
  ShowRefusal(workbench, {.title = title, .text = text, .icon = Icon::Exclamation});
}

void TellTooFewChannels(Workbench& workbench) {
  Refuse(workbench, kInvalidFiletype, "Too few data channels.  Data in file cannot be reduced.");
}

/// What is to be reduced: plates in use, the channel before the first plate's, and how they are read.
struct Job {
  int plates = 0;
  PlateFamily family = PlateFamily::Kistler;
  std::array<std::int64_t, kMostPlates> bases{};
  float minForce = 0.0F;

  [[nodiscard]] int Channels() const { return ChannelsOf(family); }
  [[nodiscard]] int BaseOf(int plate) const {
    return static_cast<int>(bases.at(static_cast<std::size_t>(plate)));
  }
};

const ForcePlate& PlateOf(const Workbench& workbench, int plate) {
  return workbench.plates.PlateTable.at(static_cast<std::size_t>(plate));
}

// A channel of a plate that was not loaded has no autozero flag.
bool IsLoaded(const Trial& trial, const Job& job, int plate) {
  for (int k = 1; k <= job.Channels(); ++k) {
    const int c = job.BaseOf(plate) + k;
    if (c > trial.NChan || trial.ChanAutozero[c] == 0) {
      return false;
    }
  }
  return true;
}

// Of a file that may lack channels of a plate. Returns false when nothing is left to reduce.
bool KeepLoadedPlates(Workbench& workbench, Job& job) {
  for (int plate = 0; plate < job.plates; ++plate) {
    if (IsLoaded(workbench.trial, job, plate)) {
      continue;
    }
    const bool first = plate == 0;
    Refuse(workbench, "",
           std::string("Forces cannot be reduced.  ") +
               (first ? "Try reloading the file." : "Only plate 1 will be reduced.") +
               "\nNot all necessary channels are loaded for plate number " + std::to_string(plate + 1) + ".");
    job.plates = plate;
    return !first;
  }
  return true;
}

void NameChannels(Trial& trial, const Job& job) {
  constexpr std::array<std::pair<const char*, const char*>, 8> names = {{{"Fx", "N"},
                                                                         {"Fy", "N"},
                                                                         {"Fz", "N"},
                                                                         {"Ax", "cm"},
                                                                         {"Ay", "cm"},
                                                                         {"Tz", "N.m"},
                                                                         {"Ff", "N"},
                                                                         {"CF", "N"}}};
  for (int plate = 0; plate < job.plates; ++plate) {
    for (int k = 0; k < job.Channels(); ++k) {
      const auto& [label, units] = names.at(static_cast<std::size_t>(k));
      const int c = job.BaseOf(plate) + 1 + k;
      trial.ChanLabel[c] = std::string(label) + "#" + std::to_string(plate + 1);
      trial.ChanUnits[c] = units;
    }
  }
}

// Returns false when the question was cancelled.
bool AskAutozero(Workbench& workbench, int base) {
  const Box box{.title = "Autozeroing",
                .text =
                    "Note, do NOT autozero if subject starts trial on the force platform.\n"
                    "Press Yes to permit Autozeroing, No to continue or Cancel to exit.",
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No, Button::Cancel}};
  const Button answer = workbench.questions.AskBox(box);
  if (answer == Button::Cancel) {
    return false;
  }
  Trial& trial = workbench.trial;
  for (int c = base + 1; c <= base + kKistlerChannels; ++c) {
    trial.ChanOffset[c] = answer == Button::Yes ? trial.Data(1, c) : 0.0;
  }
  return true;
}

// A header gives distances in centimetres; the table has them in millimetres.
ForcePlate InFileUnits(const Trial& trial, ForcePlate plate) {
  if (trial.FileTypeCode == kBioWareFile) {
    plate.optDistance = 1;
  }
  return plate;
}

// Neither native nor text files say how sensitive a channel is; they hold newtons and newton metres.
constexpr std::array<float, kAmtiChannels> kNoSensitivities = {1, 1, 1, 1, 1, 1};

void ReducePlate(Workbench& workbench, const Job& job, int plate) {
  Trial& trial = workbench.trial;
  const ForcePlate how = InFileUnits(trial, PlateOf(workbench, plate));
  const int base = job.BaseOf(plate);
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  panel.SetStatus("Reducing plate #" + std::to_string(plate + 1));
  panel.SetLimits(0, trial.NData / 100.0);
  double hundreds = 0;
  const Turn turn = [&panel, &hundreds] { panel.SetValue(++hundreds); };
  const bool published = how.optFormulas != 0;
  if (const PlateMatrix* loads = LoadsOfFile(trial, workbench.plates, plate)) {
    ApplyLoads(trial, base, *loads, turn);
  }
  if (job.family == PlateFamily::Amti) {
    published ? ReduceAmtiAsPublished(trial, base, how, job.minForce, turn)
              : ReduceAmtiForces(trial, base, kNoSensitivities, job.minForce, MomentUnit::NewtonMetres, turn);
  } else {
    published ? ReduceKistlerAsPublished(trial, base, how, job.minForce, turn)
              : ReduceKistlerForces(trial, base, KistlerFactorsOf(how), job.minForce, turn);
  }
}

bool IsLoadedAnywhere(const Trial& trial, int verticalForce) {
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    if (trial.Data(i, verticalForce) != 0) {
      return true;
    }
  }
  return false;
}

// A reduced trial that was saved is raw data to whoever opens it.
void NoteReducedBefore(Workbench& workbench, const Job& job) {
  for (int plate = 0; plate < job.plates; ++plate) {
    const std::string label = workbench.trial.ChanLabel[job.BaseOf(plate) + 4].Text();
    if (label.starts_with("Ax#") || label.starts_with("Ax comb")) {
      AddNotice(workbench, "The channels of plate " + std::to_string(plate + 1) +
                               " had the labels of reduced forces: they may have been reduced twice.");
    }
  }
}

// Moments of a file without a matrix are taken as newton metres; their units go when the channels are named.
void NoteMillimetres(Workbench& workbench, const Job& job) {
  for (int plate = 0; plate < job.plates && job.family == PlateFamily::Amti; ++plate) {
    const std::string units = OneLine(Trim(workbench.trial.ChanUnits[job.BaseOf(plate) + 4].Text()));
    if (LoadsOfFile(workbench.trial, workbench.plates, plate) == nullptr &&
        units.find("mm") != std::string::npos) {
      AddNotice(workbench, "The moments of plate " + std::to_string(plate + 1) + " are in " + units +
                               " and were taken for N.m: its Ax, Ay and Tz are wrong.");
    }
  }
}

// What the numbers do not say by themselves.
void NoteDoubts(Workbench& workbench, const Job& job, int plate) {
  const std::string name = "Plate " + std::to_string(plate + 1);
  const ForcePlate& how = PlateOf(workbench, plate);
  if (!IsLoadedAnywhere(workbench.trial, job.BaseOf(plate) + 3)) {
    AddNotice(workbench, name + " is never loaded with " + PlainNumber(job.minForce) +
                             " N or more: all its channels are 0.");
  } else if (job.family == PlateFamily::Kistler && (how.a == 0 || how.b == 0)) {
    AddNotice(workbench, name + " was reduced without distances to its sensors: Ax, Ay and Tz mean nothing.");
  }
}

std::string DeedOf(const Workbench& workbench, const Job& job, int plate) {
  const ForcePlate& how = PlateOf(workbench, plate);
  std::string what = "Force plate " + std::to_string(plate + 1) + " reduced, " +
                     WithoutMnemonic(kPlateTypes.at(static_cast<std::size_t>(how.PlateType)).caption) +
                     ", at least " + PlainNumber(job.minForce) + " N";
  return how.optFormulas != 0 ? what + ", formulas as published" : what;
}

void TellDeed(Workbench& workbench, const Job& job, int plate) {
  std::vector<int> channels(static_cast<std::size_t>(job.Channels()));
  std::iota(channels.begin(), channels.end(), job.BaseOf(plate) + 1);
  Did(workbench, DeedOf(workbench, job, plate), channels);
  NoteDoubts(workbench, job, plate);
}

// From the minimum force to the last plate. Returns whether it ran to its end.
bool ReduceChannels(Workbench& workbench, Job& job) {
  constexpr int most = 2;
  job.minForce = AskMinimumForce(workbench);
  if (job.minForce == 0) {
    return false;
  }
  if (job.plates > most) {
    Refuse(workbench, "", "Invalid number of plates.");
    return false;
  }
  NoteReducedBefore(workbench, job);
  NoteMillimetres(workbench, job);
  NameChannels(workbench.trial, job);
  MarkChanged(workbench, true);
  for (int plate = 0; plate < job.plates; ++plate) {
    if (job.family == PlateFamily::Kistler && !AskAutozero(workbench, job.BaseOf(plate))) {
      if (plate > 0) {  // what the file says of raw channels is not true of all any more
        workbench.trial.FilePlates.clear();
      }
      return false;
    }
    ReducePlate(workbench, job, plate);
    TellDeed(workbench, job, plate);
  }
  workbench.trial.ForcesReduced = true;
  return true;
}

// The plates in use, as one job. Says why not, with false, when they are none.
bool FindJob(Workbench& workbench, Job& job) {
  job.plates = workbench.trial.NPlates;
  if (job.plates < 1) {
    Refuse(workbench, "", "File has no force platform data.");
    return false;
  }
  job.family = FamilyIn(workbench.trial, PlateOf(workbench, 0));
  for (int plate = 0; plate < job.plates; ++plate) {
    if (FamilyIn(workbench.trial, PlateOf(workbench, plate)) != job.family) {
      Refuse(workbench, "Unsupported Force Plate", "Force plate not supported.");
      return false;
    }
    job.bases.at(static_cast<std::size_t>(plate)) = BaseChannelOf(workbench.trial, workbench.plates, plate);
  }
  return true;
}

void ReduceByDefinition(Workbench& workbench) {
  if (workbench.trial.NChan < kFewestChannels) {
    TellTooFewChannels(workbench);
    return;
  }
  Job job;
  if (!DefinePlates(workbench)) {
    return;
  }
  TellDefined(workbench);  // it stays, whatever becomes of the reduction
  if (!FindJob(workbench, job)) {
    return;
  }
  if (*std::max_element(job.bases.begin(), job.bases.end()) + job.Channels() > workbench.trial.NChan) {
    TellTooFewChannels(workbench);
    return;
  }
  if (ReduceChannels(workbench, job)) {
    workbench.trial.FileTypeCode = kReducedHere;
  }
}

bool WantsReduction(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "Reduce Force Plate Data",
                                     .text = "Do you want the force plate data reduced?",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

void ReduceByHeader(Workbench& workbench) {
  Job job;
  if (WantsReduction(workbench) && FindJob(workbench, job) && KeepLoadedPlates(workbench, job)) {
    ReduceChannels(workbench, job);
  }
}

}  // namespace

float AskMinimumForce(Workbench& workbench) {
  constexpr float smallest = 0.1F;
  const std::string typed = workbench.questions.AskInput(
      {.title = "Minimum Force Threshold",
       .prompt = "Enter minimum vertical force.  When vertical force is below this value all forces will be "
                 "zeroed.\nEnter minimum force level (in newtons).",
       .defaultText = "25"});
  return typed.empty() ? 0.0F : std::max(smallest, static_cast<float>(Val(typed)));
}

void ReduceForcePlates(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  PlateSource source = SourceOfPlates(trial);
  if (trial.ForcesReduced && source != PlateSource::AlreadyReduced) {
    source = PlateSource::NotReducible;
  }
  switch (source) {
    case PlateSource::Definition:
      ReduceByDefinition(workbench);
      break;
    case PlateSource::BioWare:
      if (trial.NPlates > 0) {
        ReduceByHeader(workbench);
      }
      break;
    case PlateSource::Apas:
      if (trial.NPlates < 1 || trial.NChan < kFewestChannels) {
        Refuse(workbench, "", "File contains no force plate data or not enough channels.");
      } else {
        ReduceByHeader(workbench);
      }
      break;
    case PlateSource::AlreadyReduced:
      Refuse(workbench, kInvalidFiletype, "Data in file is already reduced.");
      break;
    case PlateSource::NotReducible:
      Refuse(workbench, kInvalidFiletype, kCannotBeReduced);
      break;
    case PlateSource::Other:
      Refuse(workbench, "", "Filetype not implemented.");
      break;
  }
}

const char* WhyNotReduced(const Workbench& workbench) {
  return workbench.trial.ForcesReduced ? "The forces have been reduced already" : nullptr;
}

}  // namespace velmora
