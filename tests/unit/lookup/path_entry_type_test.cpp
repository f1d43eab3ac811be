#include <gtest/gtest.h>

#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>

namespace Quorvex::PathManagement {
namespace {

TEST(GetPathEntryTypeFromBaseName, IsPackageForAnyNameThatBeginsWithPlus) {
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"+pkg"), PathEntryType::Package);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"+"), PathEntryType::Package);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"+@Cls"), PathEntryType::Package);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"+private"), PathEntryType::Package);
}

TEST(GetPathEntryTypeFromBaseName, IsClassForAnyNameThatBeginsWithAt) {
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"@Cls"), PathEntryType::Class);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"@"), PathEntryType::Class);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"@+pkg"), PathEntryType::Class);
}

TEST(GetPathEntryTypeFromBaseName, IsPrivateForExactlyThePrivateFoldersName) {
  EXPECT_EQ(GetPathEntryTypeFromBaseName(Constants::PrivateFolderStr), PathEntryType::Private);
}

TEST(GetPathEntryTypeFromBaseName, IsResourcesForExactlyTheResourcesFoldersName) {
  EXPECT_EQ(GetPathEntryTypeFromBaseName(Constants::ResourcesFolderStr), PathEntryType::Resources);
}

TEST(GetPathEntryTypeFromBaseName, IsMainForNamesThatOnlyResembleThose) {
  for (const std::u16string& name : {Constants::PrivateFolderStr, Constants::ResourcesFolderStr}) {
    EXPECT_EQ(GetPathEntryTypeFromBaseName(name + u"s"), PathEntryType::Main);
    EXPECT_EQ(GetPathEntryTypeFromBaseName(name.substr(0, name.size() - 1)), PathEntryType::Main);
    EXPECT_EQ(GetPathEntryTypeFromBaseName(u" " + name), PathEntryType::Main);
    EXPECT_EQ(GetPathEntryTypeFromBaseName(name + u'\0'), PathEntryType::Main);
  }
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"p"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"r"), PathEntryType::Main);
}

TEST(GetPathEntryTypeFromBaseName, TellsLetterCaseApart) {
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"Private"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"privatE"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"PRIVATE"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"Resources"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"resourceS"), PathEntryType::Main);
}

TEST(GetPathEntryTypeFromBaseName, IsMainForEverythingElse) {
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u""), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"a"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"a+b"), PathEntryType::Main);
  EXPECT_EQ(GetPathEntryTypeFromBaseName(u"a@b"), PathEntryType::Main);
}

}  // namespace
}  // namespace Quorvex::PathManagement
