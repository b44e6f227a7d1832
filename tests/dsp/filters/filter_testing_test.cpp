#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/filters/filter_design.hpp"
#include "dsp/filters/filter_testing_form.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct FilterTesting : CommandTest {
  void Test(const Edits& edits) {
    AnswerForm(edits);
    Run("smooth.testing");
  }
  [[nodiscard]] const ResultTable& Table(std::size_t index) const {
    return workbench.results.ResultTables.at(index);
  }
  static double Cell(const std::vector<ResultTable::Cell>& row, std::size_t column) {
    return std::get<double>(row.at(column));
  }
  // The row of the frequency response at exactly this frequency.
  [[nodiscard]] const std::vector<ResultTable::Cell>& RowAt(double frequency) const {
    for (const auto& row : Table(0).rows) {
      if (Cell(row, 0) == frequency) {
        return row;
      }
    }
    throw std::out_of_range("no row at " + std::to_string(frequency));
  }
};

TEST_F(FilterTesting, ButterworthAsTheTextbooksHaveIt) {
  // Down by 3 dB and behind by 45 degrees an order at the edge, by 90 at the end.
  for (const int order : {1, 4, 9, 20}) {
    Test({{"Rate", "1000"}, {"FilterCutoff", "50"}, {"Order", std::to_string(order)}});
    ASSERT_EQ(Table(0).name, "frmFiltering");
    EXPECT_NEAR(Cell(RowAt(0), 1), 1, 1e-9);
    EXPECT_NEAR(Cell(RowAt(50), 2), -10 * std::log10(2.0), 1e-6);
    EXPECT_NEAR(Cell(RowAt(50), 3), -45 * order, 1e-6);
    EXPECT_NEAR(Cell(RowAt(500), 3), -90 * order, 1e-4);
    EXPECT_LT(Cell(RowAt(500), 1), 1e-9);
    Test({{"Rate", "1000"},
          {"optPassType", "High-pass"},
          {"FilterCutoff", "50"},
          {"Order", std::to_string(order)}});
    EXPECT_NEAR(Cell(RowAt(50), 3), 45 * order, 1e-6);
    EXPECT_NEAR(Cell(RowAt(500), 3), 0, 1e-6);
  }
  EXPECT_EQ(Table(0).title, "Butterworth, High-pass, order 20, 50 Hz, sampled at 1000 Hz");
  EXPECT_EQ(Table(0).columns,
            (std::vector<std::string>{"Frequency (Hz)", "Magnitude", "Magnitude (dB)", "Phase (degrees)"}));

  // One pole: 1 - p^i (1+p)/2 after the bilinear transformation.
  Test({{"Rate", "200"}, {"FilterCutoff", "5"}, {"Order", "1"}});
  const double wc = std::tan(Pi * 5 / 200);
  const double p = (1 - wc) / (1 + wc);
  const ResultTable& step = Table(1);
  EXPECT_EQ(step.name, "frmFilteringStep");
  for (std::size_t i = 0; i < step.rows.size(); ++i) {
    EXPECT_EQ(Cell(step.rows[i], 0), static_cast<double>(i) / 200);
    ASSERT_NEAR(Cell(step.rows[i], 1), 1 - std::pow(p, i) * (1 + p) / 2, 1e-6);
  }
  EXPECT_NEAR(Cell(step.rows.back(), 1), 1, 1e-3) << "it goes on until it has settled";
}

TEST_F(FilterTesting, PhaseIsThatOfTheResponseWithoutJumps) {
  const Edits band = {{"Rate", "1000"}, {"optPassType", "2"},   {"optFilter", "Chebyshev"},
                      {"Order", "6"},   {"FilterCutoff", "40"}, {"SecondCutoff", "60"}};
  Test(band);
  const Biquads sections = DesignFilter({Approximation::Chebyshev, Band::BandPass, 6, 1000, 40, 60});
  double before = 540;
  for (const auto& row : Table(0).rows) {
    const double phase = Cell(row, 3);
    EXPECT_LE(phase, before + 1e-6);
    EXPECT_LT(before - phase, 100);
    before = phase;
    const std::complex<double> response = ResponseAt(sections, Cell(row, 0), 1000);
    EXPECT_NEAR(Cell(row, 1), std::abs(response), 1e-12);
    if (std::abs(response) > 1e-6) {
      EXPECT_NEAR(std::remainder(phase - std::arg(response) * 180 / Pi, 360.0), 0, 1e-5);
    }
  }
  EXPECT_NEAR(before, -540, 1e-3);
  EXPECT_NEAR(Cell(RowAt(40), 2), -0.5, 1e-6);
  EXPECT_NEAR(Cell(RowAt(60), 2), -0.5, 1e-6);
}

TEST_F(FilterTesting, FiltersByPassesWithAndWithoutLag) {
  for (const char* design : {"Butterworth by passes", "Critically-damped", "Bessel"}) {
    Test(
        {{"optFilter", design}, {"Rate", "1000"}, {"FilterCutoff", "4"}, {"Order", "2"}, {"ZeroLag", "yes"}});
    EXPECT_NEAR(Cell(RowAt(4), 1), std::sqrt(0.5), 2e-3) << design;
    EXPECT_EQ(Cell(RowAt(4), 3), 0);
    // The answer is the same before and after the step, turned round.
    const auto& rows = Table(1).rows;
    for (std::size_t i = 1; i < rows.size() / 2; ++i) {
      ASSERT_NEAR(Cell(rows[i], 1) + Cell(rows[rows.size() - i], 1), 1, 0.05) << design << " " << i;
    }
    EXPECT_NEAR(Cell(rows[rows.size() / 2], 0), 0, 1e-12);
    Test({{"optFilter", design}, {"Rate", "1000"}, {"FilterCutoff", "4"}, {"Order", "2"}, {"ZeroLag", "no"}});
    EXPECT_NEAR(Cell(RowAt(4), 1), std::sqrt(0.5), 2e-3);
    EXPECT_LT(Cell(RowAt(4), 3), -60);
    EXPECT_EQ(Cell(Table(1).rows.front(), 0), 0);
  }
}

TEST_F(FilterTesting, OffersTheTrialsFilterAndRefusesWhatCannotBeBuilt) {
  SetChannels(trial, {{1, 2, 3}}, 250.0);
  workbench.filters.FilterCutoffs[1] = 12.5F;
  Test({});
  EXPECT_EQ(Table(0).title, "Butterworth, Low-pass, order 2, 12.5 Hz, sampled at 250 Hz");
  const std::string kept = Table(0).title;
  for (const Edits& edits :
       {Edits{{"FilterCutoff", "125"}}, Edits{{"optPassType", "2"}, {"SecondCutoff", "1"}},
        Edits{{"Order", "21"}}, Edits{{"optPassType", "2"}, {"optFilter", "1"}}, Edits{{"Rate", "0"}},
        Edits{{"FilterCutoff", "1e-300"}}}) {
    questions.formAnswers.emplace_back([edits](Form& form) {
      Type(form, edits);
      EXPECT_TRUE(form.Tables().empty());
      return std::string("OK");
    });
    AnswerForm({}, "Cancel");
    questions.boxes.clear();
    Run("smooth.testing");
    ASSERT_EQ(questions.boxes.size(), 1U);
    EXPECT_EQ(questions.boxes[0].title, "Invalid Filter");
    EXPECT_EQ(Table(0).title, kept);
  }
  EXPECT_EQ(trial.FileChanged, false);
}

}  // namespace
}  // namespace velmora::test
