#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "core/questions/result_table.hpp"
#include "core/text/numbers.hpp"

namespace velmora {

using Json = nlohmann::ordered_json;

/// A 32-bit value as its own shortest text: 0.1, not 0.10000000149011612. Not finite: null.
inline Json JsonNumber(float value) {
  return std::isfinite(value) ? Json(Val(PlainNumber(value))) : Json(nullptr);
}

inline Json JsonNumber(double value) {
  return std::isfinite(value) ? Json(value) : Json(nullptr);
}

/// The cells with all their digits, and as the grid shows them.
inline Json JsonTable(const ResultTable& table) {
  Json rows = Json::array();
  Json shown = Json::array();
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    Json row = Json::array();
    Json texts = Json::array();
    for (std::size_t k = 0; k < table.rows[i].size(); ++k) {
      const ResultTable::Cell& cell = table.rows[i][k];
      const auto* number = std::get_if<double>(&cell);
      const auto* text = std::get_if<std::string>(&cell);
      row.push_back(number != nullptr ? JsonNumber(*number) : text != nullptr ? Json(*text) : Json(nullptr));
      texts.push_back(ShownCell(table, i, k));
    }
    rows.push_back(std::move(row));
    shown.push_back(std::move(texts));
  }
  return {{"title", table.title},
          {"columns", table.columns},
          {"rows", std::move(rows)},
          {"shown", std::move(shown)}};
}

/// `indent` -1: one line. File names may hold any bytes; what is no UTF-8 is replaced.
inline std::string JsonText(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace velmora
