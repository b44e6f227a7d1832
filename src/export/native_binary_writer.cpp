#include "export/native_binary_writer.hpp"

namespace velmora {

void WriteNativeBinary(Workbench& /*workbench*/, ProgressPanel& /*panel*/) {}

}  // namespace velmora
