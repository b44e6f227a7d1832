#include "ui/menu_list.hpp"

#include <array>

namespace velmora::ui {
namespace {

constexpr std::string_view kFile = "&File";
constexpr std::string_view kSave = "&File/&Save";
constexpr std::string_view kEdit = "&Edit";
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
constexpr std::string_view kView = "&View";

constexpr std::array kPlaces = {
    MenuPlace{"file.load", kFile, "&Load selected file"},
    MenuPlace{"file.merge", kFile, "&Merge file with existing data"},
    MenuPlace{"file.read-units", kFile, "Read Sa&ved units, labels && factors"},
    MenuPlace{"save.vma", kSave, "&Velmora ASCII (.VMA)"},
    MenuPlace{"save.dat", kSave, "Bio&Ware 2 Format (.DAT)"},
    MenuPlace{"save.csv", kSave, "&Comma Separated Variable (.CSV)"},
    MenuPlace{"save.wks", kSave, "&Lotus Worksheet (.WK1/.WKS)"},
    MenuPlace{"save.bin", kSave, "Vel&mora1 Binary (.BIN)"},
    MenuPlace{"save.rf", kSave, "&Reduced Forces Format (.RF)"},
    MenuPlace{"save.prn", kSave, "&Space Delimited ASCII File (.PRN)"},
    MenuPlace{"save.tab", kSave, "&Tab Delimited ASCII File (.TAB)"},
    MenuPlace{"save.bsv", kSave, "Sa&ve Bias Values (.BSV)"},
    MenuPlace{"save.vmb", kSave, "Velmora&2 Binary (.VMB) (default)"},
    MenuPlace{"save.c3d", kSave, "C&3D format (.C3D)"},
    MenuPlace{"save.vmu", kSave, "&Units, labels && factors (.VMU)"},
    MenuPlace{"save.fsv", kSave, "Visual&3D FSV format (.FSV/.TSV)"},
    MenuPlace{"save.vad", kSave, "Save &Vicon AD file (.VAD)"},
    MenuPlace{"file.open-directory", kFile, "&Open directory", true},
    MenuPlace{"file.make-subdirectory", kFile, "Create a &Subdirectory"},
    MenuPlace{"file.remove-directory", kFile, "&Remove the Current directory"},
    MenuPlace{"file.close", kFile, "&Close selected file"},
    MenuPlace{"file.delete", kFile, "&Delete selected file"},
    MenuPlace{"file.explore", kFile, "Explore Current directory"},
    MenuPlace{"file.refresh", kFile, "&Refresh"},
    MenuPlace{"file.exit", kFile, "E&xit", true},
    MenuPlace{"edit.recall-labels", kEdit, "Recall &Previous labels && units"},
    MenuPlace{"edit.sampling-rate", kEdit, "Sampling &Rate"},
    MenuPlace{"edit.labels", kEdit, "&Labels"},
    MenuPlace{"edit.units", kEdit, "&Units"},
    MenuPlace{"edit.title", kEdit, "&Title"},
    MenuPlace{"edit.experiment-information", kEdit, "&Experiment Information"},
    MenuPlace{"analysis.scaling", kEdit, "&Scaling", true},
    MenuPlace{"math.absolute", kMath, "&Absolute value (|X|)"},
    MenuPlace{"analysis.scaling", kAnalysis, "&Scaling"},
    MenuPlace{"analysis.high-pass", kAnalysis, "&High-pass Filter"},
    MenuPlace{"analysis.low-pass", kAnalysis, "&Low-pass filter"},
    MenuPlace{"smooth.moving-average", kSmooth, "&Moving average"},
    MenuPlace{"smooth.butterworth", kSmooth, "&Butterworth, Critically-damped, or Bessel"},
    MenuPlace{"smooth.digital", kSmooth, "&Digital filters"},
    MenuPlace{"smooth.interpolate", kSmooth, "&Interpolation"},
    MenuPlace{"bias.autozero-left", kBias, "&Autozero (from left)"},
    MenuPlace{"time.normalize", kTime, "&Normalize to number of intervals"},
    MenuPlace{"timebase.count", kUnits, "&Count"},
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
    MenuPlace{"plates.show", kPlates, "Show plate parameters"},
    MenuPlace{"plates.change-type", kPlates, "Change plate type"},
    MenuPlace{"plates.edit", kPlates, "Edit plate parameters"},
    MenuPlace{"plates.reduce", kPlates, "Reduce force plate data"},
    MenuPlace{"plates.combine", kPlates, "Combine &Two plates"},
    MenuPlace{"plates.gravity", kPlates, "Center of &Gravity"},
    MenuPlace{"plates.rotate", kPlates, "Ro&tate force plate"},
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
    MenuPlace{"graph.single", kView, "&Select Channels for Single-Axis Graph"},
    MenuPlace{"graph.multi", kView, "Select Channels for &Multi-Axis Graph"},
    MenuPlace{"graph.all", kView, "&Graph all Channels on Single-axis Graph"},
};

}  // namespace

std::span<const MenuPlace> MenuPlaces() {
  return kPlaces;
}

}  // namespace velmora::ui
