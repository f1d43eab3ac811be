#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/random_source.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using support::RandomSource;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::u16string>;

const std::u16string& PathSeparators() {
  static const std::u16string separators = u";" + Constants::VornixPathsepStr;
  return separators;
}

TEST(SplitVornixPath, OfAnEmptyTextIsEmpty) { EXPECT_THAT(SplitVornixPath(u""), IsEmpty()); }

TEST(SplitVornixPath, OfSeparatorsOnlyIsEmpty) {
  EXPECT_THAT(SplitVornixPath(u";"), IsEmpty());
  EXPECT_THAT(SplitVornixPath(PathSeparators()), IsEmpty());
  EXPECT_THAT(SplitVornixPath(PathSeparators() + PathSeparators()), IsEmpty());
}

TEST(SplitVornixPath, OfOneFolderIsThatFolder) { EXPECT_THAT(SplitVornixPath(u"/a/b"), ElementsAre(u"/a/b")); }

TEST(SplitVornixPath, SeparatesAtSemicolonsOnEveryPlatform) {
  EXPECT_THAT(SplitVornixPath(u"/a;/b"), ElementsAre(u"/a", u"/b"));
}

TEST(SplitVornixPath, SeparatesAtEachOfThePlatformsSeparators) {
  for (const char16_t separator : Constants::VornixPathsepStr) {
    EXPECT_THAT(SplitVornixPath(std::u16string(u"/a") + separator + u"/b"), ElementsAre(u"/a", u"/b"));
  }
}

TEST(SplitVornixPath, GivesNoEmptyElementForSeparatorsBeforeBetweenAndAfter) {
  EXPECT_THAT(SplitVornixPath(u";;/a;;/b;"), ElementsAre(u"/a", u"/b"));
  EXPECT_THAT(SplitVornixPath(PathSeparators() + u"/a" + PathSeparators() + u"/b" + PathSeparators()),
              ElementsAre(u"/a", u"/b"));
}

TEST(SplitVornixPath, KeepsTheOrderAndTheRepeats) {
  EXPECT_THAT(SplitVornixPath(u"/b;/a;/b"), ElementsAre(u"/b", u"/a", u"/b"));
}

TEST(SplitVornixPath, KeepsBlanksAsPartOfTheName) {
  EXPECT_THAT(SplitVornixPath(u" /a b\t; ;\n/c "), ElementsAre(u" /a b\t", u" ", u"\n/c "));
}

TEST(SplitVornixPath, KnowsNeitherQuotesNorEscapes) {
  EXPECT_THAT(SplitVornixPath(u"\"/a;b\""), ElementsAre(u"\"/a", u"b\""));
  EXPECT_THAT(SplitVornixPath(u"/a\\;b"), ElementsAre(u"/a\\", u"b"));
  EXPECT_THAT(SplitVornixPath(u"'/a;b'"), ElementsAre(u"'/a", u"b'"));
}

TEST(SplitVornixPath, SplitsAnIdentifierLikeAnyOtherText) {
  EXPECT_THAT(SplitVornixPath(u"memory/a;b"), ElementsAre(u"memory/a", u"b"));

  const bool separatesAtColons = Constants::VornixPathsepStr.find(u':') != std::u16string::npos;
  EXPECT_EQ(SplitVornixPath(u"file:///a"), separatesAtColons ? Texts({u"file", u"///a"}) : Texts({u"file:///a"}));
}

TEST(SplitVornixPath, TakesEveryOtherCharacterAsItIs) {
  const std::u16string strange(u"/\0\u00E9\xDCFF\xD83D\xDE00,.|", 10);

  EXPECT_THAT(SplitVornixPath(strange + u";" + strange), ElementsAre(strange, strange));
}

/// Runs of what is no separator, collected character by character.
Texts SplitLiterally(const std::u16string& text) {
  Texts parts;
  bool isInside = false;
  for (const char16_t unit : text) {
    const bool separates = PathSeparators().find(unit) != std::u16string::npos;
    if (!separates && !isInside) parts.emplace_back();
    if (!separates) parts.back().push_back(unit);
    isInside = !separates;
  }
  return parts;
}

TEST(SplitVornixPath, AgreesWithALiteralSplitOfAnyText) {
  const std::vector<char16_t> units = {u';', u':', u'a', u' ', u'/', u'\\', u'"', u'\t', u'\0', u'\xDC80', u'\x20AC'};
  RandomSource random = RandomSource::OfThisRun(3101);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const auto drawn = random.ListOf(16, [&] { return random.Pick(units); });
    const std::u16string text(drawn.begin(), drawn.end());
    ASSERT_EQ(SplitVornixPath(text), SplitLiterally(text));
  }
}

TEST(SplitVornixPath, OfJoinedFoldersGivesTheFoldersBack) {
  const Texts pieces = {u"a", u"/", u" ", u"\"", u"\\", u"%3B", u"\u00E9", u"\xDCFF"};
  RandomSource random = RandomSource::OfThisRun(3102);
  SCOPED_TRACE(random.Describe());
  const auto makeSeparator = [&] { return PathSeparators()[random.Below(PathSeparators().size())]; };
  const auto makeFolder = [&] {
    std::u16string folder = random.Pick(pieces);
    for (const auto& piece : random.ListOf(5, [&] { return random.Pick(pieces); })) folder += piece;
    return folder;
  };

  for (int round = 0; round < RandomSource::Rounds(5'000); ++round) {
    const Texts folders = random.ListOf(8, makeFolder);
    std::u16string joined;
    for (const auto& folder : folders) {
      if (!joined.empty()) joined += makeSeparator();
      joined += folder;
    }
    ASSERT_EQ(SplitVornixPath(joined), folders);
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement
