#include <array>

#include "core/questions/form.hpp"
#include "fuzz_target.hpp"
#include "import/detect_text_format.hpp"
#include "import/reader_table.hpp"

using namespace velmora;

namespace {

/// Of a box the last button but Cancel comes up as well: a text is parsed, or not.
class Reading : public fuzz::BlindAnswers {
 public:
  explicit Reading(bool yes) : yes_(yes) {}

  Button AskBox(const Box& box) override {
    const Button first = BlindAnswers::AskBox(box);
    return yes_ || box.buttons.size() < 2 ? first : box.buttons[1];
  }
  std::string AskInput(const InputQuestion& /*question*/) override { return "100"; }
  std::string AskForm(Form& /*form*/) override { return ++forms_ > 4 ? "Cancel" : "OK"; }

 private:
  bool yes_;
  int forms_ = 0;
};

constexpr std::array<const char*, 7> kExtensions = {"CSV", "LVM", "MOT", "TRC", "ASG", "P2D", "TXT"};

}  // namespace

// The first byte chooses the extension, and how boxes are answered.
std::vector<std::string> FuzzSeeds() {
  return {
      "@Devices,,,,\n250,,,,\n,,Imported Plate - Force,,EMG\nFrame,Sub "
      "Frame,Fx,Fy,1\n,,N,N,V\n7,0,1,2,3\n7,1,5,6,7\n\n"
      "Trajectories\n100\n,,M1\nFrame,Sub Frame,X\n,,mm\n1,0,5\n",
      "@ANALOG\n1000\nSample # L_Fx R_Fz\n1 0.5 -2\n2 1.5 -3\n\nFORCE PLATES\n50\n\n1 9\n",
      "@T\nDate:,1\nTime:,2\nSampling rate:,250\nSample #,EMG1\n,V\n1,5\n2,7\n",
      "ALabVIEW Measurement\t\nSeparator\tTab\nDecimal_Separator\t,\nMulti_Headings\tYes\nX_Columns\tMulti\n"
      "***End_of_Header***\t\n\t\nChannels\t2\t\t\nSamples\t3\t\t2\nY_Unit_Label\tV\t\tg\nX0\t0,5\nDelta_"
      "X\t0,25\t\t0,5\n"
      "***End_of_Header***\t\nX_Value\tA\tX_Value\tB\tComment\n0\t1,5\t0\t2\tfirst\n0,25\t3,5\t0,5\t4\n0,"
      "5\t6\t\t\n",
      "Bwalk\nversion=1\nnRows=3\nnColumns=3\ninDegrees=yes\nendheader\ntime\thip\tforce\n0.5\t1\t2\n0."
      "6\t3\t4\n0.75\t5\t6\n",
      "CPathFileType\t4\t(X/Y/"
      "Z)\ta.trc\nDataRate\tCameraRate\tNumFrames\tNumMarkers\tUnits\n60\t60\t2\t2\tmm\n"
      "Frame#\tTime\tHEEL\t\t\tTOE\n\t\tX1\tY1\tZ1\tX2\n\n5\t0.067\t1\t2\t3\t\t\t\n6\t0."
      "083\t4\t5\t6\t7\t8\t9\n",
      "DDATA_TYPE GRAPH\nSECONDS_PER_FRAME 0.02\nUNITS N\nASCII_DATA "
      "@@\nFrame,Time,Left\n1,0,10\n2,0.02,11\n",
      "E5 2 0\n1.5 0.1\n2.5 0.2\n3.5 0.3\n",
      "FNI VI Logger\nlog\n\n\nScan rate: 0.004 seconds\nTime,Fx (N),Fy\n10:15:32.000 AM,1,2\n10:15:32.004 "
      "AM,3,4\n",
      "FLabel: EMG Sampling frequency: 4 Number of points: 3 start: 0 Unit: V Domain Unit: s\nLabel: ACC "
      "Sampling "
      "frequency: 2 Number of points: 2 start: 0 Unit: g Domain Unit: "
      "s\n\nX[s],\"EMG\",X[s],\"ACC\"\n0,1,0,10\n"
      "0.25,2,0.5,20\n0.5,3,,\n",
      "FScan Rate: 90\na\n0\t1\n0.1\t2\n0.2\t3\n",
  };
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  fuzz::Load<Reading> load(data + 1, size - 1, (data[0] & 64U) != 0);
  Trial& trial = load.trial;
  trial.FileExt = kExtensions[data[0] % 64 % kExtensions.size()];
  const std::string_view head(reinterpret_cast<const char*>(data + 1), std::min(size - 1, kHeadBytes));
  if (const Format* format = FindFormat(trial.FileExt, head)) {
    ReadFormat(load.workbench, load.panel, *format);
  } else {
    DetectTextFormat(load.workbench, load.panel);
  }
  fuzz::WantNumbers(trial);
  return 0;
}
