#include <gtest/gtest.h>

#include <cstdint>
#include <search_path_interfaces/filename_matching_policy.hpp>
#include <search_path_interfaces/path_entry_type.hpp>
#include <search_path_interfaces/position.hpp>
#include <type_traits>

namespace Quorvex::PathManagement {
namespace {

template <class Enumeration>
constexpr std::uint32_t ValueOf(Enumeration value) {
  static_assert(std::is_same_v<std::underlying_type_t<Enumeration>, std::uint32_t>);
  return static_cast<std::uint32_t>(value);
}

TEST(PathEntryType, KeepsTheValuesThatScopesAreMadeOf) {
  EXPECT_EQ(ValueOf(PathEntryType::Main), 0U);
  EXPECT_EQ(ValueOf(PathEntryType::Package), 1U);
  EXPECT_EQ(ValueOf(PathEntryType::Class), 2U);
  EXPECT_EQ(ValueOf(PathEntryType::Private), 3U);
  EXPECT_EQ(ValueOf(PathEntryType::Auxiliary), 4U);
  EXPECT_EQ(ValueOf(PathEntryType::Resources), 5U);
}

TEST(FilenameMatchingPolicy, HasNativeComparisonAsValueTwo) {
  EXPECT_EQ(ValueOf(FilenameMatchingPolicy::CaseSensitive), 0U);
  EXPECT_EQ(ValueOf(FilenameMatchingPolicy::CaseInsensitive), 1U);
  EXPECT_EQ(ValueOf(FilenameMatchingPolicy::Native), 2U);
}

TEST(Position, HasTheBeginningAsValueZero) {
  EXPECT_EQ(ValueOf(Position::Beginning), 0U);
  EXPECT_NE(ValueOf(Position::End), 0U);
}

}  // namespace
}  // namespace Quorvex::PathManagement
