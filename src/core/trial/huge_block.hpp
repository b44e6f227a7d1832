#pragma once

#include <cstddef>

namespace velmora {

/// One block of raw memory for sample data, aligned to 2 MiB and backed by huge pages where the
/// system grants them: touching fresh 4 KiB pages costs several times the copy that fills them.
/// Small blocks come from the ordinary heap, aligned to a cache line.
class HugeBlock {
 public:
  HugeBlock() = default;
  /// Allocates `bytes` zeroed bytes. Throws std::bad_alloc when the system refuses, or when the
  /// request exceeds the machine's physical memory (an overcommitting kernel would say yes and kill
  /// the program later).
  explicit HugeBlock(std::size_t bytes);
  HugeBlock(HugeBlock&& other) noexcept;
  HugeBlock& operator=(HugeBlock&& other) noexcept;
  HugeBlock(const HugeBlock&) = delete;
  HugeBlock& operator=(const HugeBlock&) = delete;
  ~HugeBlock();

  [[nodiscard]] void* Get() const { return memory_; }
  [[nodiscard]] std::size_t Bytes() const { return bytes_; }

 private:
  void Release() noexcept;

  void* memory_ = nullptr;
  std::size_t bytes_ = 0;
  bool mapped_ = false;
};

}  // namespace velmora
