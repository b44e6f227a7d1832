#include "formats/delimited_text/layout/dialect_keywords.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/saved_head.hpp"

namespace velmora {
namespace {

struct KeywordLine {
  TextHeader& header;
  std::string_view text;
  int number;
  std::size_t found;  // where the keyword starts

  // Columns count from 1.
  [[nodiscard]] std::string_view From(std::size_t column) const {
    return text.substr(std::min(column - 1, text.size()));
  }
};

// The field that a header's number stands in, without what parts it from its keyword. A comma there
// says that commas part the fields of this line.
std::string NumberField(std::string_view text) {
  const std::size_t start = std::min(text.find_first_not_of("\t ,:="), text.size());
  const bool commasPart = text.substr(0, start).find(',') != std::string_view::npos;
  text.remove_prefix(start);
  return std::string(text.substr(0, text.find_first_of(commasPart ? "\t ," : "\t ")));
}

// The one comma of a field, where it stands between digits.
std::size_t CommaBetweenDigits(std::string_view field) {
  const auto digitAt = [field](std::size_t at) {
    return at < field.size() && field[at] >= '0' && field[at] <= '9';
  };
  const std::size_t comma = field.find(',');
  const bool between = comma != std::string_view::npos && digitAt(comma - 1) && digitAt(comma + 1);
  const bool alone = between && field.find_first_of(",.", comma + 1) == std::string_view::npos;
  return alone ? comma : std::string_view::npos;
}

// A header's number, with a decimal comma where the field has one.
double Number(std::string_view text) {
  std::string field = NumberField(text);
  if (const std::size_t comma = CommaBetweenDigits(field); comma != std::string::npos) {
    field[comma] = '.';
  }
  return Val(field);
}

// What a field means to whoever sets off thousands with a comma ("1,000"); 0: no such field.
double NumberWithThousands(std::string_view text) {
  constexpr std::size_t kGroup = 3;
  std::string field = NumberField(text);
  const std::size_t comma = CommaBetweenDigits(field);
  if (comma == std::string::npos || field[0] == '0') {
    return 0.0;
  }
  field.erase(comma, 1);
  const std::size_t end = std::min(field.find_first_not_of("0123456789", comma), field.size());
  return end - comma == kGroup ? Val(field) : 0.0;
}

// Where the keyword has to stand.
enum class Place { Start, StartAnyCase, SecondColumnAnyCase, Anywhere };

enum class Dialects { All, AllBut, Only };

struct Keyword {
  Dialects dialects;
  int code;
  int line;  // 0: any line
  Place place;
  std::string_view text;
  void (*apply)(const KeywordLine&);
};

void SetRate(TextHeader& header, double rate) {
  header.rate = rate > 0 ? rate : header.rate;
}
void TakeRate(TextHeader& header, std::string_view text) {
  SetRate(header, Number(text));
  if (const double rate = NumberWithThousands(text); rate > 0) {
    header.statedRate = rate;
  }
}
template <std::size_t column>
void RateFrom(const KeywordLine& line) {
  TakeRate(line.header, line.From(column));
}
template <std::size_t column>
void RecordsFrom(const KeywordLine& line) {
  line.header.announcedRecords = Number(line.From(column));
}
template <std::size_t length>
void RateBehind(const KeywordLine& line) {
  TakeRate(line.header, line.From(line.found + length + 1));
}
template <std::size_t length>
void RecordsBehind(const KeywordLine& line) {
  line.header.announcedRecords = Number(line.From(line.found + length + 1));
}
template <std::size_t column>
void StatedRateFrom(const KeywordLine& line) {
  line.header.statedRate = Number(line.From(column));
}
void RateBehindTab(const KeywordLine& line) {
  if (const std::size_t tab = line.text.find('\t'); tab != std::string_view::npos) {
    TakeRate(line.header, line.From(tab + 2));
  }
}
void ColumnsBehind(const KeywordLine& line) {
  line.header.announcedColumns = Number(line.From(line.found + 10));
}
void RateFromStep(const KeywordLine& line) {
  const double step = Number(line.From(9));
  SetRate(line.header, step > 0 ? 1 / step : 0.0);
}
void ResolutionFrom22(const KeywordLine& line) {
  line.header.resolutionBits = Number(line.From(22));
}
void TitleFrom15(const KeywordLine& line) {
  line.header.title = line.From(15);
}
void TimeLabelFrom13(const KeywordLine& line) {
  const std::string_view text = line.From(13);
  line.header.timeLabel = text.substr(0, text.find('\t'));
}
void Labels(const KeywordLine& line) {
  line.header.labelsLine = line.number;
}
void UnitsLine(const KeywordLine& line) {
  line.header.unitsLine = line.number;
}
void MarkerLabels(const KeywordLine& line) {
  line.header.markerLabelsLine = line.number;
}
void MarkerUnits(const KeywordLine& line) {
  line.header.markerUnitsLine = line.number;
}
void Plates(const KeywordLine& line) {
  line.header.platesLine = line.number;
}
void Time(const KeywordLine& line) {
  line.header.hasTime = true;
}
void UnitsWithTime(const KeywordLine& line) {
  UnitsLine(line);
  Time(line);
}
void LabelsWithTime(const KeywordLine& line) {
  Labels(line);
  Time(line);
  line.header.keywordNamesTime = true;
}
void LastLine(const KeywordLine& line) {
  LabelsWithTime(line);
  line.header.lastLine = line.number;
}

// One row a keyword. A row's number comes from a column of the line, from behind the keyword, or
// from behind the line's first tab.
constexpr std::array kKeywords = {
    Keyword{Dialects::AllBut, 33, 0, Place::Start, "FREQUENCY", RateFrom<10>},
    Keyword{Dialects::Only, 33, 0, Place::Start, "FREQUENCY", StatedRateFrom<10>},
    Keyword{Dialects::Only, 33, 0, Place::Start, "CHANNEL_NAMES", Labels},
    Keyword{Dialects::Only, 33, 0, Place::Start, "CHANNEL_UNITS", UnitsLine},
    Keyword{Dialects::Only, 33, 0, Place::Start, "MARKER_NAMES", MarkerLabels},
    Keyword{Dialects::Only, 33, 0, Place::Start, "MARKER_UNITS", MarkerUnits},
    Keyword{Dialects::Only, 25, 0, Place::Start, "# SamplingFrequency", RateFrom<21>},
    Keyword{Dialects::Only, 25, 0, Place::Start, "# SamplingResolution", ResolutionFrom22},
    Keyword{Dialects::Only, 62, 1, Place::Anywhere, "Channels:", ColumnsBehind},
    Keyword{Dialects::Only, 62, 2, Place::Anywhere, "", RecordsFrom<19>},
    Keyword{Dialects::Only, 62, 3, Place::Anywhere, "", RateFrom<20>},
    Keyword{Dialects::Only, 62, 0, Place::Start, "Time [s]", LastLine},
    Keyword{Dialects::Only, 63, 1, Place::Anywhere, "Sampling frequency:", RateBehind<19>},
    Keyword{Dialects::Only, 63, 1, Place::Anywhere, "Number of points:", RecordsBehind<17>},
    Keyword{Dialects::Only, 63, 3, Place::Anywhere, "", RateFrom<20>},
    Keyword{Dialects::AllBut, 82, 0, Place::Start, "// Sample rate:", RateFrom<16>},
    Keyword{Dialects::Only, 71, 0, Place::Start, "// Update Rate:", StatedRateFrom<16>},
    Keyword{Dialects::AllBut, 82, 0, Place::Start, "Counter", Time},
    Keyword{Dialects::AllBut, 82, 0, Place::StartAnyCase, "RATE", RateBehindTab},
    Keyword{Dialects::AllBut, 82, 0, Place::StartAnyCase, "SAMPLE RATE", RateBehindTab},
    Keyword{Dialects::AllBut, 82, 0, Place::StartAnyCase, "CHANNEL DESCRIPTION", Labels},
    Keyword{Dialects::AllBut, 82, 0, Place::StartAnyCase, "LABEL", Labels},
    Keyword{Dialects::AllBut, 82, 0, Place::StartAnyCase, "ENGINEERING UNIT", UnitsWithTime},
    Keyword{Dialects::Only, 63, 0, Place::Start, "X [s]", LastLine},
    Keyword{Dialects::Only, 82, 0, Place::Start, "Samples", RecordsFrom<9>},
    Keyword{Dialects::Only, 82, 0, Place::Start, "Y_Unit_Label", UnitsLine},
    Keyword{Dialects::Only, 82, 0, Place::Start, "X_Dimension", TimeLabelFrom13},
    Keyword{Dialects::Only, 82, 0, Place::Start, "Delta_X", RateFromStep},
    Keyword{Dialects::Only, 82, 0, Place::Start, "X_Value", LabelsWithTime},
    Keyword{Dialects::All, 0, 0, Place::SecondColumnAnyCase, "SAMPLE NAME", TitleFrom15},
    Keyword{Dialects::Only, 91, 0, Place::Start, "ITEM", Labels},
    Keyword{Dialects::Only, 91, 0, Place::Start, "FP", Plates},
    Keyword{Dialects::Only, 93, 0, Place::Start, "File", Labels},
    Keyword{Dialects::Only, 93, 0, Place::Start, "Channels:", ColumnsBehind},
};

bool Applies(const Keyword& keyword, int code, int line) {
  const bool lineFits = keyword.line == 0 || keyword.line == line;
  const bool own = keyword.code == code;
  return lineFits && (keyword.dialects == Dialects::All || (keyword.dialects == Dialects::Only) == own);
}

std::size_t Find(const Keyword& keyword, std::string_view line) {
  const auto startsAt = [&](std::size_t at, bool anyCase) {
    const std::string_view here = line.substr(std::min(at, line.size()), keyword.text.size());
    return (anyCase ? EqualNoCase(here, keyword.text) : here == keyword.text) ? at : std::string_view::npos;
  };
  switch (keyword.place) {
    case Place::Start:
      return startsAt(0, false);
    case Place::StartAnyCase:
      return startsAt(0, true);
    case Place::SecondColumnAnyCase:
      return startsAt(1, true);
    case Place::Anywhere:
      return line.find(keyword.text);
  }
  return std::string_view::npos;
}

// The number soon behind one of the usual names of a rate, in any sentence or notation; 0: none.
double RateInWords(std::string_view line) {
  constexpr std::size_t kFurthest = 16;
  const std::string upper = ToUpper(line);
  for (const std::string_view name :
       {"SAMPLING RATE", "SAMPLING FREQUENCY", "SAMPLE RATE", "SAMPLE FREQUENCY"}) {
    const std::size_t found = upper.find(name);
    if (found == std::string::npos) {
      continue;
    }
    const std::size_t digit = line.find_first_of("0123456789", found + name.size());
    if (digit != std::string_view::npos && digit - found - name.size() < kFurthest) {
      return Val(line.substr(digit));
    }
  }
  return 0.0;
}

// An export of devices has its rate alone in the line below that word.
double RateBelowDevices(const TextHeader& header, std::size_t line) {
  const std::string_view word = "Devices";
  const std::string_view text = header.lines[line];
  const std::string_view below =
      line + 1 < header.lines.size() ? std::string_view(header.lines[line + 1]) : "";
  const bool alone = text.substr(0, word.size()) == word &&
                     text.find_first_not_of(",;\t ", word.size()) == std::string_view::npos &&
                     below.find_first_not_of("0123456789.,;\t ") == std::string_view::npos;
  return alone ? Val(below.substr(0, below.find_first_of(",;\t"))) : 0.0;
}

void FindRateInWords(TextHeader& header) {
  for (std::size_t i = 0; i < header.lines.size() && header.rate == 0.0 && header.statedRate == 0.0; ++i) {
    header.statedRate = std::max(RateInWords(header.lines[i]), RateBelowDevices(header, i));
  }
}

}  // namespace

void ReadKeywords(TextHeader& header, int code) {
  for (std::size_t i = 0; i < header.lines.size(); ++i) {
    const std::string_view text = header.lines[i];
    const int number = static_cast<int>(i) + 1;
    for (const Keyword& keyword : kKeywords) {
      if (!Applies(keyword, code, number)) {
        continue;
      }
      if (const std::size_t found = Find(keyword, text); found != std::string_view::npos) {
        keyword.apply({header, text, number, found});
      }
    }
  }
  FindRateInWords(header);
  if (code == kPlainTextCode) {
    ReadSavedHead(header);
  }
}

}  // namespace velmora
