#include "run/study/study_table.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/files/paths.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

void AppendCell(std::string& line, const std::string& cell, char separator) {
  const bool plain =
      cell.find_first_of("\"\r\n") == std::string::npos && cell.find(separator) == std::string::npos;
  if (plain) {
    line += cell;
    return;
  }
  line += '"';
  for (const char c : cell) {
    line.append(c == '"' ? 2 : 1, c);
  }
  line += '"';
}

void AppendLine(std::string& text, const std::vector<std::string>& cells, std::size_t count, char separator) {
  for (std::size_t k = 0; k < count; ++k) {
    if (k > 0) {
      text += separator;
    }
    if (k < cells.size()) {
      AppendCell(text, cells[k], separator);
    }
  }
  text += '\n';
}

/// Takes one cell after the other off the front of a text.
class CellReader {
 public:
  CellReader(std::string_view text, char separator) : text_(text), separator_(separator) {}

  [[nodiscard]] bool AtEnd() const { return at_ >= text_.size(); }

  std::vector<std::string> Line() {
    std::vector<std::string> cells;
    do {
      cells.push_back(Cell());
    } while (Take(separator_));
    Take('\r');
    if (!AtEnd() && !Take('\n')) {
      throw std::invalid_argument("a quoted cell goes on behind its quote");
    }
    return cells;
  }

 private:
  bool Take(char c) {
    const bool there = !AtEnd() && text_[at_] == c;
    at_ += there ? 1 : 0;
    return there;
  }

  std::string Cell() {
    if (Take('"')) {
      return Quoted();
    }
    const char ends[] = {separator_, '\r', '\n'};
    const std::size_t start = at_;
    at_ = std::min(text_.find_first_of({ends, 3}, at_), text_.size());
    return std::string(text_.substr(start, at_ - start));
  }

  std::string Quoted() {
    std::string cell;
    while (true) {
      const std::size_t quote = text_.find('"', at_);
      if (quote == std::string_view::npos) {
        throw std::invalid_argument("a quote is not closed");
      }
      cell.append(text_, at_, quote - at_);
      at_ = quote + 1;
      if (!Take('"')) {
        return cell;
      }
      cell += '"';
    }
  }

  std::string_view text_;
  char separator_;
  std::size_t at_ = 0;
};

}  // namespace

std::optional<char> SeparatorOf(std::string_view path) {
  const std::string extension = FileExtension(path);
  if (EqualNoCase(extension, "csv")) {
    return ',';
  }
  return EqualNoCase(extension, "tab") ? std::optional('\t') : std::nullopt;
}

std::size_t StudyTable::ColumnOf(const std::string& name, std::size_t occurrence) {
  for (std::size_t k = 0; k < columns_.size(); ++k) {
    if (columns_[k] == name && occurrence-- == 0) {
      return k;
    }
  }
  columns_.push_back(name);
  return columns_.size() - 1;
}

void StudyTable::Add(const TableRows& rows) {
  std::vector<std::size_t> places;
  for (std::size_t k = 0; k < rows.columns.size(); ++k) {
    const auto here = rows.columns.begin() + static_cast<std::ptrdiff_t>(k);
    const auto before = std::count(rows.columns.begin(), here, *here);
    places.push_back(ColumnOf(*here, static_cast<std::size_t>(before)));
  }
  for (const std::vector<std::string>& cells : rows.rows) {
    std::vector<std::string>& row = rows_.emplace_back(columns_.size());
    for (std::size_t k = 0; k < std::min(cells.size(), places.size()); ++k) {
      row[places[k]] = cells[k];
    }
  }
}

std::string StudyTable::Text(char separator) const {
  std::string text;
  AppendLine(text, columns_, columns_.size(), separator);
  for (const std::vector<std::string>& row : rows_) {
    AppendLine(text, row, columns_.size(), separator);
  }
  return text;
}

TableRows ReadTableText(std::string_view text, char separator) {
  CellReader reader(text, separator);
  TableRows table;
  if (!reader.AtEnd()) {
    table.columns = reader.Line();
  }
  while (!reader.AtEnd()) {
    table.rows.push_back(reader.Line());
    if (table.rows.back().size() > table.columns.size()) {
      throw std::invalid_argument("row " + std::to_string(table.rows.size()) +
                                  " has more cells than columns have names");
    }
  }
  return table;
}

}  // namespace velmora
