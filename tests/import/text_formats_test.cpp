#include <algorithm>

#include "support/recordings.hpp"
#include "support/text_load.hpp"

namespace velmora::test {
namespace {

struct TextFormatsTest : TextLoadTest {
  [[nodiscard]] std::vector<float> Times() { return velmora::test::Channel(trial, 0); }
};

constexpr const char* kNexus =
    "\xEF\xBB\xBF"
    "Devices,,,,,,\r\n250,,,,,,\r\n,,Imported Plate #1 - Force,,EMG - EMG,EMG - EMG,\r\n"
    "Frame,Sub Frame,Fx,Fy,1,1,\r\n,,N,N,V,mm/s\xC2\xB2,\r\n"
    "7,0,1,2,3,4,\r\n7,1,5,6,7,8,\r\n8,0,9,,11,12,\r\n";

TEST_F(TextFormatsTest, ViconDevicesOfNexus) {
  Load("a.csv", kNexus);
  EXPECT_EQ(trial.FileTypeCode, 51);
  EXPECT_TRUE(questions.formNames.empty()) << "the header says it all";
  EXPECT_EQ(Labels(), (Texts{"Fx", "Fy", "EMG 1", "EMG 1"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N", "V", "mm/s²"}));
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(Rows(), (Frames{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 0, 11, 12}}));
  EXPECT_EQ(Told(), "Empty fields, read as 0: 1, the first in line 8.\n");
  // Sections before and behind, with other rates.
  questions.boxAnswers = {Button::No};
  Load("b.csv", "Devices\n\n\nFrame\nnothing\n");
  EXPECT_EQ(trial.NData, 0);
  Load("b.csv",
       std::string(kNexus + 3) + "\r\nTrajectories\r\n100\r\n,,M1\r\nFrame,Sub Frame,X\r\n,,mm\r\n1,0,5\r\n");
  EXPECT_EQ(trial.NData, 3);
  EXPECT_NE(Told().find("Of the file's sections Devices was read, not: Trajectories."), std::string::npos);
}

TEST_F(TextFormatsTest, ViconTextAgreesWithTheC3dOfTheTrial) {
  if (!Recording("vendor")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  LoadPath(*Recording("vendor/vicon_nexus_analogs.csv"));
  const Texts labels = Labels();
  const Frames rows = Rows();
  LoadPath(*Recording("c3d/pyomeca_markers_analogs.c3d"));
  ASSERT_EQ(trial.NData, 11600);
  int matched = 0;
  for (int c = 1; c <= trial.NChan; ++c) {
    const std::string label = trial.ChanLabel[c].Text();
    const auto it = std::find(labels.begin(), labels.end(), label.substr(label.find('.') + 1));
    for (std::size_t i = 0; it != labels.end() && i < rows.size(); ++i) {
      const auto k = static_cast<std::size_t>(it - labels.begin());
      ASSERT_NEAR(rows[i][k], trial.Data(static_cast<std::int64_t>(i) + 1, c), 5.1e-7F);
    }
    matched += it != labels.end() ? 1 : 0;
  }
  EXPECT_EQ(matched, 32) << "those of two amplifiers with labels of their own";
}

TEST_F(TextFormatsTest, ViconTextOfWorkstation) {
  Load("a.txt",
       "ANALOG\n1000\nSample # L_Fx R_Fz\n1 0.5 -2\n2 1.5 -3\n\nTRAJECTORIES\n50\nSample # a b c\nX Y Z\n1 9 "
       "9 9\n");
  EXPECT_EQ(trial.FileTypeCode, 51);
  EXPECT_EQ(Labels(), (Texts{"L_Fx", "R_Fz"}));
  EXPECT_EQ(trial.Rate, 1000.0);
  EXPECT_EQ(Rows(), (Frames{{0.5F, -2}, {1.5F, -3}}));
  Load("a.csv",
       "FORCE PLATES\n500\nSample #,Fx,Fy\nunit,N,N\n1,1,2\n2,3,4\nANALOG\n1000\nSample "
       "#,EMG\n,mV\n1,7\n2,8\n3,9\n");
  EXPECT_EQ(Labels(), (Texts{"EMG"})) << "analog signals before plates";
  EXPECT_EQ(UnitsOfChannels(), (Texts{"mV"}));
  EXPECT_EQ(trial.NData, 3);
  Load("a.csv",
       "Trial 3\nDate:,1.2.2001\nTime:,12:00\nSampling rate:,250\nSample #,EMG1,EMG2\n,V,V\n1,5,6\n2,7,8\n");
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(Labels(), (Texts{"EMG1", "EMG2"}));
  EXPECT_EQ(Rows(), (Frames{{5, 6}, {7, 8}}));
  // A rate that the section leaves empty is asked for.
  questions.inputAnswers = {"60"};
  Load("a.csv", "ANALOG\n\nSample #,EMG\n1,5\n2,6\n");
  EXPECT_EQ(trial.Rate, 60.0);
  EXPECT_EQ(Times(), (std::vector<float>{0, static_cast<float>(1 / 60.0)}));
}

TEST_F(TextFormatsTest, AHeaderThatIsNotUnderstoodIsOfferedToTheParser) {
  questions.boxAnswers = {Button::No};
  Load("a.txt", "ANALOG nothing here\nno numbers\nat all\n");
  EXPECT_TRUE(
      LastBox().starts_with("Format Not Read|Vicon comma-separated variables file not understood: the "
                            "section ANALOG holds no rows"))
      << LastBox();
  EXPECT_EQ(trial.NData, 0);
  questions.boxAnswers = {Button::Yes};
  LoadWithDefaults("a.p2d", "title\n1 2\n3 4\n5 6\n");
  EXPECT_EQ(trial.NData, 3);
  EXPECT_EQ(trial.FileTypeCode, 15);
  EXPECT_EQ(workbench.time.Base, TimeBase::Seconds);
  Load("a.p2d", "");
  EXPECT_EQ(LastBox(), "|File is empty.");
}

TEST_F(TextFormatsTest, P2dIsACurveOverOneCycle) {
  Load("a.p2d", "5 2 0\n1.5 0.1\n2.5 0.2\n3.5 0.3\n2.5 0.2\n1.5 0.1\n");
  EXPECT_EQ(trial.FileTypeCode, 90);
  EXPECT_EQ(Labels(), (Texts{"Comp. 1", "Comp. 2"}));
  EXPECT_EQ(Times(), (std::vector<float>{0, 25, 50, 75, 100}));
  EXPECT_EQ(workbench.time.Base, TimeBase::Percentage);
  EXPECT_EQ(trial.ChanUnits[0].Text(), "%");
  EXPECT_EQ(trial.Data(3, 1), 3.5F);
  Load("a.p2d", "101 1 0\n1 2\n3 4\n");
  EXPECT_EQ(trial.NChan, 2) << "columns count, not what the first line says of them";
  EXPECT_EQ(LastBox(),
            "Fewer Samples Than Promised|The file promised 101 samples per channel; 2 were found.");
}

TEST_F(TextFormatsTest, DelsysTimesForEachChannel) {
  const std::string head =
      "Label: EMG Sampling frequency: 4.000000e+000 Number of points: 5 start: 0 Unit: V Domain Unit: s\n"
      "Label: ACC Sampling frequency: 2.000000e+000 Number of points: 2 start: 0 Unit: g Domain Unit: s\n\n";
  const std::string rows =
      "X[s],\"EMG 1\",X[s],\"ACC, X\"\n0,1,0,10\n0.25,2,0.5,20\n0.5,3,,\n0.75,4,,\n1,5,,\n";
  questions.boxAnswers = {Button::Yes};
  Load("a.csv", head + rows);
  EXPECT_EQ(trial.FileTypeCode, 63);
  EXPECT_EQ(Labels(), (Texts{"EMG 1", "ACC, X"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "g"}));
  EXPECT_EQ(trial.Rate, 4.0);
  EXPECT_EQ(trial.ChanRate[2], 2.0);
  // 10 and 20 at 0 and 0.5 s, by hand at 0, 0.25, ... 1 s; behind its end the channel keeps its value.
  EXPECT_EQ(Rows(), (Frames{{1, 10}, {2, 15}, {3, 20}, {4, 20}, {5, 20}}));
  EXPECT_EQ(Told(), "Interpolated to 4 Hz: ACC, X (2 Hz).\n");
  questions.boxAnswers = {Button::No};
  Load("a.csv", head + rows);
  EXPECT_EQ(Rows(), (Frames{{1}, {2}, {3}, {4}, {5}}));
  // More columns than a trial holds channels: half of them are times.
  std::string names;
  std::string values;
  std::string later;
  for (int c = 1; c <= 70; ++c) {
    const std::string number = std::to_string(c) + (c < 70 ? "," : "\n");
    names += "X[s],c" + number;
    values += "0," + number;
    later += "1," + number;
  }
  AnswerForm({{"ChannelsToRead", "1, 70"}});
  Load("a.csv", "DEMG\n" + names + values + later);
  EXPECT_EQ(trial.FileTypeCode, 62);
  EXPECT_EQ(Rows(), (Frames{{1, 70}, {1, 70}}));
  EXPECT_EQ(trial.Rate, 1.0);
}

TEST_F(TextFormatsTest, FScanTablesAndMovies) {
  const std::string head = "DATA_TYPE GRAPH\nSECONDS_PER_FRAME 0.02\nUNITS N\nASCII_DATA @@\n";
  Load("a.asg", head + "Frame,Time,Left,Right\n1,0,10,20\n2,0.02,11,21\n3,0.04,12,22\n");
  EXPECT_EQ(trial.FileTypeCode, 18);
  EXPECT_EQ(Labels(), (Texts{"Left", "Right"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N"}));
  EXPECT_EQ(trial.Rate, 50.0);
  EXPECT_EQ(Rows(), (Frames{{10, 20}, {11, 21}, {12, 22}}));
  Load("a.txt", head + "0,10\n0.02,11\n");
  EXPECT_EQ(Rows(), (Frames{{10}, {11}}));
  questions.boxAnswers = {Button::No};
  Load("a.txt", "DATA_TYPE MOVIE\nROWS 2\nCOLS 2\nASCII_DATA @@\nFrame 1\nB,1\n2,3\n");
  EXPECT_NE(LastBox().find("export a graph"), std::string::npos) << LastBox();
}

TEST_F(TextFormatsTest, ViLoggerClockIsNoChannel) {
  const std::string head = "NI VI Logger\nlog\n\n\n";
  Load("a.prn",
       head + "Scan rate: 0.004 seconds\nTime,Fx (N),Fy\n10:15:32.000 AM,1,2\n10:15:32.004 AM,3,4\n");
  EXPECT_EQ(trial.FileTypeCode, 80);
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(Labels(), (Texts{"Fx", "Fy"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", ""}));
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}}));
  EXPECT_EQ(trial.HeaderLines[trial.HeaderLineCount], "First sample at 10:15:32.000 AM");
  Load("a.prn", head + "x\ny\n23:59:59.5,7\n23:59:59.6,8\n23:59:59.7,9\n");
  EXPECT_EQ(trial.Rate, 10.0) << "from the clock";
  EXPECT_EQ(Rows(), (Frames{{7}, {8}, {9}}));
}

TEST_F(TextFormatsTest, PdtGoesByItsTimes) {
  LoadWithDefaults("a.pdt", "Scan Rate: 90\na\n0\t1\n0.125\t2\n0.25\t3\n");
  EXPECT_EQ(trial.FileTypeCode, 23);
  EXPECT_EQ(trial.Rate, 8.0);
  EXPECT_EQ(Rows(), (Frames{{1}, {2}, {3}}));
}

TEST_F(TextFormatsTest, OpenSimStorage) {
  Load("a.mot",
       "walk\t\nversion=1\t\nnRows=4\t\nnColumns=3\t\ninDegrees=yes\t\nendheader\t\n"
       "time\thip_flexion\tground_force_vy\n0.5\t1\t2\n  0.6  \t 3 \t4\n0.7\t5\t6\n");
  EXPECT_EQ(trial.FileTypeCode, 310);
  EXPECT_EQ(Labels(), (Texts{"hip_flexion", "ground_force_vy"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"deg", ""}));
  EXPECT_EQ(trial.Rate, 10.0);
  EXPECT_EQ(Times(), (std::vector<float>{0.5F, 0.6F, 0.7F})) << "the file's own";
  EXPECT_EQ(LastBox(), "Fewer Samples Than Promised|The file promised 4 samples per channel; 3 were found.");
  Load("a.sto", "name x\ndatacolumns 2\ndatarows 3\nrange 0 1\nendheader\n time a\n 0 1\n 0.1 2\n 0.25 3\n");
  EXPECT_EQ(Rows(), (Frames{{1}, {2}, {3}}));
  EXPECT_NE(Told().find("not evenly spaced, from sample 2 on"), std::string::npos) << Told();
  Load("a.sto", "q\nDataType=Vec3\nversion=3\nendheader\ntime\ta\n0\t1,2,3\n");
  EXPECT_NE(LastBox().find("values of type Vec3"), std::string::npos) << LastBox();
  questions.boxAnswers = {Button::No};
  Load("a.mot", "another program's\n1 2\n");
  EXPECT_TRUE(LastBox().starts_with("Filetype Unrecognized|"))
      << "what is not OpenSim's is asked about as before";
}

TEST_F(TextFormatsTest, LabViewMeasurements) {
  const auto head = [](const std::string& columns, const std::string& more = "") {
    return "LabVIEW Measurement\t\nSeparator\tTab\nDecimal_Separator\t,\nMulti_Headings\tYes\nX_Columns\t" +
           columns + "\n***End_of_Header***\t\n\t\n" + more;
  };
  const std::string segment =
      "Channels\t2\t\nSamples\t3\t3\nY_Unit_Label\tV\tg\nX0\t0,5\t0,5\nDelta_X\t0,25\t0,25\n***End_of_Header*"
      "**\t\n"
      "X_Value\tForce\tAcc\tComment\n";
  Load("a.lvm", head("No", segment + "\t1,5\t2\tfirst\n\t3,5\t4\n\t5\t6,25\n"));
  EXPECT_EQ(trial.FileTypeCode, 311);
  EXPECT_EQ(Rows(), (Frames{{1.5F, 2}, {3.5F, 4}, {5, 6.25F}}));
  EXPECT_EQ(Labels(), (Texts{"Force", "Acc"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "g"}));
  EXPECT_EQ(trial.Rate, 4.0);
  EXPECT_EQ(trial.HeaderLines[1], "First sample at 0.5 s");
  Load("a.lvm", head("One", segment + "0,5\t1\t2\n0,75\t3\t4\n1\t5\t6\n\n" + segment + "1,25\t7\t8\n"));
  EXPECT_EQ(trial.NData, 3);
  EXPECT_EQ(Times(), (std::vector<float>{0.5F, 0.75F, 1}));
  EXPECT_NE(
      Told().find("1 further segment of the file was not read: the next one starts at 0.5 s, not where the "
                  "one before ends."),
      std::string::npos)
      << Told();
  const auto from = [&segment](const std::string& start) {
    std::string text = segment;
    return text.replace(text.find("0,5\t0,5"), 7, start + "\t" + start);
  };
  const std::string joined =
      segment + "\t1\t2\n\t3\t4\n\t5\t6\n\n" + from("1,25") + "\t7\t8\n\t9\t10\n\t11\t12\n";
  Load("a.lvm",
       head("No", joined + from("2") + "\t13\t14\n" + from("7") + "\t0\t0\n" + from("8") + "\t0\t0\n"));
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12}, {13, 14}}));
  EXPECT_EQ(LastBox(), "Fewer Samples Than Promised|The file promised 9 samples per channel; 7 were found.");
  EXPECT_NE(Told().find("2 further segments of the file were not read: the next one starts at 7 s"),
            std::string::npos)
      << Told();
  questions.boxAnswers = {Button::Yes};
  Load("a.lvm", head("Multi",
                     "Channels\t2\t\t\t\nSamples\t3\t\t2\t\nDelta_X\t0,5\t\t1\t\n***End_of_Header***\t\n"
                     "X_Value\tA\tX_Value\tB\tComment\n0\t1\t0\t10\n0,5\t2\t1\t20\n1\t3\t\t\n"));
  EXPECT_EQ(Rows(), (Frames{{1, 10}, {2, 15}, {3, 20}}));
  questions.boxAnswers = {};
  Load("a.lvm", "LabVIEW Measurement\t\nSeparator\tTab\n");
  EXPECT_NE(LastBox().find("its header has no end"), std::string::npos) << LastBox();
  Load("a.lvm", head("One", "Channels\t-3\n***End_of_Header***\nX_Value\n1\t2\n"));
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(TextFormatsTest, MarkerTrajectories) {
  Load("a.trc",
       "PathFileType\t4\t(X/Y/Z)\t9 steps.trc\r\nDataRate\tCameraRate\tNumFrames\tNumMarkers\tUnits\r\n"
       "60.00\t60.00\t2\t2\tmm\r\nFrame#\tTime\tHEEL\t\t\tTOE\t\t\t\r\n\t\tX1\tY1\tZ1\tX2\tY2\tZ2\r\n\r\n"
       "5\t0.067\t1\t2\t3\t\t\t\t\r\n6\t0.083\t4\t5\t6\t7\t8\t9\t\r\n");
  EXPECT_EQ(trial.FileTypeCode, 312);
  EXPECT_EQ(Labels(), (Texts{"HEEL X", "HEEL Y", "HEEL Z", "TOE X", "TOE Y", "TOE Z"}));
  EXPECT_EQ(UnitsOfChannels(), Texts(6, "mm"));
  EXPECT_EQ(Rows(), (Frames{{1, 2, 3, 0, 0, 0}, {4, 5, 6, 7, 8, 9}}));
  EXPECT_EQ(trial.Rate, 60.0);
  EXPECT_EQ(Times(), (std::vector<float>{0, static_cast<float>(1 / 60.0)}));
  EXPECT_EQ(trial.TrialTitle, "9 steps.trc");
  EXPECT_EQ(trial.HeaderLines[2], "First sample at 0.067 s");
}

TEST_F(TextFormatsTest, DamagedTextsEndInAMessageOrASmallerTrial) {
  const std::string lvm =
      "LabVIEW Measurement\t\nX_Columns\tOne\n***End_of_Header***\nChannels\t1e9\nDelta_X\t0\n"
      "***End_of_Header***\nX\ta\n1\t2\n2\t3\n";
  for (const auto& [name, whole] : std::vector<std::pair<std::string, std::string>>{
           {"a.csv", kNexus},
           {"a.lvm", lvm},
           {"a.p2d", "3 2 0\n1 2\n3 4\n5 6\n"},
           {"a.sto", "x\nnRows=-1\nendheader\ntime\ta\n0\t1\n1\t2\n"},
           {"a.trc",
            "PathFileType\nDataRate\tNumFrames\n-5\t99999999999999999999\nF\tT\tA\n\n1\t0\t1\t2\t3\n"},
           {"a.asg", "DATA_TYPE X\nSECONDS_PER_FRAME 0\na,b,c\n1,2,3\n2,3,4\n"}}) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
      questions.formAnswers.clear();
      offered.clear();
      questions.boxAnswers.assign(3, Button::No);
      questions.inputAnswers.assign(2, "50");
      AnswerForm({}, "Cancel");
      Load(name, whole.substr(0, size));
      EXPECT_TRUE(trial.NData > 0 || !questions.boxes.empty() || !offered.empty())
          << name << " cut at " << size;
      for (int c = 0; trial.NData > 0 && c <= trial.NChan; ++c) {
        EXPECT_TRUE(std::isfinite(trial.Data(trial.NData, c)));
      }
    }
  }
}

}  // namespace
}  // namespace velmora::test
