#pragma once

#include <cstdint>
#include <vector>

#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// How one signal of a record becomes a column: value = (count + added) * gain, in 64 bits.
struct EdfColumn {
  std::int64_t offset = 0;   // of its bytes in a record
  std::int64_t samples = 0;  // in a record
  double added = 0.0;
  double gain = 1.0;
  double lowest = 0.0;  // limits of the converter
  double highest = 0.0;
  std::int64_t atLimit = 0;  // counted here
};

/// One record, counted from 0, to columns 1 and on of the matrix; column k takes its samples behind those of
/// the records before. Samples beyond the matrix's end are dropped.
void StoreEdfRecord(const char* record, bool isBdf, std::vector<EdfColumn>& columns, std::int64_t number,
                    SampleMatrix& matrix);

}  // namespace velmora
