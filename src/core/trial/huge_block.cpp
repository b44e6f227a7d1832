#include "core/trial/huge_block.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kCacheLine = 64;

std::size_t PhysicalMemory() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGESIZE);
  if (pages <= 0 || pageSize <= 0) {
    return SIZE_MAX;
  }
  return static_cast<std::size_t>(pages) * static_cast<std::size_t>(pageSize);
}

// Maps more than is wanted and gives the ends back, since mmap alone aligns to 4 KiB.
void* MapAligned(std::size_t bytes) {
  const std::size_t wide = bytes + kHugePage;
  void* raw = mmap(nullptr, wide, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (raw == MAP_FAILED) {
    throw std::bad_alloc();
  }
  const auto address = reinterpret_cast<std::uintptr_t>(raw);
  const std::size_t head = (kHugePage - address % kHugePage) % kHugePage;
  char* aligned = static_cast<char*>(raw) + head;
  if (head > 0) {
    munmap(raw, head);
  }
  if (const std::size_t tail = kHugePage - head; tail > 0) {
    munmap(aligned + bytes, tail);
  }
  madvise(aligned, bytes, MADV_HUGEPAGE);
  return aligned;
}

}  // namespace

HugeBlock::HugeBlock(std::size_t bytes) {
  if (bytes == 0) {
    return;
  }
  if (bytes > PhysicalMemory()) {
    throw std::bad_alloc();
  }
  if (bytes < kHugePage) {
    bytes_ = (bytes + kCacheLine - 1) / kCacheLine * kCacheLine;
    memory_ = ::operator new (bytes_, std::align_val_t{kCacheLine});
    std::memset(memory_, 0, bytes_);
    return;
  }
  bytes_ = (bytes + kHugePage - 1) / kHugePage * kHugePage;
  memory_ = MapAligned(bytes_);
  mapped_ = true;
}

HugeBlock::HugeBlock(HugeBlock&& other) noexcept {
  *this = std::move(other);
}

HugeBlock& HugeBlock::operator=(HugeBlock&& other) noexcept {
  if (this != &other) {
    Release();
    memory_ = std::exchange(other.memory_, nullptr);
    bytes_ = std::exchange(other.bytes_, 0);
    mapped_ = std::exchange(other.mapped_, false);
  }
  return *this;
}

HugeBlock::~HugeBlock() {
  Release();
}

void HugeBlock::Release() noexcept {
  if (memory_ == nullptr) {
    return;
  }
  if (mapped_) {
    munmap(memory_, bytes_);
  } else {
    ::operator delete (memory_, std::align_val_t{kCacheLine});
  }
  memory_ = nullptr;
  bytes_ = 0;
}

}  // namespace velmora
