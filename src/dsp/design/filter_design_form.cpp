#include "dsp/design/filter_design_form.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "dsp/design/cfc_choice.hpp"
#include "dsp/design/fir_design.hpp"
#include "dsp/design/recursive_design.hpp"
#include "dsp/filters/filter_options.hpp"

namespace velmora {
FilterDesignForm::FilterDesignForm(Workbench& workbench)
    : AnalysisForm(workbench, "frmFilterDesign", "Digital Filter Design") {
  OfferCutoffs();
  AddChoice("optFamily", "&Family", family_,
            {"&Butterworth", "&Chebyshev", "&Inverse Chebyshev", "&Elliptic", "&FIR (windowed sinc)",
             "&Notch", "C&FC (impacts)", "&Savitzky-Golay", "C&oefficients"});
  AddBandFields();
  AddFamilyFields();
  AddRunFields();
  FollowEdits();
  AddButtons("&Filter");
  Update();
}

// Every edit shows another filter. Cut-offs that somebody typed are theirs, in whatever order they choose the
// channels.
void FilterDesignForm::FollowEdits() {
  for (FormField& field : fields_) {
    const bool isLower = field.name == "txtCutoff";
    const bool isHigher = field.name == "txtHigher";
    const bool isChannels = field.name == "channels";
    field.edited = [this, isLower, isHigher, isChannels] {
      cutoffTyped_ = cutoffTyped_ || isLower;
      higherTyped_ = higherTyped_ || isHigher;
      if (isChannels) {
        OfferCutoffs();
        NoteFilled("txtCutoff");
        NoteFilled("txtHigher");
      }
      Update();
    };
  }
}

// What the first of the chosen channels was filtered with last, else what shows a filter's shape at this
// rate.
void FilterDesignForm::OfferCutoffs() {
  const double rate = workbench_.trial.Rate;
  const FilterMemory& last = workbench_.filters;
  const ChannelList chosen = SelectedChannels(workbench_.trial, channels_);
  const int channel = chosen.empty() ? 1 : chosen.front();
  const auto offer = [rate](double used, double other) { return used > 0 && used < rate / 2 ? used : other; };
  if (!cutoffTyped_) {
    cutoff_ = offer(last.FilterCutoffs[channel], rate / 20);
  }
  if (!higherTyped_) {
    const double middle = (cutoff_ + rate / 2) / 2;
    higher_ = offer(last.SecondCutoffs[channel], middle);
    higher_ = higher_ > cutoff_ ? higher_ : middle;
  }
}

void FilterDesignForm::AddBandFields() {
  const double highest = workbench_.trial.Rate / 2;
  const Limits below{.lowest = 0, .highest = highest, .openBelow = true, .openAbove = true};
  AddChoice("optPassType", "&Pass type", passType_,
            {"&Low-pass", "&High-pass", "&Band-pass", "Band-&stop (reject)"});
  AddNumber("txtCutoff", "Cutoff frequency", cutoff_, below).units = "Hz";
  AddNumber("txtHigher", "Higher cutoff", higher_, below).units = "Hz";
}

void FilterDesignForm::AddFamilyFields() {
  const double highest = workbench_.trial.Rate / 2;
  AddCount("txtOrder", "&Order", order_, {1, kHighestDesignOrder});
  AddNumber("txtRipple", "&Ripple (dB)", ripple_, {0.01, 6});
  AddNumber("txtAttenuation", "&Attenuation (dB)", attenuation_, {10, 120});
  AddChoice("optFirWindow", "&Window", window_,
            {"Ha&mming", "Ha&nning", "B&lackman", "&Kaiser", "Rectan&gular"});
  AddCount("txtTaps", "&Taps (odd)", taps_, {kFewestTaps, kMostTaps});
  AddNumber("txtTransition", "Transition (Hz) (0: by the taps)", transition_, {0, highest});
  AddNumber("txtNotchWidth", "&Width at -3 dB (Hz)", notchWidth_,
            {.lowest = 0, .highest = highest, .openBelow = true, .openAbove = true});
  AddCount("txtHarmonics", "&Harmonics", harmonics_, {0, 20});
  AddChoice("comClass", "C&lass", class_, CfcClassNames());
  AddCount("txtWindow", "&Points (odd)", points_, {3, 999});
  AddCount("txtPolynomial", "Pol&ynomial", polynomial_, {0, 10});
  AddCount("txtDerivative", "&Derivative", derivative_, {0, 2});
  AddText("txtNumerator", "b (of the input)", numerator_);
  AddText("txtDenominator", "a (of the output)", denominator_);
}

void FilterDesignForm::AddRunFields() {
  AddChoice("optDirection", "&Direction", direction_, {"&Zero-lag (forward and back)", "For&ward only"});
  AddFlag("chkKeepCutoff", "&Keep the cut-off over both passes", keepCutoff_);
  AddChannels("channels", "&Channels", channels_);
  AddChoice("optPicture", "Pict&ure of", picture_,
            {"Gain in dB", "Gain", "Phase", "Delay", "Impulse response", "Step response"});
  fields_.push_back({.name = "txtAtEdges", .caption = "", .target = &atEdges_, .readOnly = true});
}

bool FilterDesignForm::IsZeroLag() const {
  return direction_ == static_cast<std::int32_t>(RunDirection::ZeroLag) || family_ == kCfc ||
         family_ == kSavitzkyGolay;
}

bool FilterDesignForm::KeepsCutoff() const {
  return keepCutoff_ && IsZeroLag() && (family_ == kButterworth || family_ == kNotch);
}

bool FilterDesignForm::WorksOutTaps() const {
  return window_ == static_cast<std::int32_t>(FirWindow::Kaiser) && transition_ > 0;
}

void FilterDesignForm::ShowOwnFields() {
  const bool kaiser = family_ == kFir && window_ == static_cast<std::int32_t>(FirWindow::Kaiser);
  const bool band = (IsRecursive() || family_ == kFir) && IsBandOption(passType_);
  const auto show = [this](std::string_view name, bool on) {
    for (FormField& field : fields_) {
      if (field.name == name) {
        field.hidden = !on;
      }
    }
  };
  show("optPassType", IsRecursive() || family_ == kFir);
  show("txtCutoff", HasEdges());
  show("txtHigher", band);
  show("txtOrder", IsRecursive());
  show("txtRipple", family_ == kChebyshev || family_ == kElliptic);
  show("txtAttenuation", family_ == kInverseChebyshev || family_ == kElliptic || kaiser);
  show("optFirWindow", family_ == kFir);
  show("txtTaps", family_ == kFir && !WorksOutTaps());
  show("txtTransition", kaiser);
  show("txtNotchWidth", family_ == kNotch);
  show("txtHarmonics", family_ == kNotch);
  show("comClass", family_ == kCfc);
  for (const char* name : {"txtWindow", "txtPolynomial", "txtDerivative"}) {
    show(name, family_ == kSavitzkyGolay);
  }
  show("txtNumerator", family_ == kCoefficients);
  show("txtDenominator", family_ == kCoefficients);
  show("txtAtEdges", HasEdges() || family_ == kCfc);
  show("optDirection", family_ != kCfc && family_ != kSavitzkyGolay);
  show("chkKeepCutoff", IsZeroLag() && (family_ == kButterworth || family_ == kNotch));
  for (FormField& field : fields_) {
    if (field.name == "txtCutoff") {
      field.caption = family_ == kNotch ? "Frequency" : band ? "Lower cutoff" : "Cutoff frequency";
    }
  }
}

std::vector<double> FilterDesignForm::Edges() const {
  if (family_ == kCfc) {
    const double edge = kCfcClasses.at(static_cast<std::size_t>(class_)) / 0.6;
    return edge < workbench_.trial.Rate / 2 ? std::vector<double>{edge} : std::vector<double>{};
  }
  if (family_ == kNotch) {
    std::vector<double> notches;
    for (std::int32_t k = 1; k <= harmonics_ + 1 && k * cutoff_ < workbench_.trial.Rate / 2; ++k) {
      notches.push_back(k * cutoff_);
    }
    return notches;
  }
  if (!HasEdges()) {
    return {};
  }
  return IsBandOption(passType_) ? std::vector<double>{cutoff_, higher_} : std::vector<double>{cutoff_};
}

// --- Design

Biquads FilterDesignForm::DesignSections() const {
  if (family_ == kNotch) {
    return DesignNotch({.rate = workbench_.trial.Rate,
                        .frequency = cutoff_,
                        .width = notchWidth_,
                        .harmonics = harmonics_,
                        .keptOverBothRuns = KeepsCutoff()});
  }
  constexpr Approximation approximations[] = {Approximation::Butterworth, Approximation::Chebyshev,
                                              Approximation::InverseChebyshev, Approximation::Elliptic};
  const DesignRequest request{.approximation = approximations[family_],
                              .band = BandOf(passType_),
                              .order = order_,
                              .rate = workbench_.trial.Rate,
                              .cutoff = cutoff_,
                              .higher = higher_,
                              .rippleDb = ripple_,
                              .attenuationDb = attenuation_};
  if (KeepsCutoff()) {
    CheckEdges(request.band, request.rate, request.cutoff, request.higher);
    return DesignFilter(KeptOverBothRuns(request));
  }
  return DesignFilter(request);
}

std::vector<double> FilterDesignForm::DesignTaps() const {
  std::int32_t taps = taps_;
  if (WorksOutTaps()) {
    const double found = KaiserTaps(attenuation_, transition_, workbench_.trial.Rate);
    taps = static_cast<std::int32_t>(std::clamp<double>(found, kFewestTaps, kMostTaps + 2));
  }
  return DesignFir({.band = BandOf(passType_),
                    .window = static_cast<FirWindow>(window_),
                    .taps = taps,
                    .rate = workbench_.trial.Rate,
                    .cutoff = cutoff_,
                    .higher = higher_,
                    .attenuation = attenuation_});
}

PlannedFilter FilterDesignForm::Design() const {
  const double rate = workbench_.trial.Rate;
  PlannedFilter filter{.direction = IsZeroLag() ? RunDirection::ZeroLag : RunDirection::Forward,
                       .rate = rate};
  switch (family_) {
    case kFir:
      filter.kind = TapFilter{DesignTaps()};
      break;
    case kCfc:
      filter.kind = DesignCfc(kCfcClasses.at(static_cast<std::size_t>(class_)), rate);
      break;
    case kSavitzkyGolay:
      filter.kind = DesignSavitzkyGolay(points_, polynomial_, derivative_, rate);
      break;
    case kCoefficients:
      filter.kind = MakeDirectFilter(NumbersOf(numerator_), NumbersOf(denominator_));
      break;
    default:
      filter.kind = DesignSections();
  }
  return filter;
}

std::string FilterDesignForm::EdgeWords() const {
  std::string words = PlainNumber(cutoff_);
  if (IsBandOption(passType_)) {
    words += " to " + PlainNumber(higher_);
  }
  return words + " Hz";
}

std::string FilterDesignForm::Words() const {
  const auto chosen = [this](std::string_view name) {
    const FormField& field = *FindField(name);
    return WithoutMnemonic(field.choices[static_cast<std::size_t>(*std::get<std::int32_t*>(field.target))]);
  };
  const std::string lag = IsZeroLag() ? ", zero-lag" : ", forward only";
  const std::string kept = KeepsCutoff() ? " over both passes" : "";
  switch (family_) {
    case kFir:
      return chosen("optPassType") + " FIR, " + chosen("optFirWindow") + ", " +
             CountOf(static_cast<std::int64_t>(DesignTaps().size()), "tap") + lag + ", " + EdgeWords();
    case kNotch:
      return "Notch" + lag + ", " + PlainNumber(cutoff_) + " Hz" +
             (harmonics_ > 0 ? " and " + CountOf(harmonics_, "harmonic") : std::string()) + ", " +
             PlainNumber(notchWidth_) + " Hz wide" + kept;
    case kCfc:
      return "CFC " + chosen("comClass") + ", zero-lag";
    case kSavitzkyGolay:
      return "Savitzky-Golay, " + CountOf(points_, "point") + ", polynomial " + std::to_string(polynomial_) +
             (derivative_ > 0 ? ", derivative " + std::to_string(derivative_) : std::string());
    case kCoefficients:
      return "Filter b = " + OneLine(Trim(numerator_)) + ", a = " + OneLine(Trim(denominator_)) + lag;
    default:
      return chosen("optPassType") + " " + chosen("optFamily") + ", order " + std::to_string(order_) + lag +
             ", " + EdgeWords() + kept;
  }
}

}  // namespace velmora
