#include "formats/matlab/mat_reader.hpp"

#include <matio.h>

#include <algorithm>
#include <cmath>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/matlab/mat_compression.hpp"
#include "formats/matlab/mat_level4.hpp"
#include "formats/recording/columns_in_memory.hpp"

namespace velmora {
namespace {

struct CloseMat {
  void operator()(mat_t* file) const { Mat_Close(file); }
};
struct FreeMatVariable {
  void operator()(matvar_t* variable) const { Mat_VarFree(variable); }
};
using MatFile = std::unique_ptr<mat_t, CloseMat>;
using MatVariable = std::unique_ptr<matvar_t, FreeMatVariable>;

// What the library complains of while one file is read; the first complaint is the cause of the others.
std::string& MatComplaint() {
  static thread_local std::string complaint;
  return complaint;
}

void TakeMatComplaint(int level, char* message) {
  if (level <= MATIO_LOG_LEVEL_CRITICAL && MatComplaint().empty() && message != nullptr) {
    MatComplaint() = message;
  }
}

/// A real matrix of numbers, column after column.
struct MatMatrix {
  std::string name;
  std::size_t rows = 0;
  std::size_t columns = 0;
  std::vector<double> values;

  [[nodiscard]] std::size_t Longer() const { return std::max(rows, columns); }
  [[nodiscard]] std::size_t Shorter() const { return std::min(rows, columns); }
  /// Series k of the shorter side.
  [[nodiscard]] std::vector<double> Series(std::size_t k) const {
    std::vector<double> series;
    for (std::size_t i = 0; i < Longer(); ++i) {
      series.push_back(rows >= columns ? values[k * rows + i] : values[i * rows + k]);
    }
    return series;
  }
};

template <typename T>
std::vector<double> WidenedValues(const void* data, std::size_t count) {
  const T* from = static_cast<const T*>(data);
  return {from, from + count};
}

std::vector<double> MatValuesOf(const matvar_t& variable, std::size_t count) {
  switch (variable.class_type) {
    case MAT_C_DOUBLE:
      return WidenedValues<double>(variable.data, count);
    case MAT_C_SINGLE:
      return WidenedValues<float>(variable.data, count);
    case MAT_C_INT8:
      return WidenedValues<std::int8_t>(variable.data, count);
    case MAT_C_UINT8:
      return WidenedValues<std::uint8_t>(variable.data, count);
    case MAT_C_INT16:
      return WidenedValues<std::int16_t>(variable.data, count);
    case MAT_C_UINT16:
      return WidenedValues<std::uint16_t>(variable.data, count);
    case MAT_C_INT32:
      return WidenedValues<std::int32_t>(variable.data, count);
    case MAT_C_UINT32:
      return WidenedValues<std::uint32_t>(variable.data, count);
    case MAT_C_INT64:
      return WidenedValues<std::int64_t>(variable.data, count);
    case MAT_C_UINT64:
      return WidenedValues<std::uint64_t>(variable.data, count);
    default:
      return {};
  }
}

std::string BareLog(const std::string& message) {
  return message.substr(0, message.find_first_of("\r\n"));
}

bool MatIsNumeric(const matvar_t& variable) {
  return variable.class_type >= MAT_C_DOUBLE && variable.class_type <= MAT_C_UINT64;
}

// Elements of a variable; -1: more than can be counted.
std::int64_t MatElementsOf(const matvar_t& variable) {
  std::int64_t elements = 1;
  for (int d = 0; d < variable.rank; ++d) {
    const std::size_t size = variable.dims == nullptr ? 0 : variable.dims[d];
    if (size > static_cast<std::size_t>(INT64_MAX / 8) ||
        (size > 0 && elements > INT64_MAX / 8 / static_cast<std::int64_t>(size))) {
      return -1;
    }
    elements *= static_cast<std::int64_t>(size);
  }
  return elements;
}

std::string MatSizeText(const matvar_t& variable) {
  std::string text;
  for (int d = 0; d < variable.rank && variable.dims != nullptr; ++d) {
    text += (d > 0 ? " x " : "") + std::to_string(variable.dims[d]);
  }
  return text;
}

class MatRecording : public ColumnsInMemory {
 public:
  explicit MatRecording(const std::string& path) : fileBytes_(InputFile(path).Size()) {
    CheckMatCompression(InputFile(path));
    CheckMatLevel4(InputFile(path));
    Mat_LogInitFunc("velmora2", TakeMatComplaint);
    MatComplaint().clear();
    file_.reset(Mat_Open(path.c_str(), MAT_ACC_RDONLY));
    if (file_ == nullptr) {
      throw FileError("this is no MATLAB file, or a damaged one");
    }
    TakeVariables();
    if (!MatComplaint().empty()) {
      throw FileError("it is damaged: " + BareLog(MatComplaint()));
    }
    const std::size_t length = Longest();
    if (length < 2) {
      throw FileError("it holds no matrix of numbers that could be channels" +
                      (seen_.empty() ? "" : ": " + seen_));
    }
    TakeRate(length);
    TakeChannels(length);
    if (!left_.empty()) {
      found_.remarks.push_back("Variables that are no channels were left out: " + left_ + ".");
    }
    if (missing_ > 0) {
      found_.remarks.push_back(FormatCount(missing_) + " values are NaN, which means missing; they are 0.");
    }
    file_.reset();
  }

 private:
  void TakeVariables() {
    constexpr int kMost = 100000;
    for (int k = 0; k < kMost; ++k) {
      const MatVariable info(Mat_VarReadNextInfo(file_.get()));
      if (info == nullptr) {
        break;
      }
      See(*info, info->name == nullptr ? "" : info->name);
    }
    for (const std::string& name : wanted_) {
      const MatVariable variable(Mat_VarRead(file_.get(), name.c_str()));
      if (variable == nullptr) {
        NoteLeft(name);
        continue;
      }
      Take(*variable, name);
    }
  }

  void See(const matvar_t& info, const std::string& name) {
    constexpr std::size_t kTold = 400;
    seen_ += seen_.size() < kTold ? (seen_.empty() ? "" : ", ") + name + " (" + MatSizeText(info) + ")" : "";
    const std::int64_t elements = MatElementsOf(info);
    const bool opened = MatIsNumeric(info) || info.class_type == MAT_C_CELL ||
                        (info.class_type == MAT_C_STRUCT && elements == 1);
    if (!opened || info.isComplex != 0 || name.empty()) {
      NoteLeft(name);
    } else if (IsTooLargeFor(elements < 0 ? -1 : elements * 8, fileBytes_)) {
      throw FileError(name + " counts more values than the file can hold");
    } else {
      wanted_.push_back(name);
    }
  }

  void Take(const matvar_t& variable, const std::string& name) {
    if (variable.class_type == MAT_C_CELL) {
      TakeLabels(variable);
    } else if (variable.class_type == MAT_C_STRUCT) {
      TakeFields(variable, name);
    } else {
      TakeMatrix(variable, name);
    }
  }

  void TakeFields(const matvar_t& variable, const std::string& name) {
    const unsigned count = Mat_VarGetNumberOfFields(const_cast<matvar_t*>(&variable));  // reads only
    char* const* fields = Mat_VarGetStructFieldnames(&variable);
    for (unsigned k = 0; k < count && fields != nullptr; ++k) {
      const matvar_t* field = Mat_VarGetStructFieldByIndex(const_cast<matvar_t*>(&variable), k, 0);
      const std::string fieldName = name + "." + (fields[k] == nullptr ? "" : fields[k]);
      if (field != nullptr && field->class_type == MAT_C_CELL) {
        TakeLabels(*field);
      } else if (field != nullptr && MatIsNumeric(*field)) {
        TakeMatrix(*field, fieldName);
      } else {
        NoteLeft(fieldName);
      }
    }
  }

  void TakeMatrix(const matvar_t& variable, const std::string& name) {
    const std::int64_t elements = MatElementsOf(variable);
    const bool usable =
        variable.rank == 2 && variable.isComplex == 0 && elements > 0 && variable.data != nullptr &&
        variable.data_size > 0 &&
        variable.nbytes / static_cast<std::size_t>(variable.data_size) >= static_cast<std::size_t>(elements);
    if (!usable) {
      NoteLeft(name);
      return;
    }
    matrices_.push_back({.name = name,
                         .rows = variable.dims[0],
                         .columns = variable.dims[1],
                         .values = MatValuesOf(variable, static_cast<std::size_t>(elements))});
  }

  // A cell array of nothing but texts may name the channels.
  void TakeLabels(const matvar_t& variable) {
    std::vector<std::string> labels;
    const std::int64_t elements = MatElementsOf(variable);
    for (std::int64_t k = 0; k < elements && variable.data != nullptr; ++k) {
      const matvar_t* cell = Mat_VarGetCell(const_cast<matvar_t*>(&variable), static_cast<int>(k));
      if (cell == nullptr || cell->class_type != MAT_C_CHAR || cell->data == nullptr) {
        return;
      }
      labels.push_back(TextOfCell(*cell));
    }
    labels_.push_back(std::move(labels));
  }

  static std::string TextOfCell(const matvar_t& cell) {
    std::string text;
    if (cell.data_size == 1) {
      text.assign(static_cast<const char*>(cell.data), cell.nbytes);
    } else if (cell.data_size == 2) {
      const auto* units = static_cast<const std::uint16_t*>(cell.data);
      for (std::size_t k = 0; k < cell.nbytes / 2; ++k) {
        text += static_cast<char>(units[k] < 256 ? units[k] : '?');
      }
    }
    return FixedFieldText(text);
  }

  [[nodiscard]] std::size_t Longest() const {
    std::size_t longest = 0;
    for (const MatMatrix& matrix : matrices_) {
      longest = std::max(longest, matrix.Longer());
    }
    return longest;
  }

  static std::string LastPart(const std::string& name) { return name.substr(name.rfind('.') + 1); }

  void TakeRate(std::size_t length) {
    for (const MatMatrix& matrix : matrices_) {
      const std::string name = LastPart(matrix.name);
      const bool times = matrix.Shorter() == 1 && matrix.Longer() == length &&
                         (EqualNoCase(name, "t") || EqualNoCase(name, "time"));
      if (times && RateOfTimes(matrix.values) > 0) {
        rate_ = RateOfTimes(matrix.values);
        times_ = &matrix;
        if (matrix.values.front() != 0.0) {
          found_.lines.push_back("First sample at " + PlainNumber(matrix.values.front()) + " s");
        }
        return;
      }
    }
    for (const MatMatrix& matrix : matrices_) {
      const double value = matrix.values.front();
      if (matrix.Longer() == 1 && NamesRate(LastPart(matrix.name)) && std::isfinite(value) && value > 0) {
        rate_ = value;
      }
    }
  }

  void TakeChannels(std::size_t length) {
    std::vector<std::string> names;
    std::vector<std::vector<float>> samples;
    for (const MatMatrix& matrix : matrices_) {
      if (&matrix == times_) {
        continue;
      }
      if (matrix.Longer() != length) {
        if (matrix.Longer() > 1 || !NamesRate(LastPart(matrix.name))) {
          NoteLeft(matrix.name);
        }
        continue;
      }
      for (std::size_t k = 0; k < matrix.Shorter(); ++k) {
        names.push_back(matrix.Shorter() == 1 ? matrix.name : matrix.name + " " + std::to_string(k + 1));
        samples.push_back(SamplesOf(matrix.Series(k), matrix.name, missing_));
      }
    }
    if (samples.empty()) {
      throw FileError("it holds times and no channels: " + seen_);
    }
    for (const std::vector<std::string>& labels : labels_) {
      names = labels.size() == names.size() ? labels : names;
    }
    for (std::size_t k = 0; k < samples.size(); ++k) {
      AddColumn({.label = names[k], .rate = rate_}, std::move(samples[k]));
    }
  }

  void NoteLeft(const std::string& name) {
    constexpr std::size_t kTold = 300;
    left_ += left_.size() < kTold ? (left_.empty() ? "" : ", ") + name : "";
  }

  MatFile file_;
  std::int64_t fileBytes_;
  std::vector<std::string> wanted_;
  std::vector<MatMatrix> matrices_;
  std::vector<std::vector<std::string>> labels_;
  const MatMatrix* times_ = nullptr;
  double rate_ = 0.0;
  std::int64_t missing_ = 0;
  std::string seen_;
  std::string left_;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenMat(const std::string& path) {
  return std::make_unique<MatRecording>(path);
}

}  // namespace velmora
