#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <search_path_utilities/lookup.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using testing::ElementsAre;

std::vector<PathEntryType> KindsIn(SearchScope scope) { return {scope.begin(), scope.end()}; }

TEST(MainScope, IsPlainFoldersOnly) { EXPECT_THAT(KindsIn(MainScope), ElementsAre(PathEntryType::Main)); }

TEST(VisibleScope, IsEveryKindInOrderButResources) {
  EXPECT_THAT(KindsIn(VisibleScope), ElementsAre(PathEntryType::Main, PathEntryType::Package, PathEntryType::Class,
                                                 PathEntryType::Private, PathEntryType::Auxiliary));
}

}  // namespace
}  // namespace Quorvex::PathManagement
