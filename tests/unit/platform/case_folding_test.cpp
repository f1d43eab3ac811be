#include <gmock/gmock.h>

#include <fl/filesystem/case_folding.hpp>
#include <string>

namespace fl::filesystem {
namespace {

TEST(CaseFolding, LowersAsciiLettersAndLeavesAllOtherAsciiAlone) {
  std::u16string ascii;
  std::u16string expected;
  for (char16_t unit = 0; unit < 0x80; ++unit) {
    ascii.push_back(unit);
    expected.push_back(unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit);
  }

  EXPECT_EQ(fold_case(ascii), expected);
}

TEST(CaseFolding, GivesNothingForNothing) { EXPECT_EQ(fold_case(u""), u""); }

TEST(CaseFolding, ExpandsTheSharpSToTwoLetters) {
  EXPECT_EQ(fold_case(u"STRASSE"), u"strasse");
  EXPECT_EQ(fold_case(u"Stra\u00DFe"), u"strasse");
  EXPECT_EQ(fold_case(u"STRA\u1E9EE"), u"strasse");
}

TEST(CaseFolding, TakesTheDottedCapitalIApartAndKeepsItsDot) {
  EXPECT_EQ(fold_case(u"\u0130"), u"i\u0307");
  EXPECT_EQ(fold_case(u"I"), u"i");
  EXPECT_EQ(fold_case(u"\u0131"), u"\u0131") << "the dotless i is no i";
}

TEST(CaseFolding, TriplesALetterThatFoldsToThree) { EXPECT_EQ(fold_case(u"\uFB03\u0390"), u"ffi\u03B9\u0308\u0301"); }

TEST(CaseFolding, FoldsLettersBeyondTheBasicPlane) { EXPECT_EQ(fold_case(u"x\U00010400"), u"x\U00010428"); }

TEST(CaseFolding, LeavesLoneSurrogatesAsTheyAre) {
  const std::u16string stray = {u'A', 0xDC80, u'B', 0xDCFF, 0x00C9, 0xD800};
  const std::u16string folded = {u'a', 0xDC80, u'b', 0xDCFF, 0x00E9, 0xD800};

  EXPECT_EQ(fold_case(stray), folded);
}

TEST(CaseFolding, DoesNotComposeOrDecompose) { EXPECT_NE(fold_case(u"\u00E9"), fold_case(u"e\u0301")); }

TEST(CaseFolding, ChangesNothingWhenAppliedAgain) {
  for (char16_t unit = 1; unit < 0xD800; ++unit) {
    const std::u16string once = fold_case(std::u16string(1, unit));
    ASSERT_EQ(fold_case(once), once) << "for the code unit " << static_cast<unsigned>(unit);
  }
}

// A name is cut at its dots before it is folded: folding must neither make a dot nor take one away.
TEST(CaseFolding, NeitherMakesNorTakesADot) {
  for (char16_t unit = 1; unit < 0xD800; ++unit) {
    const bool isDot = unit == u'.';
    const std::u16string folded = fold_case(std::u16string(1, unit));
    ASSERT_EQ(folded.find(u'.') != std::u16string::npos, isDot) << "for the code unit " << static_cast<unsigned>(unit);
    ASSERT_FALSE(folded.empty());
  }
}

}  // namespace
}  // namespace fl::filesystem
