// Memory blocks behind LqBasicString, and its growth rules: the slack that each allocation adds
// under the string's policy. The one home of both, so that every string grows alike.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace lq::detail {

// The growth policy bits of a string's flags, and their two values.
constexpr uint32_t kGrowSmallBlock = 32u;
constexpr uint32_t kGrowLargeBlock = 33u;
constexpr uint32_t kGrowthMask = kGrowSmallBlock | kGrowLargeBlock;
// The spare units each allocation adds under those policies.
constexpr uint32_t kSmallBlockSlack = 255u;
constexpr uint32_t kLargeBlockSlack = 65535u;

// Spare units of each allocation under the policy bits of `flags`.
inline uint32_t SlackOf(uint32_t flags) {
  switch (flags & kGrowthMask) {
    case kGrowSmallBlock: return kSmallBlockSlack;
    case kGrowLargeBlock: return kLargeBlockSlack;
    default: return 0u;
  }
}

// Writes into a string's block in bulk (text/detail/StringWriter.h).
template <typename T, typename Traits>
class StringWriter;

template <typename T>
T* AllocateUnits(std::size_t units) {
  void* block = std::malloc(units * sizeof(T));
  if (!block) throw std::bad_alloc();
  return static_cast<T*>(block);
}

// Grows or shrinks a block, keeping its first units. The system may move large blocks by remapping
// pages instead of copying them, which keeps long appends linear.
template <typename T>
T* ReallocateUnits(T* block, std::size_t units) {
  void* grown = std::realloc(block, units * sizeof(T));
  if (!grown) throw std::bad_alloc();
  return static_cast<T*>(grown);
}

template <typename T>
void FreeUnits(T* block) {
  std::free(block);
}

template <typename T>
void CopyUnits(T* to, const T* from, std::size_t count) {
  if (count) std::memcpy(to, from, count * sizeof(T));
}

}  // namespace lq::detail
