#include "ui/main/menu_list.hpp"

#include <array>

namespace velmora::ui {
namespace {

constexpr std::string_view kFileMenu = "&File";
constexpr std::string_view kSave = "&File/&Save";
constexpr std::string_view kEdit = "&Edit";
constexpr std::string_view kChannel = "&Channel";
constexpr std::string_view kAnalysis = "&Analysis";
constexpr std::string_view kMath = "&Analysis/&Mathematical functions";
constexpr std::string_view kSmooth = "&Analysis/Sm&oothing";
constexpr std::string_view kBias = "&Analysis/&Bias Removal";
constexpr std::string_view kTime = "&Analysis/&Time Base";
constexpr std::string_view kUnits = "&Analysis/&Time Base/&Units";
constexpr std::string_view kFourier = "&Analysis/&Fourier analysis";
constexpr std::string_view kWindowing = "&Analysis/&Fourier analysis/Select &Windowing";
constexpr std::string_view kEmg = "&Analysis/&EMG";
constexpr std::string_view kPlates = "&Analysis/&Analyze Force Plate Data";
constexpr std::string_view kImpacts = "&Analysis/Impacts";
constexpr std::string_view kIntegrals = "&Analysis/&Integration statistics";
constexpr std::string_view kStatistics = "&Statistics";
constexpr std::string_view kView = "&View";

constexpr std::array kPlaces = {
    MenuPlace{"file.load", kFileMenu},
    MenuPlace{"file.merge", kFileMenu},
    MenuPlace{"file.read-units", kFileMenu},
    MenuPlace{"save.vma", kSave},
    MenuPlace{"save.dat", kSave},
    MenuPlace{"save.csv", kSave},
    MenuPlace{"save.wks", kSave},
    MenuPlace{"save.bin", kSave},
    MenuPlace{"save.rf", kSave},
    MenuPlace{"save.prn", kSave},
    MenuPlace{"save.tab", kSave},
    MenuPlace{"save.bsv", kSave},
    MenuPlace{"save.vmb", kSave},
    MenuPlace{"save.c3d", kSave},
    MenuPlace{"save.vmu", kSave},
    MenuPlace{"save.fsv", kSave},
    MenuPlace{"save.vad", kSave},
    MenuPlace{"report.save", kFileMenu},
    MenuPlace{"file.open-directory", kFileMenu, "", true},
    MenuPlace{"file.make-subdirectory", kFileMenu},
    MenuPlace{"file.remove-directory", kFileMenu},
    MenuPlace{"file.close", kFileMenu},
    MenuPlace{"file.delete", kFileMenu},
    MenuPlace{"file.explore", kFileMenu},
    MenuPlace{"file.refresh", kFileMenu},
    MenuPlace{"file.exit", kFileMenu, "", true},
    MenuPlace{"edit.recall-labels", kEdit},
    MenuPlace{"edit.sampling-rate", kEdit},
    MenuPlace{"edit.labels", kEdit},
    MenuPlace{"edit.units", kEdit},
    MenuPlace{"edit.title", kEdit},
    MenuPlace{"edit.experiment-information", kEdit},
    MenuPlace{"analysis.scaling", kEdit, "", true},
    MenuPlace{"channel.erase", kChannel},
    MenuPlace{"channel.copy", kChannel},
    MenuPlace{"channel.move", kChannel},
    MenuPlace{"channel.combine", kChannel},
    MenuPlace{"channel.teager-kaiser", kChannel},
    MenuPlace{"channel.interpolate", kChannel},
    MenuPlace{"channel.generate", kChannel},
    MenuPlace{"math.absolute", kMath},
    MenuPlace{"analysis.scaling", kAnalysis},
    MenuPlace{"analysis.high-pass", kAnalysis},
    MenuPlace{"analysis.low-pass", kAnalysis},
    MenuPlace{"filter.design", kAnalysis},
    MenuPlace{"filter.residuals", kAnalysis},
    MenuPlace{"smooth.moving-average", kSmooth},
    MenuPlace{"smooth.butterworth", kSmooth},
    MenuPlace{"smooth.digital", kSmooth},
    MenuPlace{"smooth.interpolate", kSmooth},
    MenuPlace{"bias.autozero-left", kBias},
    MenuPlace{"time.normalize", kTime},
    MenuPlace{"timebase.count", kUnits},
    MenuPlace{"fourier.window-rectangular", kWindowing, "Rectangular (none)"},
    MenuPlace{"fourier.window-blackman", kWindowing, "Blackman"},
    MenuPlace{"fourier.window-blackman-harris", kWindowing, "Blackman-Harris"},
    MenuPlace{"fourier.window-cosine-tapered", kWindowing, "Cosine tapered"},
    MenuPlace{"fourier.window-flat-top", kWindowing, "Flat-top"},
    MenuPlace{"fourier.window-hamming", kWindowing, "Hamming"},
    MenuPlace{"fourier.window-hanning", kWindowing, "Hanning"},
    MenuPlace{"fourier.window-triangular", kWindowing, "Triangular"},
    MenuPlace{"fourier.harmonic-regression", kFourier, "Power spectrum (by &Harmonic regression)"},
    MenuPlace{"fourier.fft", kFourier, "Power spectrum (by FFT)"},
    MenuPlace{"fourier.statistics", kFourier, "Fourier analysis &Statistics"},
    MenuPlace{"fourier.generate", kFourier, "&Generate Fourier series"},
    MenuPlace{"fourier.time-series", kFourier, "Time series Fourier Analysis"},
    MenuPlace{"emg.apdf", kEmg, "&APDF && CAPDF"},
    MenuPlace{"emg.trigno-delay", kEmg, "Delsys Trigno time delay removal"},
    MenuPlace{"emg.statistics", kEmg, "EMG statistics"},
    MenuPlace{"emg.fourier", kEmg, "Fourier analysis by harmonic regression"},
    MenuPlace{"emg.fatigue", kEmg, "Fati&gue analysis"},
    MenuPlace{"emg.integrate-epoch", kEmg, "Integrate by Epoch"},
    MenuPlace{"emg.linear-envelope", kEmg, "Linear envelope EMG"},
    MenuPlace{"emg.maximums", kEmg, "Determine Maximums (MVCs)"},
    MenuPlace{"emg.normalize", kEmg, "Normalize LE-EMGs"},
    MenuPlace{"emg.rms", kEmg, "RMS EMG"},
    MenuPlace{"emg.smoothing", kEmg, "Smoothing (filtering)"},
    MenuPlace{"emg.integrate-reset", kEmg, "Integrate and Reset"},
    MenuPlace{"emg.mav", kEmg, "Mean Absolute &Value (MAV)"},
    MenuPlace{"emg.rectify", kEmg, "Full-&Wave rectify (absolute values)"},
    MenuPlace{"emg.rectify-integrate", kEmg, "Rectif&y && Integrate"},
    MenuPlace{"emg.onsets", kEmg},
    MenuPlace{"emg.co-contraction", kEmg},
    MenuPlace{"plates.show", kPlates},
    MenuPlace{"plates.change-type", kPlates},
    MenuPlace{"plates.edit", kPlates},
    MenuPlace{"plates.reduce", kPlates},
    MenuPlace{"plates.combine", kPlates},
    MenuPlace{"plates.gravity", kPlates},
    MenuPlace{"plates.rotate", kPlates},
    MenuPlace{"plates.sway", kPlates},
    MenuPlace{"plates.contacts", kPlates},
    MenuPlace{"impact.accelerometry", kImpacts, "&3D Accelerometry"},
    MenuPlace{"impact.gsi-hic", kImpacts, "&GSI && HIC etc."},
    MenuPlace{"impact.analysis", kImpacts, "&Impact analysis"},
    MenuPlace{"integrate.gsi-hic", kIntegrals, "&GSI && HIC (Impacts)"},
    MenuPlace{"integrate.indefinite", kIntegrals, "&Indefinite integrals"},
    MenuPlace{"integrate.simpson", kIntegrals, "Simpson's &Rule"},
    MenuPlace{"integrate.statistics", kIntegrals, "Integral &Statistics"},
    MenuPlace{"integrate.trapezoid", kIntegrals, "&Trapezoidal integration"},
    MenuPlace{"integrate.epoch", kIntegrals, "Integrate by &Epoch"},
    MenuPlace{"integrate.work", kIntegrals, "&Work or Angular impulse analysis"},
    MenuPlace{"integrate.moment-power", kIntegrals, "&Moment power analysis"},
    MenuPlace{"ensemble.average", kAnalysis, "&Ensemble averaging"},
    MenuPlace{"statistics.descriptive", kStatistics},
    MenuPlace{"statistics.median", kStatistics},
    MenuPlace{"statistics.emg", kStatistics},
    MenuPlace{"statistics.integration", kStatistics},
    MenuPlace{"statistics.windows", kStatistics},
    MenuPlace{"statistics.correlation", kStatistics},
    MenuPlace{"statistics.regression", kStatistics},
    MenuPlace{"statistics.cross-correlation", kStatistics},
    MenuPlace{"graph.single", kView},
    MenuPlace{"graph.multi", kView, "Select Channels for &Multi-Axis Graph"},
    MenuPlace{"graph.all", kView},
    MenuPlace{"graph.xy", kView},
    MenuPlace{"data.table", kView, "", true},
    MenuPlace{"data.header", kView},
};

}  // namespace

std::span<const MenuPlace> MenuPlaces() {
  return kPlaces;
}

}  // namespace velmora::ui
