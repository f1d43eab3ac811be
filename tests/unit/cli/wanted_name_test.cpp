#include "wanted_name.hpp"

#include <gmock/gmock.h>

namespace vornixpath {
namespace {

using Quorvex::PathManagement::detail::SearchTarget;

Likeness LikenessOf(const std::u16string& fileName, const std::u16string& baseName, bool ignoringCase = false) {
  const std::vector<std::u16string> extensions = {u".vnx", u".h"};
  return WantedName(SearchTarget(baseName, extensions), ignoringCase).LikenessOf(fileName);
}

TEST(WantedName, IsExactUnderEveryExtensionLookedFor) {
  EXPECT_EQ(LikenessOf(u"greet.vnx", u"greet"), Likeness::Exact);
  EXPECT_EQ(LikenessOf(u"greet.h", u"greet"), Likeness::Exact);
}

TEST(WantedName, LeavesOutTheFoldersWrittenInFrontOfIt) {
  EXPECT_EQ(LikenessOf(u"greet.vnx", u"pkg/Cls/greet"), Likeness::Exact);
}

TEST(WantedName, IsLikeANameThatDiffersInLetterCaseOnly) {
  EXPECT_EQ(LikenessOf(u"Greet.VNX", u"greet"), Likeness::OtherLetterCase);
  EXPECT_EQ(LikenessOf(u"STRASSE.vnx", u"stra\u00DFe"), Likeness::OtherLetterCase);
}

TEST(WantedName, IsLikeANameWithAnotherExtensionOrNone) {
  EXPECT_EQ(LikenessOf(u"greet.txt", u"greet"), Likeness::OtherExtension);
  EXPECT_EQ(LikenessOf(u"greet.tar.gz", u"greet"), Likeness::OtherExtension);
  EXPECT_EQ(LikenessOf(u"greet", u"greet"), Likeness::OtherExtension);
}

TEST(WantedName, IsUnlikeALongerOrShorterName) {
  EXPECT_EQ(LikenessOf(u"greeting.vnx", u"greet"), Likeness::None);
  EXPECT_EQ(LikenessOf(u"gree.vnx", u"greet"), Likeness::None);
  EXPECT_EQ(LikenessOf(u"Greet.txt", u"greet"), Likeness::None);
}

TEST(WantedName, TakesAnyLetterCaseForExactWhenItMakesNoDifference) {
  EXPECT_EQ(LikenessOf(u"GREET.Vnx", u"greet", true), Likeness::Exact);
  EXPECT_EQ(LikenessOf(u"Greet.txt", u"greet", true), Likeness::OtherExtension);
}

TEST(WantedName, IsLikeNothingWhenItIsEmpty) {
  EXPECT_EQ(LikenessOf(u".vnx", u""), Likeness::None);
  EXPECT_EQ(LikenessOf(u".vnx", u"pkg/"), Likeness::None);
}

}  // namespace
}  // namespace vornixpath
