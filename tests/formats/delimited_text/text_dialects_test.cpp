#include "support/text_load.hpp"

namespace velmora::test {
namespace {

using TextDialectsTest = TextLoadTest;

TEST_F(TextDialectsTest, FirstLinesSelectTheDialect) {
  struct Case {
    const char* name;
    const char* head;
    int code;
    const char* format;
  };
  for (const Case& c : {
           Case{"a.txt", "Label: x Sampling frequency: 10\n\n\nX [s]\ta\tb\n", 63, "Delsys ASCII EMG data"},
           Case{"a.csv", "Headers\nx\n", 30, "ASCII data"},
           Case{"a.csv", "Test Date 1.1.\nx\n", 31, "ASCII data"},
           Case{"a.txt", "v3d text\nx\n", 91, "Visual3D ASCII data"},
           Case{"a.v3d", "anything\nx\n", 91, "Visual3D ASCII data"},
           Case{"a.txt", "one\ntwo\nthree\nITEM\tX\tY\n", 91, "Visual3D ASCII data"},
           Case{"a.txt", "Rodex2 data\nx\n", 256, "ASCII data"},
           Case{"a.txt", "// Start Time: x\nx\n", 71, "XSens ASCII data"},
           Case{"a.txt", "Channels\t2\n", 82, "NI Labview SignalExpress ASCII data"},
           Case{"a.txt", "\"Test Type\nx\n", 34, "ASCII data"},
           Case{"a.txt", "\"Specimen\nx\n", 34, "ASCII data"},
           Case{"a.fsv", "demg\nx\n", 33, "FSV/TSV ASCII data"},
           Case{"a.fil", "DEMG\nx\n", 15, "Hybrid III ASCII data"},
           Case{"a.txt", "demg\nx\n", 15, "ASCII data"},
       }) {
    LoadWithDefaults(c.name, std::string(c.head) + "0\t2\t7\t4\n1\t5\t9\t1\n2\t1\t1\t3\n");
    EXPECT_EQ(trial.FileTypeCode, c.code) << c.head;
    EXPECT_EQ(questions.panels.back().format, c.format) << c.head;
    EXPECT_GE(trial.NData, 3) << c.head;
  }
}

TEST_F(TextDialectsTest, KeywordsOfPlainText) {
  LoadWithDefaults("a.txt",
                   "Rate\t500\n?Sample Name: 9 jumps\nLabel\tFx [N]\tMy [N.m\tlast\n"
                   "Engineering Units\t\tkN.m\tm\n0\t1\t2\t3\n0.002\t4\t5\t6\n0.004\t7\t8\t9\n");
  EXPECT_EQ(Offered("ParseHasTime"), "true");
  EXPECT_EQ(Offered("TrialTitle"), "9 jumps");
  EXPECT_EQ(trial.Rate, 500.0);
  EXPECT_EQ(Labels(), (Texts{"Fx", "My", "last"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "kN.m", "m"}));
  EXPECT_EQ(trial.TrialTitle, "9 jumps");
  LoadWithDefaults("a.txt", "// Sample rate: 20\nCounter\tx\n0\t1\n0.05\t2\n0.1\t3\n");
  EXPECT_EQ(trial.Rate, 20.0);
  EXPECT_EQ(Rows(), (Frames{{1}, {2}, {3}}));
}

TEST_F(TextDialectsTest, ANameForTheTimeColumnIsNoChannels) {
  const auto load = [this](const char* name, const std::string& head, const std::string& labelsLine = "") {
    const Edits time = {{"ParseHasTime", "true"}};
    const Edits both = {{"ParseHasTime", "true"}, {"ParseLabelsLine", labelsLine}};
    LoadWithDefaults(name, head + "\n0\t5\t6\n1\t7\t8\n2\t9\t1\n", labelsLine.empty() ? time : both);
    Texts names = Labels();
    const Texts units = UnitsOfChannels();
    names.insert(names.end(), units.begin(), units.end());
    return names;
  };
  EXPECT_EQ(load("a.txt", "Channel description\tTime\tFx\tFy\nEngineering unit\ts\tN\t"),
            (Texts{"Fx", "Fy", "N", ""}));
  EXPECT_EQ(load("a.txt", "Label\tFx\tFy\t\nEngineering unit\tN\tkN\t"), (Texts{"Fx", "Fy", "N", "kN"}));
  EXPECT_EQ(load("a.txt", "Channels\t2\nX_Value\tFx\tFy\tComment"), (Texts{"Fx", "Fy", "", ""}));
  EXPECT_EQ(load("a.fsv", "CHANNEL_NAMES\tTime\tEMG\nMARKER_NAMES\theel"), (Texts{"EMG", "heel", "", ""}));
  EXPECT_EQ(load("a.txt", "names,Time,Fx,Fy", "1"), (Texts{"Fx", "Fy", "", ""}));
}

TEST_F(TextDialectsTest, DelsysKeepsItsLabelsAndIsInVolts) {
  LoadWithDefaults("a.csv",
                   "DEMG trial Channels: 2\nNumber of samples:  5\nSampling frequency: 10\n"
                   "Time [s],EMG 1 [V],\"EMG, 2\"\n0,1,2\n0.1,3,4\n0.2,5,6\n");
  EXPECT_EQ(trial.FileTypeCode, 62);
  EXPECT_EQ(Labels(), (Texts{"EMG 1 [V]", "EMG, 2"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "V"}));
  EXPECT_EQ(trial.Rate, 10.0);
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {5, 6}}));
  EXPECT_EQ(LastBox(), "Check the Data|The file announces 5 samples per channel and holds 3.");
}

TEST_F(TextDialectsTest, BioPluxCountsBecomeMillivolts) {
  LoadWithDefaults("a.txt",
                   "# bioPlux header\n# second\n# SamplingFrequency\t1000\n# SamplingResolution 12\n"
                   "1\t0\t2048\t4095\n2\t1\t0\t2049\n3\t0\t2048\t2048\n");
  EXPECT_EQ(trial.FileTypeCode, 25);
  EXPECT_EQ(trial.Rate, 1000.0);
  EXPECT_EQ(Labels(), (Texts{"Counter", "Digital Port", "EMG ch.03", "EMG ch.04"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"n", "0/1", "mV", "mV"}));
  EXPECT_EQ(trial.ChanGain[3], 5.0 / 4096);
  EXPECT_EQ(trial.ChanGain[2], 1.0);
  EXPECT_EQ(Rows(), (Frames{{1, 0, 0, 2047.0F * 5 / 4096}, {2, 1, -2.5F, 5.0F / 4096}, {3, 0, 0, 0}}));
}

TEST_F(TextDialectsTest, FormulasStandBehindSixteenRawChannels) {
  std::string text = "Formula1\nx\n";
  for (int row = 0; row < 3; ++row) {
    for (int c = 1; c <= 26; ++c) {
      text += std::to_string(100 * row + c) + (c < 26 ? "\t" : "\n");
    }
  }
  questions.boxAnswers = {Button::Yes};
  LoadWithDefaults("a.txt", text);
  EXPECT_EQ(LastBox(),
            "Delete Raw (A/D) Data?|Do you want the raw data (first 16 channels) deleted?\nOriginal file is "
            "not affected.");
  EXPECT_EQ(trial.FileTypeCode, 26);
  EXPECT_EQ(Labels(), (Texts{"Fx", "Fy", "Fz", "Fz", "CofPy", "CofPx", "", "CofPx", "CofPy", "Formula10"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N", "N", "N", "N.mm", "N.mm", "N", "cm", "cm", "N"}));
  EXPECT_EQ(Rows()[2], (std::vector<float>{217, 218, 219, 220, 221, 222, 223, 224, 225, 226}));
  questions.boxAnswers = {Button::No};
  LoadWithDefaults("a.txt", text);
  EXPECT_EQ(trial.NChan, 26);
  EXPECT_EQ(Labels()[16], "Fx");
  LoadWithDefaults("b.txt", "Formula1\nx\n1\t2\n3\t4\n");
  EXPECT_EQ(Labels(), (Texts{"Fx", "Fy"})) << "no question without raw channels";
}

TEST_F(TextDialectsTest, CountersOfMarkerAndMeasurementFiles) {
  // "File" and "Frame" on the third line: the first two channels are counters.
  const char* marked = "one\ntwo\nFile Frame\tItem\n0\t1\t1\t11\n0.5\t2\t2\t12\n1\t3\t3\t13\n";
  LoadWithDefaults("a.txt", marked, {{"ParseLeaveOut", "2"}});
  EXPECT_EQ(trial.NChan, 2) << "columns chosen one by one";
  LoadWithDefaults("a.txt", marked);
  EXPECT_EQ(trial.FileTypeCode, 93);
  EXPECT_EQ(Rows(), (Frames{{11}, {12}, {13}}));
  // SignalExpress: a second X column repeats the first one.
  LoadWithDefaults("b.txt",
                   "Channels\t2\nSamples\t3\nY_Unit_Label\tV\tg\nX_Dimension\tSeconds\nX0\t0\n"
                   "Delta_X\t0,25\nX_Value\tone\ttwo\n0\t0\t5\t6\n0.25\t0.25\t7\t8\n0.5\t0.5\t9\t1\n");
  EXPECT_EQ(trial.Rate, 4.0);
  EXPECT_EQ(trial.ChanLabel[0], "Seconds");
  EXPECT_EQ(Rows(), (Frames{{5, 6}, {7, 8}, {9, 1}}));
  // FSV: names and units, and a channel that merely happens to count stays.
  LoadWithDefaults("c.fsv",
                   "NO_OF_MARKERS 1\nCHANNEL_NAMES\tEMG\tFz\nCHANNEL_UNITS\tmV\tN\nMARKER_NAMES\theel\n"
                   "MARKER_UNITS\tmm\n1\t5\t9\n2\t7\t8\n3\t6\t7\n");
  EXPECT_EQ(trial.FileTypeCode, 33);
  EXPECT_EQ(Labels(), (Texts{"EMG", "Fz", "heel"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"mV", "N", "mm"}));
  EXPECT_EQ(trial.NChan, 3);
}

TEST_F(TextDialectsTest, Visual3DForces) {
  LoadWithDefaults("a.txt",
                   "V3D\nx\nITEM\tForceX \tFreeMoment\tangle\nFP\tFP1\tFP1\t\n0\t1\t2\t3\n0.1\t4\t5\t6\n"
                   "0.2\t7\t8\t9\n");
  EXPECT_EQ(Labels(), (Texts{"ForceX FP1", "FreeMoment FP1", "angle"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N.m", ""}));
  // A first line of separators and one character: the data start two lines further on.
  LoadWithDefaults("b.txt", "V3D\nITEM\tX\tY\n1\t\t\n1\t\t\n2\t7\t8\n3\t9\t1\n4\t2\t3\n");
  EXPECT_EQ(Offered("ParseSkip"), "4");
}

}  // namespace
}  // namespace velmora::test
