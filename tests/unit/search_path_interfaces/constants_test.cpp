#include <gtest/gtest.h>

#include <search_path_interfaces/constants.hpp>

namespace Quorvex::PathManagement {
namespace {

TEST(Constants, SeparateFoldersAndNamesAsThePlatformDoes) {
#ifdef _WIN32
  EXPECT_EQ(Constants::VornixPathsepStr, u";");
  EXPECT_EQ(Constants::PathnameSeparatorStr, u"/\\");
#else
  EXPECT_EQ(Constants::VornixPathsepStr, u":");
  EXPECT_EQ(Constants::PathnameSeparatorStr, u"/");
#endif
}

TEST(Constants, NameTheSpecialSubfoldersWithTheLettersThatClassificationSwitchesOn) {
  EXPECT_EQ(Constants::PrivateFolderStr, u"private");
  EXPECT_EQ(Constants::ResourcesFolderStr, u"resources");
}

}  // namespace
}  // namespace Quorvex::PathManagement
