#include "forceplate/contacts/contacts_view.hpp"

#include <array>
#include <functional>
#include <string>
#include <utility>

#include "core/results/pictures_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "results/pictured_results.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr int kContactForceColour = 1;
constexpr int kContactColour = 3;
constexpr int kOnColour = 2;
constexpr int kOffColour = 6;

using Cell = ResultTable::Cell;

std::string TitleOf(const ContactsForm& form, const Trial& trial) {
  std::string title = "Contacts, " + form.Words();
  for (const ChannelContacts& of : form.Found()) {
    if (of.turned) {
      title += "\n" + LabelOnOneLine(trial, of.channel) + " points down and was turned";
    }
  }
  return title;
}

ResultTable ContactTable(const Workbench& workbench, const ContactsForm& form) {
  const Trial& trial = workbench.trial;
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  ResultTable table{
      .name = "frmContacts",
      .title = TitleOf(form, trial),
      .columns = {"Channel", "Label", "Contact", "On", "Off", "Contact time", "Swing time", "Stride time",
                  "Peak", "Mean", "Impulse", "Whole"},
      .formats = {nullptr, nullptr, ThroughPattern("0"), time, time, time, time, time, value, value, value}};
  const auto timeAt = [&](double place) { return TimeAt(trial, form.Range(), place); };
  for (const ChannelContacts& of : form.Found()) {
    for (std::size_t k = 0; k < of.contacts.size(); ++k) {
      const MeasuredContact& contact = of.contacts[k];
      table.rows.push_back({ChannelNumber(of.channel), LabelOnOneLine(trial, of.channel),
                            static_cast<double>(k + 1), timeAt(contact.onPlace), timeAt(contact.offPlace),
                            contact.contactTime, CellOf(contact.swingTime), CellOf(contact.strideTime),
                            contact.peak, contact.mean, contact.impulse, contact.Whole() ? "yes" : "no"});
    }
  }
  return table;
}

/// What the summary takes the mean of.
struct Measure {
  const char* name;
  std::function<std::optional<double>(const MeasuredContact&)> of;
};
const std::array kMeasures = {
    Measure{"Contact time", [](const auto& contact) { return contact.contactTime; }},
    Measure{"Swing time", [](const auto& contact) { return contact.swingTime; }},
    Measure{"Stride time", [](const auto& contact) { return contact.strideTime; }},
    Measure{"Peak", [](const auto& contact) { return contact.peak; }},
    Measure{"Mean", [](const auto& contact) { return contact.mean; }},
    Measure{"Impulse", [](const auto& contact) { return contact.impulse; }}};

std::optional<double> MeanOfWhole(const ChannelContacts& found, const Measure& measure) {
  const std::vector<double> values = OfWholeContacts(found.contacts, measure.of);
  return values.empty() ? std::nullopt : std::optional(MeanOf(values));
}

std::optional<double> DeviationOfWhole(const ChannelContacts& found, const Measure& measure) {
  const std::vector<double> values = OfWholeContacts(found.contacts, measure.of);
  return values.size() < 2 ? std::nullopt : std::optional(MeanDeviationOf(values).deviation);
}

std::optional<double> Cadence(const ChannelContacts& found) {
  const std::optional<double> stride = MeanOfWhole(found, kMeasures[2]);
  return stride ? std::optional(60 / *stride) : std::nullopt;
}

std::optional<double> Symmetry(std::optional<double> a, std::optional<double> b) {
  if (!a || !b || *a + *b == 0) {
    return std::nullopt;
  }
  return 100 * (*a - *b) / ((*a + *b) / 2);
}

std::vector<Cell> SymmetryRow(const ChannelContacts& first, const ChannelContacts& second) {
  std::vector<Cell> row = {std::string(), std::string("Symmetry (%)"), std::monostate(), std::monostate()};
  for (const Measure& measure : kMeasures) {
    row.emplace_back(CellOf(Symmetry(MeanOfWhole(first, measure), MeanOfWhole(second, measure))));
    row.emplace_back(std::monostate());
  }
  row.emplace_back(CellOf(Symmetry(Cadence(first), Cadence(second))));
  return row;
}

ResultTable SummaryTable(const Workbench& workbench, const std::vector<ChannelContacts>& found) {
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  ResultTable table{.name = "frmContactsSummary",
                    .title = "Means and standard deviations (n-1) of whole contacts",
                    .columns = {"Channel", "Label", "Contacts", "Whole"},
                    .formats = {nullptr, nullptr, ThroughPattern("0"), ThroughPattern("0")}};
  for (const Measure& measure : kMeasures) {
    table.columns.insert(table.columns.end(), {measure.name, std::string(measure.name) + " SD"});
    const bool isTime = std::string_view(measure.name).ends_with("time");
    table.formats.insert(table.formats.end(), 2, isTime ? time : value);
  }
  table.columns.emplace_back("Cadence (/min)");
  table.formats.emplace_back(ThroughPattern("0.0"));
  for (const ChannelContacts& of : found) {
    const auto whole = OfWholeContacts(of.contacts, kMeasures[0].of).size();
    std::vector<Cell> row = {ChannelNumber(of.channel), LabelOnOneLine(workbench.trial, of.channel),
                             static_cast<double>(of.contacts.size()), static_cast<double>(whole)};
    for (const Measure& measure : kMeasures) {
      row.insert(row.end(), {CellOf(MeanOfWhole(of, measure)), CellOf(DeviationOfWhole(of, measure))});
    }
    row.emplace_back(CellOf(Cadence(of)));
    table.rows.push_back(std::move(row));
  }
  if (found.size() == 2) {
    table.rows.push_back(SymmetryRow(found[0], found[1]));
  }
  return table;
}

// The force with both thresholds, and a band a contact.
FormGraph PictureOf(const Trial& trial, SampleRange range, const ChannelContacts& of) {
  FormGraph graph = SignalPicture(trial, of.channel);
  const std::vector<double> times = SamplesOf(trial, 0, range);
  std::vector<TimeSpan> stances;
  for (const MeasuredContact& contact : of.contacts) {
    stances.push_back({TimeAt(trial, range, contact.onPlace), TimeAt(trial, range, contact.offPlace)});
  }
  AddBands(graph, stances, kContactColour);
  graph.plots = {{.name = "force", .colour = kContactForceColour, .x = times, .y = of.force},
                 LevelLine("on", kOnColour, times, of.rule.on),
                 LevelLine("off", kOffColour, times, of.rule.off)};
  FitAxes(graph);
  return graph;
}

}  // namespace

void ShowContacts(Workbench& workbench, const ContactsForm& form) {
  const std::vector<ChannelContacts>& found = form.Found();
  Pictured<PicturesForm>(
      workbench,
      Results{.name = "frmContacts",
              .title = "Foot contacts",
              .file = {.what = "Foot Contacts", .extension = ".tab"},
              .head = {.range = form.Range(), .parameters = ParametersOf(workbench.trial, form)},
              .tables = {ContactTable(workbench, form), SummaryTable(workbench, found)}},
      ChannelNames(workbench.trial, found),
      [&](std::size_t which) { return PictureOf(workbench.trial, form.Range(), found[which]); })
      .Show(workbench);
}

}  // namespace velmora
