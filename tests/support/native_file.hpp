#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "import/load_file.hpp"
#include "support/command_test.hpp"

namespace velmora::test {

inline constexpr std::size_t kSamplesAt = 4386;

template <typename T>
void Put(std::string& bytes, std::size_t offset, T value) {
  bytes.replace(offset, sizeof value, reinterpret_cast<const char*>(&value), sizeof value);
}
inline void PutText(std::string& bytes, std::size_t offset, std::string_view text) {
  bytes.replace(offset, text.size(), text);
}
template <typename T>
T Get(const std::string& bytes, std::size_t offset) {
  T value{};
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// A file laid out by hand: channels x samples of c * 1000 + i, times i / 50.
inline std::string FileByHand(int channels, int samples) {
  std::string bytes(kSamplesAt, '\0');
  bytes.replace(0, 80, std::string(80, ' '));
  PutText(bytes, 0, "Velmora2 binary file. Version 1.00 (build 001)");
  bytes.replace(80, 100, std::string(100, ' '));
  PutText(bytes, 80, "42 squat jumps");
  Put<std::int16_t>(bytes, 180, static_cast<std::int16_t>(channels));
  Put<std::int32_t>(bytes, 182, samples);
  Put<double>(bytes, 186, 50.0);
  Put<double>(bytes, 194, 1.5);
  for (std::size_t c = 0; c <= 64; ++c) {
    Put<std::int16_t>(bytes, 202 + 2 * c, c % 2 == 0 ? -1 : 0);
    Put<std::int16_t>(bytes, 332 + 2 * c, static_cast<std::int16_t>(c + 3));
    Put<double>(bytes, 462 + 8 * c, 50.0 + static_cast<double>(c));
    Put<double>(bytes, 982 + 8 * c, 2.0 * static_cast<double>(c));
    Put<double>(bytes, 1502 + 8 * c, -0.5 * static_cast<double>(c));
    Put<std::int16_t>(bytes, 2022 + 2 * c, static_cast<std::int16_t>(c));
    Put<std::int16_t>(bytes, 2152 + 2 * c, static_cast<std::int16_t>(c == 2 ? 0 : 7));
    bytes.replace(2282 + 10 * c, 10, "label " + std::to_string(c) + std::string(c < 10 ? 3 : 2, ' '));
    bytes.replace(2932 + 10 * c, 10, "\xB0/s       ");
  }
  for (std::size_t k = 0; k < 228 + 328 + 248; ++k) {
    bytes[3582 + k] = static_cast<char>('a' + k % 26);
  }
  Put<std::int16_t>(bytes, 3582 + 224, 0);
  for (int c = 0; c <= channels; ++c) {
    for (int i = 1; i <= samples; ++i) {
      const float value = c == 0 ? static_cast<float>(i - 1) / 50.0F : static_cast<float>(c * 1000 + i);
      bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
  }
  return bytes;
}

/// Loads native binary files given as bytes, and saves the trial as one.
struct NativeFileTest : FileTest {
  void Load(const std::string& bytes) {
    WriteFile(directory.Path("trial.vmb"), bytes);
    LoadPath(directory.Path("trial.vmb"));
  }
  /// By the reader alone, without what follows a load.
  void LoadPath(const std::string& path) {
    trial.FileName = path;
    questions.boxes.clear();
    LoadFile(workbench);
  }
  std::vector<std::string> BoxTitles() const {
    std::vector<std::string> titles;
    for (const Box& box : questions.boxes) {
      titles.push_back(box.title);
    }
    return titles;
  }
};

}  // namespace velmora::test
