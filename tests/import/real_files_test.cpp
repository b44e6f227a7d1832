#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "support/recordings.hpp"
#include "support/text_load.hpp"

namespace velmora {
namespace {

using test::Edits;

// Public recordings by kind (docs/formats.md names where each comes from and shows this table).
enum class Outcome {
  Opens,          // with what the dialogue offers, and nothing to say
  OpensAndTells,  // with what the dialogue offers; a box says what was not as it should be
  OpensAfter,     // refused as offered, with a message; reads with the change it names
  Refused,        // with a message
};

struct Recording {
  const char* file;
  Outcome outcome;
  const char* says = "";  // part of a box or of the dialogue's message line
  // What an independent parse finds: data lines from `firstLine`, parted by `separator`.
  int firstLine = 0;
  char separator = '\0';
  int rows = 0;
  int columns = 0;
  Edits change = {};
  int timeColumn = 0;  // 0: none, or no times
  double rate = 0;     // Hz, as published, when the time box is checked
};

const Edits kFirst64 = {{"NChan", "64"}, {"ParseSkipToEndOfLine", "true"}};

const std::vector<Recording>& Recordings() {
  using enum Outcome;
  static const std::vector<Recording> recordings = {
      {"text/3dPendulum.txt", Opens, "Column 1 rises evenly", 2, ',', 300, 10, {}, 1, 100},
      {"text/AAc101.txt", Opens, "", 2, '\t', 5, 3},
      {"text/GRFZjump_m.txt", Opens, "", 2, '\t', 2490, 2},
      {"text/WinterTableA1.txt", Opens, "Columns 1 and 2 rise evenly", 3, ' ', 106, 18, {}, 2, 69.93},
      {"text/all.frc", Opens, "Filetype Unrecognized", 1, ' ', 6001, 3},
      {"text/balltoss.txt", Opens, "", 3, '\t', 22, 3, {}, 1, 30},
      {"text/biosppy_acc.txt", Opens, "The header states 100 Hz", 6, '\t', 2000, 3},
      {"text/biosppy_emg_1.txt", Opens, "The header states 1000 Hz", 5, '\t', 63880, 1},
      {"text/csuhmc_example_vertical_grf.csv", Opens, "", 1, ',', 5559, 2, {}, 1, 100},
      {"text/csuhmc_treadmill-speed.csv", Opens, "", 1, ',', 3100, 2, {}, 1, 100},
      {"text/data.csv", Opens, "", 2, '\t', 10, 4, {}, 1, 1},
      {"text/dryft_custom_drift_S001runT25.csv", Opens, "", 1, ',', 9000, 1},
      {"text/emg_CRonly_DERIVED.csv", Opens, "", 1, ',', 3360, 2, {}, 1, 1000},
      {"text/pushrimkinetics_offsets_baseline_TRIMMED.csv", Opens, "", 1, ',', 2000, 24},
      {"text/pushrimkinetics_propulsion.csv", Opens, "", 2, ';', 7777, 25},
      {"text/pushrimkinetics_propulsion_BINARY.txt", Refused, "NonASCII file?"},
      {"vendor/AMTI_Trial1-FxFyFzMxMyMz.asc", Opens, "", 1, ',', 200, 7, {}, 1, 200},
      {"vendor/ActiGraph13.csv", Opens, "", 11, ',', 990, 4},
      {"vendor/ActiGraph13_timestamps_headers.csv",
       OpensAfter,
       "skip 11 records and read 6 channels",
       12,
       ',',
       1000,
       6,
       {{"ParseSkip", "11"}, {"NChan", "6"}}},
      {"vendor/Actical.csv",
       OpensAfter,
       "skip 31 records and read 3 channels, not the full line",
       32,
       ',',
       501,
       3,
       {{"ParseSkip", "31"}, {"NChan", "3"}, {"ParseSkipToEndOfLine", "true"}}},
      {"vendor/Actiwatch.csv", Refused, "No line of numbers among the first 50"},
      {"vendor/Forcepla.cal", OpensAndTells,
       "12 lines have more columns than were read, the first is line 3"},
      {"vendor/Kistler_DLL1.dat", Refused, "NonASCII file?"},
      {"vendor/MT_012005D6-000_sit_to_stand-000_00B421ED.txt", OpensAndTells, "The header states 40 Hz", 7,
       '\t', 1459, 11},
      {"vendor/Res16bits.anc", Refused, "Motion Analysis ASCII analog files cannot be read"},
      {"vendor/Truncated.anc", Refused, "Motion Analysis ASCII analog files cannot be read"},
      {"vendor/apdm_format7.csv", OpensAfter, "The data have 85 columns; 64 can be read", 4, ',', 3, 64,
       kFirst64},
      {"vendor/gonio_arm_flex_DERIVED.txt", Opens, "", 2, '\t', 18750, 4},
      {"vendor/loadsol_test_poids.csv",
       OpensAndTells,
       "1615 fields are no numbers",
       5,
       ',',
       1094,
       25,
       {},
       1,
       200},
      {"vendor/loadsol_test_poids.txt",
       OpensAndTells,
       "1615 fields are no numbers",
       5,
       '\t',
       1094,
       25,
       {},
       1,
       200},
      {"vendor/loadsol_test_pointe_5_TRIMMED.txt",
       OpensAndTells,
       "1806 fields are no numbers",
       5,
       '\t',
       2000,
       25,
       {},
       1,
       200},
      {"vendor/multi_time_column.lvm", Opens, "Filetype Unrecognized", 24, '\t', 3, 4, {}, 1, 51200},
      {"vendor/no_decimal_separator.lvm", Opens, "Filetype Unrecognized", 23, '\t', 4, 6, {}, 1, 4000},
      {"vendor/opensignals_eda_slow_signal.txt", Opens, "The header states 100 Hz", 4, '\t', 2820, 3},
      {"vendor/opensignals_emg2_acc_0_1.txt", Opens, "The header states 1000 Hz", 4, '\t', 6000, 5},
      {"vendor/opensignals_sync_cable_light_TRIMMED.txt", Opens, "The header states 1000 Hz", 4, '\t', 3000,
       6},
      {"vendor/short.lvm", OpensAndTells, "Column 1 holds no data", 24, '\t', 10, 3},
      {"vendor/short_new_line_end.lvm", OpensAndTells, "Column 1 holds no data", 24, '\t', 10, 3},
      {"vendor/vas_int_r.mot", Opens, "Filetype Unrecognized", 8, '\t', 100, 3, {}, 1, 1},
      {"vendor/vicon_nexus_analogs.csv", Opens, "data start at line 6", 6, ',', 11600, 40},
      {"vendor/walk.trc", OpensAfter, "The data have 167 columns; 64 can be read", 7, '\t', 184, 64,
       kFirst64},
      {"vendor/with_comments.lvm",
       OpensAfter,
       "skip 23 records and read 4 channels, not the full line",
       24,
       '\t',
       9,
       4,
       {{"ParseSkip", "23"}, {"NChan", "4"}, {"ParseSkipToEndOfLine", "true"}}},
      {"vendor/with_empty_fields.lvm", OpensAndTells, "Column 4 holds no data", 24, '\t', 7, 8, {}, 1, 1000},
      {"reference/BDS00001.txt", Opens, "", 2, '\t', 6000, 9, {}, 1, 100},
      {"reference/BDSinfoCOP_first12_DERIVED.txt",
       OpensAfter,
       "skip 1 records and read 6 channels",
       2,
       '\t',
       12,
       6,
       {{"ParseSkip", "1"}, {"NChan", "6"}}},
      {"reference/Pezzack.txt", Opens, "", 7, '\t', 142, 4, {}, 1, 1 / 0.0201},
      {"reference/TYPE-4_README.TXT", Refused, "No line of numbers among the first"},
      {"reference/TYPE-4_table_DERIVED.csv", Opens, "", 2, ',', 22, 19},
      {"reference/emg.csv", Opens, "", 1, ',', 3360, 2, {}, 1, 1000},
      {"reference/kistler_fp_data.txt", Opens, "", 2, '\t', 2000, 9, {}, 1, 100},
      {"reference/posturography_eyesClosed_1_TRIMMED.csv", Opens, "", 2, ',', 10000, 7, {}, 2, 1000},
      {"reference/pyomeca_is_expected_array_val.csv", Refused, "what is no number is read as 0"},
      {"reference/std_cop_walking2_grfs.sto", Opens, "Filetype Unrecognized", 7, '\t', 101, 19, {}, 1, 20},
  };
  return recordings;
}

// A parser that knows nothing of the program's: lines at CR, LF or both, fields at one character, numbers
// by strtof; what is no number is 0, as the program says it reads them.
std::vector<std::vector<float>> ParsedPlainly(const std::string& bytes, const Recording& recording) {
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

struct RealFilesTest : test::TextLoadTest {
  void SetUp() override {
    if (!test::Recording("text")) {
      GTEST_SKIP() << "needs VELMORA_RECORDINGS";
    }
  }

  // The rate to enter where one is asked for.
  static std::string StatedRate(std::string_view says) {
    constexpr std::string_view kStates = "The header states ";
    const bool stated = says.starts_with(kStates);
    return std::string(stated ? says.substr(kStates.size(), says.find(" Hz") - kStates.size()) : "50");
  }
  void LoadRecording(const Recording& recording, const Edits& edits) {
    questions.boxes.clear();
    questions.formAnswers.clear();
    offered.clear();
    workbench.report = {};
    trial.NChan = 0;
    questions.boxAnswers.assign(4, Button::Yes);
    questions.inputAnswers = {StatedRate(recording.says)};
    AnswerForm(edits);
    AnswerForm({}, "Cancel");
    LoadPath(*test::Recording(recording.file));
  }
  // Everything that the program said.
  [[nodiscard]] std::string Said() const {
    std::string said = offered.empty() ? "" : Offered("lblMessage") + "\n";
    for (const Box& box : questions.boxes) {
      said += box.title + "|" + box.text + "\n";
    }
    return said;
  }
  [[nodiscard]] bool ToldOfFaults() const {
    return std::any_of(questions.boxes.begin(), questions.boxes.end(),
                       [](const Box& box) { return box.title == "Check the Data"; });
  }

  void ExpectValues(const Recording& recording, int timeColumn) {
    const auto rows = ParsedPlainly(test::ReadFile(*test::Recording(recording.file)), recording);
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(recording.rows));
    ASSERT_EQ(trial.NData, recording.rows);
    ASSERT_EQ(trial.NChan, recording.columns - (timeColumn > 0 ? 1 : 0));
    int channel = 1;
    for (int k = 1; k <= recording.columns; ++k) {
      const int c = k == timeColumn ? 0 : channel++;
      for (int i = 1; i <= trial.NData; ++i) {
        ASSERT_EQ(trial.Data(i, c), rows[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(k - 1)])
            << "record " << i << ", column " << k;
      }
    }
  }
};

TEST_F(RealFilesTest, EachOpensWithTheRightNumbersOrSaysWhatToChange) {
  for (const Recording& recording : Recordings()) {
    SCOPED_TRACE(recording.file);
    if (!test::Recording(recording.file)) {
      ADD_FAILURE() << "the file is gone";
      continue;
    }
    LoadRecording(recording, {});
    EXPECT_NE(Said().find(recording.says), std::string::npos) << Said();
    const bool opens = recording.outcome == Outcome::Opens || recording.outcome == Outcome::OpensAndTells;
    EXPECT_EQ(trial.NData > 0, opens) << Said();
    EXPECT_EQ(ToldOfFaults(), recording.outcome == Outcome::OpensAndTells) << Said();
    if (!opens) {
      EXPECT_FALSE(workbench.report.failures.empty() && workbench.report.warnings.empty());
    }
    if (recording.outcome == Outcome::OpensAfter) {
      LoadRecording(recording, recording.change);
    }
    if (recording.rows > 0) {
      const bool timed = Offered("ParseHasTime") == "true";
      ExpectValues(recording, timed ? 1 : 0);
    }
  }
}

TEST_F(RealFilesTest, TimeColumnsGiveThePublishedRate) {
  for (const Recording& recording : Recordings()) {
    if (recording.timeColumn == 0) {
      continue;
    }
    SCOPED_TRACE(recording.file);
    LoadRecording(recording,
                  {{"ParseHasTime", "true"}, {"ParseTimeColumn", std::to_string(recording.timeColumn)}});
    ExpectValues(recording, recording.timeColumn);
    EXPECT_NEAR(trial.Rate, recording.rate, 2e-3 * recording.rate);
  }
}

// What users read is what was tested; needs no recordings.
TEST(RealFilesPage, SaysTheSame) {
  const std::string page = test::ReadFile(FORMATS_PAGE);
  for (const Recording& recording : Recordings()) {
    const std::string row = std::string("| `") + recording.file + "` |";
    const std::size_t at = page.find(row);
    ASSERT_NE(at, std::string::npos) << row;
    const std::string rest = page.substr(at + row.size(), page.find('\n', at) - at - row.size());
    constexpr std::array kWords = {"opens", "opens and tells", "opens after", "refused"};
    const char* word = kWords[static_cast<std::size_t>(recording.outcome)];
    EXPECT_TRUE(rest.ends_with(std::string("| ") + word + " | " + recording.says + " |")) << row << rest;
  }
}

TEST_F(RealFilesTest, EveryFileOfTheFoldersIsInTheTable) {
  std::set<std::string> files;
  for (const char* folder : {"text", "vendor", "reference"}) {
    for (const auto& entry : std::filesystem::directory_iterator(*test::Recording(folder))) {
      files.insert(folder + ("/" + entry.path().filename().string()));
    }
  }
  std::set<std::string> known;
  for (const Recording& recording : Recordings()) {
    known.insert(recording.file);
  }
  EXPECT_EQ(files, known);
}

}  // namespace
}  // namespace velmora
