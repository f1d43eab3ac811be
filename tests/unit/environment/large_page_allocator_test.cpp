#include "large_page_allocator.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <numeric>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

bool IsAligned(const void* memory, std::size_t alignment) {
  return reinterpret_cast<std::uintptr_t>(memory) % alignment == 0;
}

TEST(LargePageAllocator, ServesContainersOfAnySize) {
  for (const std::size_t count : {std::size_t{1}, std::size_t{1'000}, std::size_t{3'000'000}}) {
    std::vector<std::uint64_t, LargePageAllocator<std::uint64_t>> values(count);
    std::iota(values.begin(), values.end(), 1U);
    values.push_back(count + 1);
    EXPECT_EQ(values.front(), 1U);
    EXPECT_EQ(values.back(), count + 1);
    EXPECT_EQ(std::accumulate(values.begin(), values.end(), std::uint64_t{0}), (count + 1) * (count + 2) / 2);
  }
}

TEST(LargePageAllocator, AlignsLargeTablesToLargePagesAndLeavesSmallOnesAlone) {
  LargePageAllocator<std::uint64_t> allocator;
  constexpr std::size_t large = std::size_t{2} << 20U;

  std::uint64_t* const table = allocator.allocate(large);
  EXPECT_TRUE(IsAligned(table, large));
  allocator.deallocate(table, large);

  struct alignas(64) Line {
    char bytes[64];
  };
  LargePageAllocator<Line> ofLines(allocator);
  Line* const line = ofLines.allocate(1);
  EXPECT_TRUE(IsAligned(line, alignof(Line)));
  ofLines.deallocate(line, 1);
}

TEST(LargePageAllocator, RefusesWhatNoMemoryCouldHold) {
  LargePageAllocator<std::uint64_t> allocator;

  EXPECT_THROW(static_cast<void>(allocator.allocate(std::numeric_limits<std::size_t>::max() / 4)),
               std::bad_array_new_length);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
