#include "core/trial/transpose.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace velmora {
namespace {

// Every shape and alignment against the obvious loop.
TEST(Transpose, EqualsTheObviousLoop) {
  std::vector<float> rows(70 * 100);
  for (std::size_t k = 0; k < rows.size(); ++k) {
    rows[k] = static_cast<float>(k);
  }
  for (int width = 1; width <= 65; width += width < 10 ? 1 : 11) {
    for (const int samples : {1, 3, 16, 33, 50}) {
      for (const int shift : {0, 1, 4}) {
        alignas(64) float frames[66 * 50 + 4] = {};
        RowsToFrames(rows.data(), 100, width, samples, frames + shift, width);
        alignas(64) float cached[66 * 50 + 4] = {};
        RowsToFramesInCaches(rows.data(), 100, width, samples, cached + shift, width);
        ASSERT_TRUE(std::equal(std::begin(frames), std::end(frames), std::begin(cached)));
        std::vector<float> back(65 * 64, -1.0F);
        FramesToRows(frames + shift, width, width, samples, back.data(), 64);
        for (int c = 0; c < width; ++c) {
          for (int i = 0; i < samples; ++i) {
            ASSERT_EQ(frames[shift + i * width + c], rows[static_cast<std::size_t>(c * 100 + i)]);
            ASSERT_EQ(back[static_cast<std::size_t>(c * 64 + i)],
                      rows[static_cast<std::size_t>(c * 100 + i)]);
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace velmora
