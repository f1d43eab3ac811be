#include "wanted_name.hpp"

#include <gmock/gmock.h>

namespace vornixpath {
namespace {

using Quorvex::PathManagement::detail::SearchTarget;

NameMatch MatchOf(const std::u16string& fileName, const std::u16string& baseName, bool ignoringCase = false) {
  const std::vector<std::u16string> extensions = {u".vnx", u".h"};
  return WantedName(SearchTarget(baseName, extensions), ignoringCase).MatchOf(fileName);
}

TEST(WantedName, IsExactUnderEveryExtensionLookedFor) {
  EXPECT_EQ(MatchOf(u"greet.vnx", u"greet"), NameMatch::Exact);
  EXPECT_EQ(MatchOf(u"greet.h", u"greet"), NameMatch::Exact);
}

TEST(WantedName, LeavesOutTheFoldersWrittenInFrontOfIt) {
  EXPECT_EQ(MatchOf(u"greet.vnx", u"pkg/Cls/greet"), NameMatch::Exact);
}

TEST(WantedName, IsLikeANameThatDiffersInLetterCaseOnly) {
  EXPECT_EQ(MatchOf(u"Greet.VNX", u"greet"), NameMatch::OtherLetterCase);
  EXPECT_EQ(MatchOf(u"STRASSE.vnx", u"stra\u00DFe"), NameMatch::OtherLetterCase);
}

TEST(WantedName, IsLikeANameWithAnotherExtensionOrNone) {
  EXPECT_EQ(MatchOf(u"greet.txt", u"greet"), NameMatch::OtherExtension);
  EXPECT_EQ(MatchOf(u"greet.tar.gz", u"greet"), NameMatch::OtherExtension);
  EXPECT_EQ(MatchOf(u"greet", u"greet"), NameMatch::OtherExtension);
}

TEST(WantedName, IsUnlikeALongerOrShorterName) {
  EXPECT_EQ(MatchOf(u"greeting.vnx", u"greet"), NameMatch::None);
  EXPECT_EQ(MatchOf(u"gree.vnx", u"greet"), NameMatch::None);
  EXPECT_EQ(MatchOf(u"Greet.txt", u"greet"), NameMatch::None);
}

TEST(WantedName, TakesAnyLetterCaseForExactWhenItMakesNoDifference) {
  EXPECT_EQ(MatchOf(u"GREET.Vnx", u"greet", true), NameMatch::Exact);
  EXPECT_EQ(MatchOf(u"Greet.txt", u"greet", true), NameMatch::OtherExtension);
}

TEST(WantedName, IsLikeNothingWhenItIsEmpty) {
  EXPECT_EQ(MatchOf(u".vnx", u""), NameMatch::None);
  EXPECT_EQ(MatchOf(u".vnx", u"pkg/"), NameMatch::None);
}

}  // namespace
}  // namespace vornixpath
