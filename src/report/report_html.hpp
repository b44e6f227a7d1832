#pragma once

#include <string>

#include "report/report.hpp"

namespace velmora {

/// The report as one file that shows the same without a network: style and picture are inside, numbers are
/// text. `svg` is the drawn picture.
std::string ReportHtml(const Report& report, const std::string& svg);

/// The same for pages, in the part of HTML that QTextDocument knows; the picture is <img src="picture">.
std::string ReportPages(const Report& report);

}  // namespace velmora
