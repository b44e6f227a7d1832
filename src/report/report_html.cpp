#include "report/report_html.hpp"

#include <algorithm>
#include <span>
#include <string_view>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::size_t kMostRows = 500;  // of a table; the rest is for a file of results

// Of QTextDocument's rules as well, which knows no more than a part of CSS.
constexpr std::string_view kStyle = R"(
body { font-family: sans-serif; font-size: 10pt; color: #1c2430; }
h1 { font-size: 18pt; font-weight: 600; margin-top: 0px; margin-bottom: 4px; }
h2 { font-size: 13pt; font-weight: 600; color: #1d4f80; margin-top: 24px; margin-bottom: 6px; }
p { margin-top: 4px; margin-bottom: 4px; }
p.quiet { color: #5d6874; font-size: 9pt; }
p.caption { font-weight: 600; margin-top: 12px; margin-bottom: 4px; }
p.notice { color: #8a3a08; }
table { border-collapse: collapse; margin-bottom: 8px; }
th { font-weight: 600; background-color: #eef2f6; border: 1px solid #c9d1d9; }
td { border: 1px solid #c9d1d9; }
td.name { color: #5d6874; }
pre { font-family: monospace; font-size: 8pt; white-space: pre-wrap; background-color: #f4f6f8; }
)";

// A heading does not part from its picture.
constexpr std::string_view kPageStyle = R"(
h2.graph { page-break-before: always; }
)";

// What only a browser understands.
constexpr std::string_view kBrowserStyle = R"(
body { max-width: 62em; margin: 2em auto; padding: 0 1.5em; line-height: 1.35; }
th, td { padding: 3px 8px; }
th { text-align: left; }
th.number { text-align: right; }
td.number { font-variant-numeric: tabular-nums; }
pre { padding: 10px 12px; overflow-wrap: anywhere; border-radius: 4px; }
svg { max-width: 100%; height: auto; }
@media print { body { margin: 0; max-width: none; } h2, p.caption { break-after: avoid; } tr { break-inside: avoid; } }
)";

/// Text as HTML shows it, its lines kept. Control characters, which no page may hold, are blanks.
std::string Escaped(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 16);
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\n':
      case '\t':
        html += c;
        break;
      default:
        html += IsControl(c) ? ' ' : c;
    }
  }
  return html;
}

std::string Line(std::string_view text) {
  return Escaped(OneLine(text));
}

void AddRows(std::string& html, const ResultTable& table, std::span<const std::size_t> columns) {
  html += "<table cellspacing=\"0\" cellpadding=\"4\">\n<thead><tr>";
  const auto isNumber = [&table](std::size_t i, std::size_t k) {
    return i < table.rows.size() && k < table.rows[i].size() &&
           std::holds_alternative<double>(table.rows[i][k]);
  };
  for (const std::size_t k : columns) {
    html += (isNumber(0, k) ? "<th class=\"number\" align=\"right\">" : "<th align=\"left\">") +
            Line(table.columns[k]) + "</th>";
  }
  html += "</tr></thead>\n<tbody>\n";
  for (std::size_t i = 0; i < std::min(table.rows.size(), kMostRows); ++i) {
    html += "<tr>";
    for (const std::size_t k : columns) {
      html += (isNumber(i, k) ? "<td class=\"number\" align=\"right\">" : "<td>") +
              Line(ShownCell(table, i, k)) + "</td>";
    }
    html += "</tr>\n";
  }
  html += "</tbody></table>\n";
}

/// About how many letters wide a column is.
std::size_t WidthOf(const ResultTable& table, std::size_t column) {
  constexpr std::size_t kLooks = 50;  // rows: enough to tell
  constexpr std::size_t kBorder = 2;
  std::size_t width = CharacterCount(table.columns[column]);
  for (std::size_t i = 0; i < std::min(table.rows.size(), kLooks); ++i) {
    width = std::max(width, CharacterCount(ShownCell(table, i, column)));
  }
  return width + kBorder;
}

/// Which columns stand side by side. The first two, which say what a row is of, lead every part of a table
/// that is too wide for a page.
std::vector<std::vector<std::size_t>> PartsOf(const ResultTable& table) {
  constexpr std::size_t kPage = 92;  // letters
  std::vector<std::vector<std::size_t>> parts(1);
  std::size_t used = 0;
  for (std::size_t k = 0; k < table.columns.size(); ++k) {
    const std::size_t width = WidthOf(table, k);
    if (k > 2 && used + width > kPage) {
      parts.push_back({0, 1});
      used = WidthOf(table, 0) + WidthOf(table, 1);
    }
    parts.back().push_back(k);
    used += width;
  }
  return parts;
}

void AddTable(std::string& html, const ResultTable& table) {
  if (!table.title.empty()) {
    std::string title = Escaped(table.title);
    for (std::size_t at = 0; (at = title.find('\n', at)) != std::string::npos;) {
      title.replace(at, 1, "<br/>");
    }
    html += "<p class=\"caption\">" + title + "</p>\n";
  }
  for (const std::vector<std::size_t>& columns : PartsOf(table)) {
    AddRows(html, table, columns);
  }
  if (table.rows.size() > kMostRows) {
    html += "<p class=\"quiet\">The first " + FormatCount(kMostRows) + " of " +
            FormatCount(static_cast<std::int64_t>(table.rows.size())) + " rows.</p>\n";
  }
}

void AddFacts(std::string& html, const std::vector<Fact>& facts) {
  html += "<table cellspacing=\"0\" cellpadding=\"4\">\n";
  for (const auto& [name, text] : facts) {
    html += "<tr><td class=\"name\">" + Line(name) + "</td><td>" + Line(text) + "</td></tr>\n";
  }
  html += "</table>\n";
}

void AddTables(std::string& html, const char* heading, const std::vector<ResultTable>& tables) {
  if (tables.empty()) {
    return;
  }
  html += std::string("<h2>") + heading + "</h2>\n";
  for (const ResultTable& table : tables) {
    AddTable(html, table);
  }
}

void AddSteps(std::string& html, const StepsDone& steps) {
  if (steps.recipe.empty()) {
    return;
  }
  html += "<h2>Steps</h2>\n<ol>\n";
  for (const std::string& words : steps.words) {
    html += "<li>" + Line(words) + ".</li>\n";
  }
  html += "</ol>\n<p class=\"quiet\">The same as a recipe, which velmora2-run repeats:</p>\n<pre>" +
          Escaped(steps.recipe) + "</pre>\n";
}

std::string Body(const Report& report, const std::string& picture) {
  std::string html =
      "<h1>" + Line(report.title) + "</h1>\n<p class=\"quiet\">" + Line(report.made) + "</p>\n";
  html += "<h2>Trial</h2>\n";
  AddFacts(html, report.trial);
  for (const std::string& notice : report.notices) {
    html += "<p class=\"notice\">" + Line(notice) + "</p>\n";
  }
  if (!report.experiment.empty()) {
    html += "<h2>Experiment</h2>\n";
    AddFacts(html, report.experiment);
  }
  AddTables(html, "Channels", report.channels);
  AddTables(html, "Results", report.tables);
  if (report.picture) {
    html += "<h2 class=\"graph\">Graph</h2>\n<p class=\"caption\">" + Line(report.pictureTitle) + "</p>\n" +
            picture + "\n";
  }
  AddSteps(html, report.steps);
  return html;
}

std::string Page(const Report& report, std::string_view style, const std::string& body) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n<title>" +
         Line(report.title) + "</title>\n<style>" + std::string(style) + "</style>\n</head>\n<body>\n" +
         body + "</body>\n</html>\n";
}

}  // namespace

// Inside HTML there is no XML declaration.
std::string ReportHtml(const Report& report, const std::string& svg) {
  const std::size_t start = svg.find("<svg");
  return Page(report, std::string(kStyle) + std::string(kBrowserStyle),
              Body(report, start == std::string::npos ? std::string() : svg.substr(start)));
}

std::string ReportPages(const Report& report) {
  return Page(report, std::string(kStyle) + std::string(kPageStyle),
              Body(report, "<p><img src=\"picture\"/></p>"));
}

}  // namespace velmora
