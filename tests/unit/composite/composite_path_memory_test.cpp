#include <gtest/gtest.h>

#include <support/allocations.hpp>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::Allocations;

constexpr std::size_t kMany = 1'000;

PathPtrs ManyComponents() {
  PathPtrs components;
  for (std::size_t number = 0; number < kMany; ++number) {
    components.push_back(
        support::APath().With(support::Folder("/" + std::to_string(number)).WithClass(support::Folder("Cls"))).Build());
  }
  return components;
}

// Bytes asked for when the list of method entries of `path` is made.
std::size_t BytesForListOf(const IPath& path) {
  const Allocations allocations;
  EXPECT_EQ(path.GetMethodEntries().size(), kMany);
  return allocations.GetBytes();
}

// To make room for one component after the other would take eight million.
constexpr std::size_t kFewBytes = 1'000'000;

TEST(ConcatenatedPath, CopiesNoListAnewForEachOfManyComponents) {
  EXPECT_LT(BytesForListOf(ConcatenatedPath(ManyComponents())), kFewBytes);
}

TEST(DeduplicatedPath, CopiesNoListAnewForEachOfManyComponents) {
  EXPECT_LT(BytesForListOf(DeduplicatedPath(ManyComponents())), kFewBytes);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
