#include "folder_names.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

using Names = std::vector<std::u16string>;

Names FullNamesOf(const FolderNames& names) {
  Names all;
  for (std::size_t i = 0; i < names.size(); ++i) {
    all.push_back(names.GetView().BaseName(i).ToString() + names.GetView().Extension(i).ToString());
  }
  return all;
}

TEST(FolderNames, StandInTheOrderOfTheirCodeUnits) {
  // U+FF21 sorts before the surrogates of U+10400 by code point, after them by code unit.
  const FolderNames names({u"b", u"\uFF21", u"a.y", u"B", u"\U00010400", u"a", u"a.x", u"a-", u"Z"});

  EXPECT_THAT(FullNamesOf(names), ElementsAre(u"B", u"Z", u"a", u"a-", u"a.x", u"a.y", u"b", u"\U00010400", u"\uFF21"));
}

TEST(FolderNames, AnswerAlikeHoweverTheirTextIsPacked) {
  // One name with a character beyond a byte has all of them packed wide.
  const Names common = {u"a.b", u"\u00FFz.\u00E9", u"longer than the rest.extension", u"", u"a"};
  Names withAnother = common;
  withAnother.push_back(u"\u0100");
  const FolderNames narrow(common);
  const FolderNames wide(withAnother);

  ASSERT_EQ(narrow.size(), 5U);
  ASSERT_EQ(wide.size(), 6U);
  for (std::size_t i = 0; i < narrow.size(); ++i) {
    const TextPiece name = narrow.GetView().FullName(i);
    EXPECT_EQ(name.ToString(), wide.GetView().FullName(i).ToString());
    EXPECT_TRUE(wide.GetView().FullName(i) == name.ToString());
    EXPECT_TRUE(name == name.ToString());
    EXPECT_FALSE(name == name.ToString() + u"x");
    EXPECT_EQ(narrow.GetView().BaseName(i).ToString(), wide.GetView().BaseName(i).ToString());
    EXPECT_THAT(narrow.Find(name.ToString(), u""), Optional(i));
    EXPECT_THAT(wide.Find(u"", name.ToString()), Optional(i));
  }
  EXPECT_EQ(narrow.Find(u"\u0161", u""), std::nullopt) << "it differs from 'a' beyond a byte only";
}

TEST(FolderNames, HoldTheSameWhenTheirNamesAreTheSame) {
  const FolderNames names({u"b.x", u"a"});

  EXPECT_TRUE(names.HoldsTheSameAs(FolderNames({u"a", u"b.x"})));
  EXPECT_FALSE(names.HoldsTheSameAs(FolderNames({u"a", u"b.y"})));
  EXPECT_FALSE(names.HoldsTheSameAs(FolderNames({u"a"})));
  EXPECT_FALSE(names.HoldsTheSameAs(FolderNames({u"ab", u".x"})));
  EXPECT_FALSE(FolderNames({u"aa"}).HoldsTheSameAs(FolderNames({u"\u6161"})));
}

TEST(FolderNames, CountARepeatOnce) {
  const FolderNames names({u"f.x", u"g", u"f.x", u"f.x"});

  EXPECT_THAT(FullNamesOf(names), ElementsAre(u"f.x", u"g"));
}

TEST(FolderNames, AreCutAtTheLastDotUnlessItComesFirst) {
  const FolderNames names({u".hidden", u"a.tar.gz", u"end.", u"plain", u".rc.old"});

  Names baseNames;
  Names extensions;
  for (std::size_t i = 0; i < names.size(); ++i) {
    baseNames.push_back(names.GetView().BaseName(i).ToString());
    extensions.push_back(names.GetView().Extension(i).ToString());
  }
  EXPECT_THAT(baseNames, ElementsAre(u".hidden", u".rc", u"a.tar", u"end", u"plain"));
  EXPECT_THAT(extensions, ElementsAre(u"", u".old", u".gz", u".", u""));
}

TEST(FolderNames, AreFoundWhereverTheCallerCutsTheName) {
  const FolderNames names({u".hidden", u"a", u"a.b", u"a.b.c", u"a.bc", u"ab", u"\U00010400.x"});

  const Names sorted = FullNamesOf(names);
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const std::u16string_view name = sorted[i];
    for (std::size_t cut = 0; cut <= name.size(); ++cut) {
      EXPECT_THAT(names.Find(name.substr(0, cut), name.substr(cut)), Optional(i)) << "cut at " << cut;
    }
  }
}

TEST(FolderNames, DoNotHoldPartsOfNamesNorLongerOnes) {
  const FolderNames names({u"a.b", u"abc.d"});

  EXPECT_EQ(names.Find(u"a", u""), std::nullopt);
  EXPECT_EQ(names.Find(u"a.", u""), std::nullopt);
  EXPECT_EQ(names.Find(u"a", u".bc"), std::nullopt);
  EXPECT_EQ(names.Find(u"a.b", u"c"), std::nullopt);
  EXPECT_EQ(names.Find(u"A", u".b"), std::nullopt);
  EXPECT_EQ(names.Find(u"", u""), std::nullopt);
  EXPECT_EQ(names.Find(u"zzz", u".zzz"), std::nullopt);
}

TEST(FolderNames, FindNothingInAnEmptyFolder) {
  const FolderNames names(std::vector<std::u16string>{});

  EXPECT_EQ(names.size(), 0U);
  EXPECT_EQ(names.Find(u"a", u""), std::nullopt);
  EXPECT_THAT(names.FindIgnoringCase(u"a", u""), IsEmpty());
}

TEST(FolderNames, FindAllLetterCasesInNameOrder) {
  const FolderNames names({u"foo.x", u"FOO.X", u"Foo.x", u"foo.y", u"fo", u"foo.X"});

  Names found;
  for (const std::size_t index : names.FindIgnoringCase(u"fOO", u".x")) found.push_back(FullNamesOf(names)[index]);

  EXPECT_THAT(found, ElementsAre(u"FOO.X", u"Foo.x", u"foo.X", u"foo.x"));
}

TEST(FolderNames, IgnoreCaseWhereverTheCallerCutsTheName) {
  const FolderNames names({u"stra\u00DFe.\U00010400b"});
  const std::u16string wanted = u"STRASSE.\U00010428B";

  for (std::size_t cut = 0; cut <= wanted.size(); ++cut) {
    EXPECT_THAT(names.FindIgnoringCase(wanted.substr(0, cut), wanted.substr(cut)), ElementsAre(0U)) << "cut at " << cut;
  }
}

TEST(FolderNames, KeepStrayBytesApart) {
  const std::u16string first = {u'a', 0xDC80};
  const std::u16string second = {u'a', 0xDC81};
  const FolderNames names({second, first});

  EXPECT_THAT(names.Find(first, u""), Optional(0U));
  EXPECT_THAT(names.Find(second, u""), Optional(1U));
  EXPECT_THAT(names.FindIgnoringCase(std::u16string{u'A', 0xDC81}, u""), ElementsAre(1U));
}

TEST(FolderNames, HoldAHundredThousandNamesWithAsManyExtensions) {
  constexpr std::size_t kCount = 100'000;
  const auto nameOf = [](std::size_t number) {
    std::u16string digits;
    for (const char digit : std::to_string(kCount + number)) digits.push_back(static_cast<char16_t>(digit));
    return u"File" + digits + u".Ext" + digits;
  };
  Names all;
  for (std::size_t i = 0; i < kCount; ++i) all.push_back(nameOf(i));
  std::shuffle(all.begin(), all.end(), std::mt19937(7));

  const FolderNames names(std::move(all));

  ASSERT_EQ(names.size(), kCount);
  for (std::size_t i = 0; i < kCount; i += 997) {
    const std::u16string name = nameOf(i);
    ASSERT_THAT(names.Find(name, u""), Optional(i));
    ASSERT_EQ(names.GetView().Extension(i).ToString(), name.substr(10));
  }
  EXPECT_THAT(names.FindIgnoringCase(u"fILE100042", u".eXT100042"), ElementsAre(42U));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
