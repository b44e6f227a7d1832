#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>

#include "core/text/text.hpp"
#include "support/recordings.hpp"
#include "support/text_load.hpp"

namespace velmora::test {
namespace {

// What an independent parse finds in public recordings: data lines from `firstLine`, parted by `separator`.
// What becomes of each, and what the program says of it, stands on the page for users.
struct Expected {
  const char* file;
  int firstLine = 0;
  char separator = '\0';
  int rows = 0;
  int columns = 0;
  Edits change = {};   // without which it does not open
  int timeColumn = 0;  // 0: none, or no times
  double rate = 0;     // Hz, as published, when the time box is checked
  /// Of files whose headers say it all, read without a dialogue: columns that are no channels.
  std::vector<int> leftOut = {};
  bool asRecording = false;
};

const Edits kFirst64 = {{"NChan", "64"}, {"ParseSkipToEndOfLine", "true"}};

const std::vector<Expected>& Recordings() {
  static const std::vector<Expected> recordings = {
      {"text/3dPendulum.txt", 2, ',', 300, 10, {}, 1, 100},
      {"text/AAc101.txt", 2, '\t', 5, 3},
      {"text/GRFZjump_m.txt", 2, '\t', 2490, 2},
      {"text/WinterTableA1.txt", 3, ' ', 106, 18, {}, 2, 69.93},
      {"text/all.frc", 1, ' ', 6001, 3},
      {"text/balltoss.txt", 3, '\t', 22, 3, {}, 1, 30},
      {"text/biosppy_acc.txt", 6, '\t', 2000, 3},
      {"text/biosppy_emg_1.txt", 5, '\t', 63880, 1},
      {"text/csuhmc_example_vertical_grf.csv", 1, ',', 5559, 2, {}, 1, 100},
      {"text/csuhmc_treadmill-speed.csv", 1, ',', 3100, 2, {}, 1, 100},
      {"text/data.csv", 2, '\t', 10, 4, {}, 1, 1},
      {"text/dryft_custom_drift_S001runT25.csv", 1, ',', 9000, 1},
      {"text/emg_CRonly_DERIVED.csv", 1, ',', 3360, 2, {}, 1, 1000},
      {"text/pushrimkinetics_offsets_baseline_TRIMMED.csv", 1, ',', 2000, 24},
      {"text/pushrimkinetics_propulsion.csv", 2, ';', 7777, 25},
      {"vendor/AMTI_Trial1-FxFyFzMxMyMz.asc", 1, ',', 200, 7, {}, 1, 200},
      {"vendor/ActiGraph13.csv", 11, ',', 990, 4},
      {"vendor/ActiGraph13_timestamps_headers.csv", 12, ',', 1000, 6, {{"ParseSkip", "11"}, {"NChan", "6"}}},
      {"vendor/Actical.csv",
       32,
       ',',
       501,
       3,
       {{"ParseSkip", "31"}, {"NChan", "3"}, {"ParseSkipToEndOfLine", "true"}}},
      {"vendor/MT_012005D6-000_sit_to_stand-000_00B421ED.txt", 7, '\t', 1459, 11},
      {"vendor/apdm_format7.csv", 4, ',', 3, 64, kFirst64},
      {"vendor/gonio_arm_flex_DERIVED.txt", 2, '\t', 18750, 4},
      {"vendor/loadsol_test_poids.csv", 5, ',', 1094, 25, {}, 1, 200},
      {"vendor/loadsol_test_poids.txt", 5, '\t', 1094, 25, {}, 1, 200},
      {"vendor/loadsol_test_pointe_5_TRIMMED.txt", 5, '\t', 2000, 25, {}, 1, 200},
      {"vendor/multi_time_column.lvm", 24, '\t', 3, 4, {}, 1, 51200, {3}, true},
      {"vendor/no_decimal_separator.lvm", 23, '\t', 4, 6, {}, 1, 4000, {3, 5}, true},
      {"vendor/opensignals_eda_slow_signal.txt", 4, '\t', 2820, 3},
      {"vendor/opensignals_emg2_acc_0_1.txt", 4, '\t', 6000, 5},
      {"vendor/opensignals_sync_cable_light_TRIMMED.txt", 4, '\t', 3000, 6},
      {"vendor/short.lvm", 24, '\t', 10, 3, {}, 0, 25600, {1}, true},
      {"vendor/short_new_line_end.lvm", 24, '\t', 10, 3, {}, 0, 25600, {1}, true},
      {"vendor/vas_int_r.mot", 8, '\t', 100, 3, {}, 1, 1, {}, true},
      {"vendor/vicon_nexus_analogs.csv", 6, ',', 11600, 40, {}, 0, 2000, {1, 2}, true},
      {"vendor/walk.trc", 7, '\t', 184, 66, {}, 0, 150, {1, 2}, true},
      {"vendor/with_comments.lvm", 24, '\t', 9, 4, {}, 1, 8 / 9.723275, {}, true},
      {"vendor/with_empty_fields.lvm", 24, '\t', 7, 8, {}, 1, 1000, {4, 5, 6, 7}, true},
      {"reference/BDS00001.txt", 2, '\t', 6000, 9, {}, 1, 100},
      {"reference/BDSinfoCOP_first12_DERIVED.txt", 2, '\t', 12, 6, {{"ParseSkip", "1"}, {"NChan", "6"}}},
      {"reference/Pezzack.txt", 7, '\t', 142, 4, {}, 1, 1 / 0.0201},
      {"reference/TYPE-4_table_DERIVED.csv", 2, ',', 22, 19},
      {"reference/emg.csv", 1, ',', 3360, 2, {}, 1, 1000},
      {"reference/kistler_fp_data.txt", 2, '\t', 2000, 9, {}, 1, 100},
      {"reference/posturography_eyesClosed_1_TRIMMED.csv", 2, ',', 10000, 7, {}, 2, 1000},
      {"reference/std_cop_walking2_grfs.sto", 7, '\t', 101, 19, {}, 1, 100 / 4.9955, {}, true},
      {"opensim/double_pendum1sec.sto", 8, '\t', 52, 5, {}, 1, 51, {}, true},
      {"opensim/muscle_emg.sto", 6, '\t', 11, 2, {}, 1, 10, {}, true},
      {"opensim/std_subject_InverseDynamics.sto", 8, '\t', 14, 24, {}, 1, 62.5, {}, true},
      {"opensim/subject02_grf_HiFreq.mot", 8, '\t', 439, 19, {}, 1, 600, {}, true},
  };
  return recordings;
}

struct Promise {
  std::string result;
  std::string says;  // part of a box or of the dialogue's message line
};

/// By file, the rows of the page's table: file, kind, result, what the program says.
std::map<std::string, Promise> Promises() {
  std::map<std::string, Promise> promises;
  std::istringstream page(ReadFile(FORMATS_PAGE));
  for (std::string line; std::getline(page, line);) {
    std::vector<std::string> cells;
    std::istringstream row(line);
    for (std::string cell; std::getline(row, cell, '|');) {
      cells.push_back(Trim(cell));
    }
    if (cells.size() == 5 && cells[1].starts_with('`') && cells[1].find('/') != std::string::npos) {
      promises[cells[1].substr(1, cells[1].size() - 2)] = {cells[3], cells[4]};
    }
  }
  return promises;
}

// A parser that knows nothing of the program's: lines at CR, LF or both, fields at one character, numbers
// by strtof; what is no number is 0, as the program says it reads them.
std::vector<std::vector<float>> ParsedPlainly(const std::string& bytes, const Expected& recording) {
  const auto number = [](std::string field) {
    field.erase(0, std::min(field.find_first_not_of(' '), field.size()));
    field.erase(field.find_last_not_of(' ') + 1);
    std::replace(field.begin(), field.end(), ',', '.');
    char* end = nullptr;
    const float value = std::strtof(field.c_str(), &end);
    return *end == '\0' && std::isfinite(value) ? value : 0.0F;
  };
  std::vector<std::vector<float>> rows;
  int line = 1;
  for (std::size_t at = 0; at < bytes.size(); ++line) {
    const std::size_t end = std::min(bytes.find_first_of("\r\n", at), bytes.size());
    std::string text = bytes.substr(at, end - at);
    at = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    if (line < recording.firstLine || text.find_first_not_of(" \t") == std::string::npos) {
      continue;
    }
    text += recording.separator;
    std::vector<float> row;
    for (std::size_t from = 0; from < text.size();) {
      const std::size_t to = text.find(recording.separator, from);
      if (to > from || recording.separator != ' ') {
        row.push_back(number(text.substr(from, to - from)));
      }
      from = to + 1;
    }
    row.resize(static_cast<std::size_t>(recording.columns));
    rows.push_back(row);
  }
  return rows;
}

struct RealFilesTest : TextLoadTest {
  void SetUp() override {
    if (!Recording("text")) {
      GTEST_SKIP() << "needs VELMORA_RECORDINGS";
    }
  }

  // The rate to enter where one is asked for.
  static std::string StatedRate(std::string_view says) {
    constexpr std::string_view kStates = "The header states ";
    const bool stated = says.starts_with(kStates);
    return std::string(stated ? says.substr(kStates.size(), says.find(" Hz") - kStates.size()) : "50");
  }
  void LoadRecording(const std::string& file, std::string_view says, const Edits& edits) {
    questions.formAnswers.clear();
    offered.clear();
    trial.NChan = 0;  // a program just started: more columns than can be read leave what it has
    questions.boxAnswers.assign(4, Button::Yes);
    questions.inputAnswers = {StatedRate(says)};
    AnswerForm(edits);
    AnswerForm({}, "Cancel");
    LoadPath(*Recording(file));
  }
  // Everything that the program said.
  [[nodiscard]] std::string Said() const {
    std::string said = offered.empty() ? "" : Offered("lblMessage") + "\n";
    for (const Box& box : questions.boxes) {
      said += box.title + "|" + box.text + "\n";
    }
    for (const std::string& notice : trial.Notices) {
      said += notice + "\n";
    }
    return said;
  }
  [[nodiscard]] bool ToldOfFaults(bool asRecording) const {
    if (asRecording) {
      return !workbench.report.warnings.empty();
    }
    return std::any_of(questions.boxes.begin(), questions.boxes.end(),
                       [](const Box& box) { return box.title == "Check the Data"; });
  }

  void ExpectValues(const Expected& recording, int timeColumn) {
    const auto rows = ParsedPlainly(ReadFile(*Recording(recording.file)), recording);
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(recording.rows));
    ASSERT_EQ(trial.NData, recording.rows);
    const auto leftOut = static_cast<int>(recording.leftOut.size());
    ASSERT_EQ(trial.NChan, recording.columns - leftOut - (timeColumn > 0 ? 1 : 0));
    int channel = 1;
    for (int k = 1; k <= recording.columns; ++k) {
      if (std::count(recording.leftOut.begin(), recording.leftOut.end(), k) > 0) {
        continue;
      }
      const int c = k == timeColumn ? 0 : channel++;
      for (int i = 1; i <= trial.NData; ++i) {
        ASSERT_EQ(trial.Data(i, c), rows[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(k - 1)])
            << "record " << i << ", column " << k;
      }
    }
  }
};

TEST_F(RealFilesTest, EachOpensWithTheRightNumbersOrSaysWhatToChange) {
  std::map<std::string, Expected> parsed;
  for (const Expected& recording : Recordings()) {
    parsed.emplace(recording.file, recording);
  }
  const auto promises = Promises();
  for (const char* folder : {"text", "vendor", "reference", "opensim", "trc", "tdms", "mat", "hdf5"}) {
    for (const auto& entry : std::filesystem::directory_iterator(*Recording(folder))) {
      const std::string file = folder + ("/" + entry.path().filename().string());
      EXPECT_TRUE(promises.contains(file)) << file << " is not on the page";
    }
  }
  for (const auto& [file, promise] : promises) {
    SCOPED_TRACE(file);
    ASSERT_TRUE(Recording(file));
    LoadRecording(file, promise.says, {});
    EXPECT_NE(Said().find(promise.says), std::string::npos) << Said();
    const bool tells = promise.result == "opens and tells";
    const bool opens = promise.result == "opens" || promise.result == "reads" || tells;
    EXPECT_EQ(trial.NData > 0, opens) << Said();
    const bool asRecording = parsed.contains(file) && parsed[file].asRecording;
    EXPECT_EQ(ToldOfFaults(asRecording), tells) << Said();
    EXPECT_TRUE(!asRecording || offered.empty() || offered[0][0].first == "ChannelsToRead") << "a dialogue";
    EXPECT_TRUE(parsed.contains(file) || promise.result != "opens");
    if (!opens) {
      EXPECT_FALSE(workbench.report.failures.empty() && workbench.report.warnings.empty());
      EXPECT_EQ(promise.result, parsed.contains(file) ? "opens after" : "refused");
    }
    if (promise.result == "opens after") {
      LoadRecording(file, promise.says, parsed[file].change);
    }
    if (asRecording) {
      ExpectValues(parsed[file], parsed[file].timeColumn);
      EXPECT_NEAR(trial.Rate, parsed[file].rate, 1e-9 * trial.Rate);
    } else if (parsed.contains(file)) {
      ExpectValues(parsed[file], Offered("ParseHasTime") == "true" ? 1 : 0);
    }
  }
}

TEST_F(RealFilesTest, TimeColumnsGiveThePublishedRate) {
  for (const Expected& recording : Recordings()) {
    if (recording.timeColumn == 0 || recording.asRecording) {
      continue;
    }
    SCOPED_TRACE(recording.file);
    LoadRecording(recording.file, "",
                  {{"ParseHasTime", "true"}, {"ParseTimeColumn", std::to_string(recording.timeColumn)}});
    ExpectValues(recording, recording.timeColumn);
    EXPECT_NEAR(trial.Rate, recording.rate, 2e-3 * recording.rate);
  }
}

}  // namespace
}  // namespace velmora::test
