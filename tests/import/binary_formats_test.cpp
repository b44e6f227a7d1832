#include <hdf5.h>
#include <matio.h>

#include <array>
#include <cmath>
#include <limits>

#include "support/instrument_files/tdms_file.hpp"
#include "support/recordings.hpp"
#include "support/text_load.hpp"

namespace velmora::test {
namespace {

struct BinaryFormatsTest : TextLoadTest {
  // Every cut of a file ends in a box or in a trial that holds what it promises.
  void ExpectCutsAreTold(const std::string& name, const std::string& bytes, std::size_t step) {
    for (std::size_t size = 0; size < bytes.size(); size += step) {
      questions.inputAnswers.assign(2, "50");
      questions.boxAnswers.assign(1, Button::Cancel);  // what is cut in its first bytes is no known format
      Load(name, bytes.substr(0, size));
      EXPECT_TRUE(trial.NData > 0 || !questions.boxes.empty()) << name << " cut at " << size;
    }
  }
};

TEST_F(BinaryFormatsTest, TdmsSegmentsOfCountsAndScales) {
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
    Load("a.tdms", SmallTdms(order));
    EXPECT_EQ(trial.FileTypeCode, 313);
    EXPECT_EQ(Labels(), (Texts{"a", "b"}));
    EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "V"}));
    EXPECT_EQ(trial.Rate, 1000.0);
    // 0.5 n + 2 by hand.
    EXPECT_EQ(Rows(), (Frames{{2.5F, 10}, {3, 20}, {3.5F, 30}, {4, 40}, {4.5F, 50}, {5, 60}}));
    EXPECT_EQ(trial.ChanGain[1], 0.5);
    EXPECT_EQ(trial.ChanOffset[1], 4.0) << "(n + 4) 0.5";
    EXPECT_EQ(trial.HeaderLines[1], "TDMS group It's");
    EXPECT_EQ(Told(), "1 channel of other groups, lengths or kinds not read: other/c.\n");
  }
  Load("renamed.xyz", SmallTdms());
  EXPECT_EQ(trial.FileTypeCode, 313) << "told by its first bytes";
  // Interleaved, polynomial, no rate, and cut in the last segment.
  TdmsBuilder file;
  const std::string polynomial = file.Property("NI_Scaling_Status", "unscaled") +
                                 file.Property("NI_Number_Of_Scales", 1.0) +
                                 file.Property("NI_Scale[0]_Scale_Type", "Polynomial") +
                                 file.Property("NI_Scale[0]_Polynomial_Coefficients_Size", 3.0) +
                                 file.Property("NI_Scale[0]_Polynomial_Coefficients[0]", 1.0) +
                                 file.Property("NI_Scale[0]_Polynomial_Coefficients[2]", 2.0);
  file.Object("/'g'/'x'", file.Index(9, 2), polynomial, 6).Object("/'g'/'y'", file.Index(10, 2));
  ByteBuilder raw;
  raw.Add(3.0F).Add(-1.5).Add(4.0F).Add(2.5).Add(9.0F);
  file.Segment(raw.Bytes(), 2 + 4 + 8 + 0x20);
  questions.inputAnswers = {"200"};
  Load("a.tdms", file.Bytes());
  EXPECT_EQ(trial.Rate, 200.0) << LastBox();
  EXPECT_EQ(Rows(), (Frames{{19, -1.5F}, {33, 2.5F}}));
  // A segment that says it goes to the end.
  std::string open = SmallTdms();
  const std::size_t last = open.rfind("TDSm");
  open.replace(last + 12, 8, std::string(8, '\xFF'));
  Load("a.tdms", open);
  EXPECT_EQ(trial.NData, 6);
  EXPECT_NE(Told().find("The file ends inside its last segment"), std::string::npos);
  ExpectCutsAreTold("a.tdms", SmallTdms(), 1);
  // Samples of a measuring card that has two buffers among others.
  TdmsBuilder mixed;
  ByteBuilder card;
  card.Add(std::uint32_t{0x1269}).Add(std::uint32_t{0xFFFFFFFF}).Add(std::uint32_t{1}).Add(std::uint64_t{3});
  card.Add(std::uint32_t{0}).Add(std::uint32_t{2}).Add(std::uint32_t{4}).Add(std::uint32_t{4});
  mixed.Object("/'g'/'x'", mixed.Index(2, 1)).Object("/'g'/'y'", card.Bytes()).Segment("abcdefghijkl");
  Load("a.tdms", mixed.Bytes());
  EXPECT_EQ(trial.NData, 0);
  EXPECT_NE(LastBox().find("measuring card and others"), std::string::npos) << LastBox();
  // Counts that no file holds.
  TdmsBuilder huge;
  huge.Object("/'g'/'x'", huge.Index(2, std::uint64_t{1} << 62)).Segment("ab");
  Load("a.tdms", huge.Bytes());
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(BinaryFormatsTest, TdmsFilesOfOthers) {
  if (!Recording("tdms")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  // Read by npTDMS.
  LoadPath(*Recording("tdms/raw1.tdms"));
  EXPECT_EQ(trial.NChan, 7);
  EXPECT_EQ(trial.NData, 2000);
  EXPECT_EQ(trial.Rate, 50000.0);
  EXPECT_EQ(UnitsOfChannels(), Texts(7, "Volts"));
  EXPECT_FLOAT_EQ(trial.Data(1, 1), -.18402661F);
  EXPECT_FLOAT_EQ(trial.Data(2, 1), .14801477F);
  EXPECT_NEAR(Sum(1), 129.416486, 1e-5);
  EXPECT_NEAR(Sum(7), 9808.32606, 1e-3);
  LoadPath(*Recording("tdms/raw_timestamps.tdms"));
  EXPECT_EQ(trial.NData, 128);
  EXPECT_NEAR(static_cast<double>(trial.Data(2, 1)), std::sin(2 * std::acos(-1.0) / 128), 1e-7);
}

struct MatWriter {
  explicit MatWriter(const std::string& path, mat_ft version = MAT_FT_MAT5)
      : file(Mat_CreateVer(path.c_str(), nullptr, version)) {}
  ~MatWriter() { Mat_Close(file); }
  void Add(const char* name, std::vector<double> values, std::size_t rows, std::size_t columns,
           matio_compression packed = MAT_COMPRESSION_ZLIB) const {
    std::array<std::size_t, 2> sizes = {rows, columns};
    matvar_t* variable = Mat_VarCreate(name, MAT_C_DOUBLE, MAT_T_DOUBLE, 2, sizes.data(), values.data(), 0);
    Mat_VarWrite(file, variable, packed);
    Mat_VarFree(variable);
  }
  mat_t* file;
};

TEST_F(BinaryFormatsTest, MatlabMatricesBecomeChannels) {
  const std::string path = directory.Path("a.mat");
  for (const mat_ft version : {MAT_FT_MAT4, MAT_FT_MAT5, MAT_FT_MAT73}) {
    {
      const MatWriter mat(path, version);
      mat.Add("emg", {1, 2, 3, 4, 10, 20, 30, 40}, 4, 2);
      mat.Add("force", {5, 6, std::nan(""), 8}, 1, 4);
      mat.Add("t", {0.5, 0.75, 1, 1.25}, 4, 1);
      mat.Add("mass", {75}, 1, 1);
    }
    LoadPath(path);
    EXPECT_EQ(trial.FileTypeCode, 314);
    EXPECT_EQ(trial.Rate, 4.0);
    EXPECT_EQ(Labels(), (Texts{"emg 1", "emg 2", "force"}));
    EXPECT_EQ(Rows(), (Frames{{1, 10, 5}, {2, 20, 6}, {3, 30, 0}, {4, 40, 8}}));
    EXPECT_EQ(Told(),
              "Variables that are no channels were left out: mass.\n"
              "1 values are NaN, which means missing; they are 0.\n");
    EXPECT_EQ(trial.HeaderLines[1], "First sample at 0.5 s");
  }
  {
    const MatWriter mat(path);
    mat.Add("wide", {1, 10, 2, 20, 3, 30}, 2, 3);
    mat.Add("Fs", {250}, 1, 1);
    std::array<std::size_t, 2> sizes = {1, 2};
    std::array<std::size_t, 2> length = {1, 4};
    std::array<matvar_t*, 2> cells = {
        Mat_VarCreate(nullptr, MAT_C_CHAR, MAT_T_UINT8, 2, length.data(), const_cast<char*>("left"), 0),
        Mat_VarCreate(nullptr, MAT_C_CHAR, MAT_T_UINT8, 2, length.data(), const_cast<char*>("rear"), 0)};
    matvar_t* labels = Mat_VarCreate("names", MAT_C_CELL, MAT_T_CELL, 2, sizes.data(), cells.data(), 0);
    Mat_VarWrite(mat.file, labels, MAT_COMPRESSION_NONE);
    Mat_VarFree(labels);
  }
  LoadPath(path);
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(Labels(), (Texts{"left", "rear"}));
  EXPECT_EQ(Rows(), (Frames{{1, 10}, {2, 20}, {3, 30}}));
  {
    const MatWriter mat(path);
    mat.Add("x", {std::numeric_limits<double>::infinity(), 1}, 2, 1);
  }
  LoadPath(path);
  EXPECT_NE(LastBox().find("a value of x is infinite"), std::string::npos) << LastBox();
  {
    const MatWriter mat(path);
    mat.Add("x", std::vector<double>(500, 0.25), 500, 1);
  }
  ExpectCutsAreTold("b.mat", ReadFile(path), 3);

  {
    const MatWriter mat(path, MAT_FT_MAT4);
    mat.Add("x", {1, 2, 3, 4}, 4, 1);
  }
  std::string bytes = ReadFile(path);
  constexpr std::size_t kNameLengthAt = 16;
  bytes.replace(kNameLengthAt, 4, "\0\0\0\x50", 4);  // a name of 1.3 GB in a file of 54 bytes
  Load("c.mat", bytes);
  EXPECT_NE(LastBox().find("reaches past its end"), std::string::npos) << LastBox();
}

TEST_F(BinaryFormatsTest, MatlabFilesOfOthers) {
  if (!Recording("mat")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  // As scipy's own tests expect them.
  const double pi = std::acos(-1.0);
  for (const char* name : {"testdouble_6.1_SOL2.mat", "testmulti_7.4_GLNX86.mat"}) {
    questions.inputAnswers = {"100"};
    LoadPath(*Recording(std::string("mat/") + name));
    ASSERT_EQ(trial.NData, 9) << name;
    EXPECT_EQ(trial.Data(4, 1), static_cast<float>(3 * pi / 4));
  }
  for (const char* name : {"testmatrix_7.4_GLNX86.mat", "testmatrix_4.2c_SOL2.mat"}) {
    questions.inputAnswers = {"100"};
    LoadPath(*Recording(std::string("mat/") + name));
    EXPECT_EQ(Rows(), (Frames{{1, 2, 3}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {5, 0, 0}})) << name;
  }
  questions.inputAnswers = {"100"};
  LoadPath(*Recording("mat/teststruct_7.4_GLNX86.mat"));
  EXPECT_EQ(Rows()[0][0], static_cast<float>(std::sqrt(2.0)));
  for (const auto& [name, says] : {std::pair("corrupted_zlib_data.mat", "damaged or cut off"),
                                   std::pair("logical_sparse.mat", "sp_log_5_4 (5 x 4)"),
                                   std::pair("malformed1.mat", "no matrix of numbers"),
                                   std::pair("test3dmatrix_7.4_GLNX86.mat", "test3dmatrix (2 x 3 x 4)"),
                                   std::pair("testcomplex_7.4_GLNX86.mat", "testcomplex (1 x 9)")}) {
    LoadPath(*Recording(std::string("mat/") + name));
    EXPECT_EQ(trial.NData, 0);
    EXPECT_NE(LastBox().find(says), std::string::npos) << LastBox();
  }
}

/// An HDF5 file in the making.
struct Hdf5Writer {
  explicit Hdf5Writer(const std::string& path)
      : file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)) {}
  ~Hdf5Writer() { H5Fclose(file); }
  void Group(const char* name) const {
    H5Gclose(H5Gcreate2(file, name, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  }
  void Add(const char* path, const std::vector<double>& values, hsize_t columns = 1) const {
    const std::array<hsize_t, 2> sizes = {values.size() / columns, columns};
    const hid_t space = H5Screate_simple(2, sizes.data(), nullptr);
    const hid_t dataset =
        H5Dcreate2(file, path, H5T_IEEE_F64LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    H5Dwrite(dataset, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
    H5Dclose(dataset);
    H5Sclose(space);
  }
  void Rate(const char* object, const char* name, double rate) const {
    const hid_t space = H5Screate(H5S_SCALAR);
    const hid_t attribute =
        H5Acreate_by_name(file, object, name, H5T_IEEE_F64LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    H5Awrite(attribute, H5T_NATIVE_DOUBLE, &rate);
    H5Aclose(attribute);
    H5Sclose(space);
  }
  hid_t file;
};

TEST_F(BinaryFormatsTest, Hdf5GroupsOfDatasets) {
  const std::string path = directory.Path("a.h5");
  {
    const Hdf5Writer h5(path);
    h5.Group("/dev");
    h5.Group("/dev/raw");
    h5.Group("/dev/support");
    h5.Rate("/dev", "sampling rate", 500);
    for (const char* name : {"/dev/raw/channel_10", "/dev/raw/channel_2", "/dev/raw/nSeq"}) {
      h5.Add(name, {double(std::string(name).size()), 2, 3});
    }
    h5.Add("/dev/support/mean", {7, 8, 9});
    H5Lcreate_soft("/dev/raw/channel_2", h5.file, "/again", H5P_DEFAULT, H5P_DEFAULT);
    H5Lcreate_external("/etc/passwd", "/", h5.file, "/outside", H5P_DEFAULT, H5P_DEFAULT);
  }
  LoadPath(path);
  EXPECT_EQ(trial.FileTypeCode, 315);
  EXPECT_EQ(Labels(), (Texts{"channel_2", "channel_10"}));
  EXPECT_EQ(trial.Rate, 500.0);
  EXPECT_EQ(Rows(), (Frames{{18, 19}, {2, 2}, {3, 3}}));
  EXPECT_EQ(Told(), "");
  {
    const Hdf5Writer h5(path);
    h5.Add("/matrix", {1, 10, 2, 20, 3, 30}, 2);
    h5.Add("/other", {1, 2});
  }
  questions.inputAnswers = {"50"};
  LoadPath(path);
  EXPECT_EQ(Labels(), (Texts{"matrix 1", "matrix 2"}));
  EXPECT_EQ(Rows(), (Frames{{1, 10}, {2, 20}, {3, 30}}));
  EXPECT_EQ(Told(), "1 dataset of other groups or lengths were not read.\n");
  const std::string bytes = ReadFile(path);
  ExpectCutsAreTold("b.h5", bytes, bytes.size() / 40);
  {  // what nobody wrote takes no room
    const Hdf5Writer h5(path);
    const hsize_t size = hsize_t{1} << 36;
    const hsize_t chunk = 1024;
    const hid_t space = H5Screate_simple(1, &size, nullptr);
    const hid_t plan = H5Pcreate(H5P_DATASET_CREATE);
    H5Pset_chunk(plan, 1, &chunk);
    H5Dclose(H5Dcreate2(h5.file, "/huge", H5T_IEEE_F64LE, space, H5P_DEFAULT, plan, H5P_DEFAULT));
    H5Pclose(plan);
    H5Sclose(space);
  }
  LoadPath(path);
  EXPECT_NE(LastBox().find("/huge counts more values than the file can hold"), std::string::npos)
      << LastBox();
}

TEST_F(BinaryFormatsTest, OpenSignalsFilesAgreeWithTheirTexts) {
  if (!Recording("hdf5")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  // Sums by h5py.
  LoadPath(*Recording("hdf5/gonio_arm_flex.h5"));
  EXPECT_EQ(trial.NData, 18750);
  EXPECT_EQ(trial.Rate, 1000.0);
  EXPECT_EQ(Sum(1), 786837354.0);
  EXPECT_EQ(Sum(2), 550131705.0);
  EXPECT_EQ(trial.Notices, Texts());
  LoadPath(*Recording("hdf5/eda_slow_signal.h5"));
  EXPECT_EQ(Sum(1), 110498362.0);
  EXPECT_EQ(trial.Rate, 100.0);
  const std::vector<float> values = Channel(trial, 1);
  LoadWithDefaults("eda.txt", ReadFile(*Recording("vendor/opensignals_eda_slow_signal.txt")));
  EXPECT_EQ(Channel(trial, trial.NChan), values) << "the same recording as text";
}

}  // namespace
}  // namespace velmora::test
