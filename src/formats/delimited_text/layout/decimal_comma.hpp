#pragma once

#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

struct DataStart;

/// Decides whether the commas of the data lines are decimal commas. With tabs between the columns a
/// comma is one only when nothing else can be meant: no field has a point or two commas, and the
/// digits behind the commas cannot be whole numbers of their own. Where both readings are possible
/// commas separate, and the remark says so.
void SettleDecimalComma(const TextHeader& header, DataStart& start);

}  // namespace velmora
