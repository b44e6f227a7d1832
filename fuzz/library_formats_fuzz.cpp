#include <hdf5.h>
#include <matio.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "formats/hdf5/hdf5_reader.hpp"
#include "formats/matlab/mat_reader.hpp"
#include "fuzz_target.hpp"
#include "import/read_recording.hpp"

using namespace velmora;

namespace {

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  unlink(path.c_str());
  return bytes;
}

std::string TemporaryPath() {
  char name[] = "/tmp/velmora2-seed-XXXXXX";
  close(mkstemp(name));
  return name;
}

std::string SmallMat(mat_ft version) {
  const std::string path = TemporaryPath();
  mat_t* file = Mat_CreateVer(path.c_str(), nullptr, version);
  for (const char* name : {"emg", "t"}) {
    double values[] = {0, 1, 2, 3, 4, 5};
    std::size_t sizes[] = {6, 1};
    matvar_t* variable = Mat_VarCreate(name, MAT_C_DOUBLE, MAT_T_DOUBLE, 2, sizes, values, 0);
    Mat_VarWrite(file, variable, MAT_COMPRESSION_ZLIB);
    Mat_VarFree(variable);
  }
  Mat_Close(file);
  return BytesOf(path);
}

std::string SmallHdf5() {
  const std::string path = TemporaryPath();
  const hid_t file = H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
  const hsize_t size = 4;
  const hid_t space = H5Screate_simple(1, &size, nullptr);
  const hid_t dataset = H5Dcreate2(file, "/x", H5T_STD_I16LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
  const int values[] = {1, 2, 3, 4};
  H5Dwrite(dataset, H5T_NATIVE_INT, H5S_ALL, H5S_ALL, H5P_DEFAULT, values);
  H5Dclose(dataset);
  H5Sclose(space);
  H5Fclose(file);
  return BytesOf(path);
}

}  // namespace

std::vector<std::string> FuzzSeeds() {
  return {"M" + SmallMat(MAT_FT_MAT4), "M" + SmallMat(MAT_FT_MAT5), "H" + SmallHdf5()};
}

// The first byte chooses the library.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  fuzz::Load load(data + 1, size - 1);
  load.trial.PreviousRate = 100.0;
  ReadRecording(load.workbench, load.panel, "library", data[0] % 2 == 1 ? OpenMat : OpenHdf5);
  fuzz::WantNumbers(load.trial);
  return 0;
}
