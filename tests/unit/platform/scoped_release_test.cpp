#include <gtest/gtest.h>

#include <foundation/core/scoped_release.hpp>
#include <type_traits>
#include <utility>

namespace foundation::core {
namespace {

ScopedRelease Counting(int& count) {
  return ScopedRelease([&count] { ++count; });
}

TEST(ScopedRelease, ReleasesWhenItGoes) {
  int count = 0;
  { const ScopedRelease held = Counting(count); }
  EXPECT_EQ(count, 1);
}

TEST(ScopedRelease, ReleasesOnceWhenAskedBefore) {
  int count = 0;
  {
    ScopedRelease held = Counting(count);
    held.Release();
    held.Release();
    EXPECT_EQ(count, 1);
  }
  EXPECT_EQ(count, 1);
}

TEST(ScopedRelease, HandsItsDutyOnWhenMoved) {
  int count = 0;
  ScopedRelease outer;
  {
    ScopedRelease inner = Counting(count);
    ScopedRelease moved = std::move(inner);
    outer = std::move(moved);
  }
  EXPECT_EQ(count, 0);
  outer.Release();
  EXPECT_EQ(count, 1);
}

TEST(ScopedRelease, EndsWhatItHeldWhenAnotherIsMovedIn) {
  int first = 0;
  int second = 0;
  ScopedRelease held = Counting(first);

  held = Counting(second);

  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
}

TEST(ScopedRelease, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<ScopedRelease>);
  EXPECT_FALSE(std::is_copy_assignable_v<ScopedRelease>);
}

}  // namespace
}  // namespace foundation::core
