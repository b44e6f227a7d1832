#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "formats/delimited_text/layout/parse_settings.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// Where the numbers of a text stand, once a format's header has been understood. Lines and columns count
/// from 1.
struct TableLayout {
  std::int64_t firstLine = 1;  // of the records
  std::vector<int> columns;    // of each channel of the recording
  int timeColumn = 0;          // sample times in seconds; 0: times come from the rate
  NumberLayout numbers{};
};

/// What a format makes of the lines behind the records of a table.
class TextContinuation {
 public:
  TextContinuation() = default;
  TextContinuation(const TextContinuation&) = delete;
  TextContinuation& operator=(const TextContinuation&) = delete;
  virtual ~TextContinuation() = default;

  /// The next line that is no record; `rows` records came before. True when more of them follow it at once,
  /// in the same columns.
  virtual bool GoesOnBehind(std::string_view line, std::int64_t rows) = 0;
  /// The whole file has been seen.
  virtual void Finish(Recording& recording) = 0;
};

/// A text that is a file of channels. Of a channel `samples` may be what the header claims (0: nothing),
/// `rate` 0 where only the times tell it.
struct TextTable {
  Recording recording;
  TableLayout layout;
  std::unique_ptr<TextContinuation> behind{};  // may be missing: then the records end once
};

/// Opens a text whose header tells where its columns are, for the scan of the text parser. The records end at
/// the first line that is none: a blank one, or one that does not start like a number. Channels of a rate
/// below the fastest have as many samples as the file holds values of them. Throws FileError when there are
/// no records.
std::unique_ptr<RecordingFile> OpenTextTable(const std::string& path, TextTable table);

/// The first lines of a text, at most `most`, as text for people. Throws FileError.
std::vector<std::string> FirstLines(const std::string& path, std::size_t most);

/// A line without the blanks and tabs around it.
std::string BareText(std::string_view line);

/// Whether a line may be a record of such a table: its first cell that is not empty starts like a number.
bool MayBeRecord(std::string_view line);

/// A rate in Hz from times or steps that a file rounds: a whole number where it is one to 1 in 100,000, else
/// to 12 digits.
double RateFromTimes(double rate);

}  // namespace velmora
