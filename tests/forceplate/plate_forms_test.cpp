#include "core/files/files.hpp"
#include "forceplate/plate_database.hpp"
#include "support/full_disk.hpp"
#include "support/recipe_test.hpp"
#include "support/recorded_person.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

using nlohmann::json;

/// Plates defined and shown by recipes over a trial of 16 channels.
class PlateFormsTest : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override {
    SetChannels(trial, NoiseChannels(16, 50));
    trial.FileTypeCode = 255;
  }
  /// The lines of the transcript that are of this kind.
  [[nodiscard]] std::vector<json> Lines(const std::string& kind) const {
    std::vector<json> found;
    for (const std::string& line : lines_) {
      if (json one = json::parse(line); one["kind"] == kind) {
        found.push_back(std::move(one));
      }
    }
    return found;
  }
  [[nodiscard]] std::string BoxText(std::size_t k) const {
    const json box = Lines("box").at(k);
    return box["title"].get<std::string>() + "|" + box["text"].get<std::string>();
  }
};

TEST_F(PlateFormsTest, TheDefinitionIsTypedPlateByPlateAndKeptAsTheTableSays) {
  Run(R"(
  - do: plates.change-type
    answers:
      - {title: "Change Plate Parameters", box: OK}
      - form: {NumPlates: 2, FirstChannel: 3, optType: "Kistler Slimline", PlateName: "left µ", a: 120.5, az0: 54, b: "", press: Defaults}
      - form: {press: "Plate 2"}
      - form: {optMaker: AMTI, Width: 464, comGainsMz: 4000, PlateOffsetY: 300, az0: 41.3, press: OK}
  - info: "${out}/i.json"
)");
  EXPECT_EQ(Why(), "all ran");
  const json table = Info("i.json")["PlateTable"];
  EXPECT_EQ(table["FirstChannel"], 3);
  EXPECT_EQ(table["PlateOffsetY"], 300);
  const json first = table["plates"][0];
  EXPECT_EQ(first["PlateName"], "left µ");
  EXPECT_EQ(first["PlateType"], 3);
  EXPECT_EQ(first["a"], 120.5);
  EXPECT_EQ(first["b"], 0);
  EXPECT_EQ(first["az0"], -54);
  EXPECT_EQ(first["ZSens"], -3.56);
  const json second = table["plates"][1];
  EXPECT_EQ(second["PlateType"], 5);
  EXPECT_EQ(second["az0"], 41.3);
  EXPECT_EQ(second["comGains"], json({1000, 1000, 1000, 1000, 1000, 4000}));
  EXPECT_EQ(Info("i.json")["NPlates"], 2);
  EXPECT_EQ(Info("i.json")["FileChanged"], 0);
  const std::vector<json> forms = Lines("form");
  EXPECT_EQ(forms[0]["fields"]["comGainsFx"], "n.a.");
  EXPECT_EQ(forms[1]["fields"]["XYRange"], 5000);
  EXPECT_EQ(forms[1]["fields"]["az0"], 54);
  EXPECT_EQ(forms[2]["fields"]["optPlate"], 1);
  EXPECT_EQ(forms[2]["fields"]["XYRange"], 0);
}

TEST_F(PlateFormsTest, MakerAndTypeFollowEachOtherAndTouchNoNumber) {
  const std::string open = "  - do: plates.change-type\n    answers: [{box: OK}, {form: {";
  const auto typeAfter = [&](const std::string& edits) {
    Run(open + edits + ", press: Plate 2}}, {form: {press: Plate 1}}, {form: {press: Cancel}}]\n");
    const json fields = Lines("form").at(2)["fields"];
    return std::pair(fields["optMaker"].get<int>(), fields["optType"].get<int>());
  };
  EXPECT_EQ(typeAfter("optMaker: 1"), std::pair(1, 5));
  EXPECT_EQ(typeAfter("optMaker: 2"), std::pair(2, 1));
  EXPECT_EQ(typeAfter("optType: 7"), std::pair(0, 7));
  EXPECT_EQ(typeAfter("optType: 7, optMaker: 0"), std::pair(0, 7));
  EXPECT_EQ(typeAfter("optType: 5, optMaker: Kistler"), std::pair(0, 0));
  EXPECT_EQ(Lines("form").at(2)["fields"]["XYRange"], 0);
  EXPECT_EQ(run_->State().trial.NPlates, 0);
  Run(open + "optType: 5, XYRange: 1, press: OK}}]\n");
  EXPECT_HAS(Why(), "field XYRange: does not apply here");
}

TEST_F(PlateFormsTest, WhatAPlateLacksIsSaidAndTheFormStaysOpen) {
  Run(R"(
  - do: plates.reduce
    answers:
      - form: {press: OK}
      - form: {XYRange: 1, ZRange: 1, XSens: 0, YSens: -1, ZSens: -1, press: OK}
      - form: {optType: Custom, XSens: -1, a: 1, b: 2, press: OK}
      - form: {az0: 3, press: OK}
      - form: {press: Cancel}
  - info: "${out}/i.json"
)");
  EXPECT_EQ(Why(), "all ran");
  const std::string ranges =
      "Incorrectly Defined Plate|Ranges or sensitivities were not correctly defined for a Kistler force "
      "plate. "
      "\nPlease completely define each plate.";
  EXPECT_EQ(BoxText(0), ranges);
  EXPECT_EQ(BoxText(1), ranges);
  EXPECT_EQ(BoxText(2),
            "Plate Incorrectly Defined|Factors were not correctly defined for a custom plate. "
            "\nPlease completely define each plate.");
  EXPECT_EQ(BoxText(3), "Invalid Force Plate|Custom force plates has not been implemented.");
  EXPECT_FALSE(Info("i.json").contains("PlateTable"));
  EXPECT_EQ(run_->State().plates, PlateMemory{});
}

TEST_F(PlateFormsTest, TheTrialsPlatesAreShownAndEditedWithinLimits) {
  Run("  - do: plates.show\n  - do: plates.rotate\n");
  EXPECT_EQ(BoxText(1), "No Force Plates Present|No force plates have been detected in this data file.");
  EXPECT_EQ(BoxText(0),
            "Plate Parameters Not Defined|Force plate parameters have not been defined.\n"
            "Use the 'Reduce force plate data' menu item.");
  const std::string define = R"(
  - do: plates.change-type
    answers: [{box: OK}, {form: {optMaker: AMTI, Width: 464, FirstChannel: 2, press: OK}}]
)";
  Run(define + "  - do: plates.show\n    answers: [form: {a: 1, press: OK}]\n");
  EXPECT_HAS(Why(), "field a: is shown");
  Run(define + R"(
  - do: plates.edit
    answers:
      - form: {Width: 500, a: 7, press: Cancel}
      - {title: "Confirm Changes", box: "No"}
      - form: {NumPlates: 3, FirstChannel: 5, press: OK}
  - do: plates.rotate
    answers: [{form: {RotationX: 12, press: Rotate}}, {form: {press: Cancel}}]
  - info: "${out}/i.json"
)");
  EXPECT_EQ(Why(), "all ran");
  EXPECT_EQ(BoxText(3), "|Not yet implemented.");
  EXPECT_EQ(BoxText(1), "Dimensions|These factors do not affect the force platform calculations.");
  const json edit = Lines("form").at(1);
  EXPECT_EQ(edit["fields"]["FirstChannel"], 3);
  const json info = Info("i.json");
  EXPECT_EQ(info["NPlates"], 3);
  EXPECT_EQ(info["PlateTable"]["FirstChannel"], 4);
  EXPECT_EQ(info["PlateTable"]["plates"][0]["Width"], 464);
  EXPECT_EQ(info["PlateTable"]["plates"][0]["a"], 7);
  EXPECT_EQ(info["PlateTable"]["plates"].size(), 3U);
}

TEST_F(PlateFormsTest, ADatabaseTakesPlatesAndGivesThemBack) {
  Run(R"(
  - do: plates.change-type
    answers:
      - box: OK
      - form: {PlateName: "Gang ü & µ", a: 0.1, b: 200, az0: 54, press: Defaults}
      - form: {press: Save}
      - {title: "Plate Name", input: "Gang ü & µ"}
      - file: "${out}/lab"
      - form: {a: 7, press: Save}
      - input: "second	plate"
      - file: "${out}/lab.dbp"
      - form: {press: Load}
      - file: "${out}/lab.dbp"
      - form: {press: New}
      - {title: "Plate Name", input: "third"}
      - form: {optMaker: AMTI, press: OK}
      - form: {press: Open}
      - {title: "Open Different Database", box: OK}
      - form: {press: Help}
      - form: {lstPlates: "Gang ü & µ", press: OK}
      - form: {press: OK}
  - info: "${out}/i.json"
)");
  EXPECT_EQ(Why(), "all ran");
  const json plate = Info("i.json")["PlateTable"]["plates"][0];
  EXPECT_EQ(plate["a"], 0.1);
  EXPECT_EQ(plate["az0"], -54);
  EXPECT_EQ(plate["PlateName"], "Gang ü & µ");
  const PlateDatabase database = ReadPlateDatabase(directory_.Path("lab.dbp"));
  EXPECT_EQ(database.Names(), (std::vector<std::string>{"Gang ü & µ", "second plate", "third"}));
  EXPECT_EQ(database.Bytes().size(), 3U * 620);
  EXPECT_EQ(database.Bytes().substr(0, 10), "Gang \xFC & \xB5");
  EXPECT_EQ(database.Plate(1)->a, 7);
  EXPECT_EQ(database.Plate(2)->PlateType, 5);
  const json list = Lines("form").at(4);
  EXPECT_EQ(list["choices"]["lstPlates"], json({"Gang ü & µ", "second plate"}));
  EXPECT_EQ(Lines("input")[0]["default"], "Gang ü & µ");
  EXPECT_EQ(Lines("file")[2]["default"], "lab.dbp");
}

TEST_F(PlateFormsTest, ABadDatabaseIsToldAndNeverLost) {
  const auto load = [this](const std::string& bytes, const std::string& more) {
    WriteFile(directory_.Path("x.dbp"), bytes);
    Run("  - do: plates.change-type\n    answers: [{box: OK}, {form: {press: Load}}, {file: "
        "\"${out}/x.dbp\"}, " +
        more + "{form: {press: Cancel}}, {form: {press: Cancel}}]\n");
    return BoxText(1);
  };
  const std::string wrong =
      "No Definitions|Force Plate Database was empty or in wrong format.\n"
      "Open a different file or add new ones to the database.";
  EXPECT_EQ(load("", ""), wrong);
  EXPECT_EQ(load(std::string(619, 'x'), ""), wrong);
  EXPECT_EQ(load(std::string(700, '\x7F'), "{form: {press: OK}}, "), wrong);
  EXPECT_EQ(Why(), "all ran");
  Run("  - do: plates.change-type\n    answers: [{box: OK}, {form: {press: Load}}, {file: \"${out}\"}, "
      "{form: "
      "{press: Cancel}}]\n");
  EXPECT_HAS(Why(), "Error reading file");
  // Nothing is written into a file of something else, a trial for one.
  Run("  - do: plates.change-type\n    answers: [{box: OK}, {form: {a: 1, press: Save}}, {input: mine}, "
      "{file: "
      "\"${out}/x.dbp\"}, {form: {press: Cancel}}]\n");
  EXPECT_HAS(Why(), "it is no force plate database, and was left as it is");
  EXPECT_EQ(ReadFile(directory_.Path("x.dbp")), std::string(700, '\x7F'));
  // A new record goes in front of what was left over; one of the same name in the place of the old.
  PlateDatabase database(std::string(620, 'a') + "rest");
  database.Put({.PlateName = "b", .a = 1});
  database.Put({.PlateName = "b", .a = 2});
  EXPECT_EQ(database.Records(), 2U);
  EXPECT_EQ(database.Bytes().substr(0, 620), std::string(620, 'a'));
  EXPECT_EQ(database.Bytes().substr(1240), "rest");
  EXPECT_EQ(database.Plate(1)->a, 2);
  database.Put({.PlateName = std::string(200, 'n')});
  EXPECT_EQ(database.Name(2), std::string(80, 'n'));
  // What does not fit on the disk leaves the file as it was.
  const std::string path = directory_.Path("x.dbp");
  const std::string before = ReadFile(path);
  {
    ScriptedQuestions questions;
    Workbench workbench(questions);
    const FullDisk disk(1000);
    EXPECT_THROW(WritePlateDatabase(workbench, path, database), FileError);
  }
  EXPECT_EQ(ReadFile(path), before);
}

using PlateHistoryTest = RecordedPerson;

/// What a person defines is a recipe that gives the same bits in a fresh program, with what the program
/// remembered from before.
TEST_F(PlateHistoryTest, ADefinitionIsReplayedWithEverythingItRemembered) {
  WriteTrialFile(input, [](Trial& trial) {
    std::vector<Samples> channels = NoiseChannels(16, 200);
    SetChannels(trial, channels, 200.0);
  });
  const auto reduce = [&] {
    person.inputAnswers.emplace_back("0.5");
    person.boxAnswers.insert(person.boxAnswers.end(), {Button::Yes, Button::No});
    Do("plates.reduce");
  };
  Load();
  person.FillForm({{"NumPlates", "2"}, {"a", "12.34"}, {"b", "20"}, {"az0", "4.7"}}, "Defaults");
  person.FillForm({}, "Plate 2");
  person.FillForm({{"a", "13"}, {"b", "0.1"}, {"optType", "2"}}, "Defaults");
  person.FillForm({{"XSens", "-1"}});
  reduce();
  const std::vector<std::uint32_t> first = Bits(workbench.trial);
  // The second trial only says OK to what the first one left.
  Load();
  person.FillForm({{"NumPlates", "2"}});
  reduce();
  EXPECT_EQ(Bits(workbench.trial), first);
  const auto run = Replay();
  EXPECT_EQ(Bits(run->State().trial), first);
  PlateMemory kept = workbench.plates;
  EXPECT_EQ(run->State().plates, kept);
  // Gains apply to a plate of AMTI alone, so that a recipe enters them behind its type.
  person.FillForm({{"NumPlates", "1"}, {"optMaker", "1"}, {"a", "10"}, {"comGainsFx", "2"}});
  person.boxAnswers = {Button::OK};
  Do("plates.change-type");
  EXPECT_EQ(workbench.plates.PlateTable[0].comGains[0], 2);
  kept = workbench.plates;
  EXPECT_EQ(Replay()->State().plates, kept);
}

}  // namespace
}  // namespace velmora::test
