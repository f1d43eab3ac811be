#include <gtest/gtest.h>

#include <iterator>
#include <search_path_interfaces/search_scope.hpp>
#include <type_traits>

namespace Quorvex::PathManagement {
namespace {

constexpr PathEntryType kKinds[] = {PathEntryType::Package, PathEntryType::Resources};

TEST(SearchScope, IsTwoPointersThatCopyTrivially) {
  EXPECT_TRUE(std::is_trivially_copyable_v<SearchScope>);
  EXPECT_EQ(sizeof(SearchScope), 2 * sizeof(void*));
}

TEST(SearchScope, LooksAtTheGivenArrayWithoutCopyingIt) {
  const SearchScope scope(std::begin(kKinds), std::end(kKinds));
  const SearchScope copy = scope;

  EXPECT_EQ(scope.begin(), std::begin(kKinds));
  EXPECT_EQ(scope.end(), std::end(kKinds));
  EXPECT_EQ(copy.begin(), std::begin(kKinds));
  EXPECT_EQ(copy.end(), std::end(kKinds));
}

TEST(SearchScope, ContainsExactlyTheKindsListed) {
  constexpr SearchScope scope(std::begin(kKinds), std::end(kKinds));

  EXPECT_TRUE(scope.Contains(PathEntryType::Package));
  EXPECT_TRUE(scope.Contains(PathEntryType::Resources));
  EXPECT_FALSE(scope.Contains(PathEntryType::Main));
  EXPECT_FALSE(scope.Contains(PathEntryType::Class));
  EXPECT_FALSE(scope.Contains(PathEntryType::Private));
  EXPECT_FALSE(scope.Contains(PathEntryType::Auxiliary));
}

TEST(SearchScope, OfNoKindsContainsNothing) {
  constexpr SearchScope scope(nullptr, nullptr);

  EXPECT_FALSE(scope.Contains(PathEntryType::Main));
}

}  // namespace
}  // namespace Quorvex::PathManagement
