#include <gtest/gtest.h>

#include <foundation/storage/utility/url.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <support/random_text.hpp>

namespace foundation::storage::utility {
namespace {

using support::RandomIdentifierText;
using support::RandomSource;

std::u16string Normalized(std::u16string url) {
  normalizeURL(url);
  return url;
}

std::u16string Decoded(std::u16string url) {
  decodeURL(url);
  return url;
}

TEST(NormalizeURL, GivesTheNormalFormOfAnIdentifier) {
  EXPECT_EQ(Normalized(u"FILE://localhost/a/../b%7E/"), u"file:///b~");
  EXPECT_EQ(Normalized(u"memory:///%c3%a9"), vfs::AbsoluteIRI(u"memory:///%c3%a9").toString());
}

TEST(NormalizeURL, LeavesAnyOtherTextUnchanged) {
  for (const std::u16string text : {u"", u"/A/../b", u"http://h/a?Q", u"FILE:///%zz", u"file:///\xD800", u"C:\\x"}) {
    EXPECT_EQ(Normalized(text), text);
  }
}

TEST(NormalizeURL, ChangesNothingTheSecondTime) {
  RandomSource random = RandomSource::OfThisRun(51);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    const std::u16string once = Normalized(RandomIdentifierText(random, 10));
    ASSERT_EQ(Normalized(once), once);
  }
}

TEST(DecodeURL, DecodesEscapesOfTheWholeText) {
  EXPECT_EQ(Decoded(u"memory:///a%20b%2Fc%3f"), u"memory:///a b/c?");
  EXPECT_EQ(Decoded(u"plain"), u"plain");
}

TEST(DecodeURL, DecodesAdjacentEscapesAsOneRunOfBytes) {
  EXPECT_EQ(Decoded(u"%C3%A9%F0%9F%98%80"), u"\u00E9\U0001F600");
}

TEST(DecodeURL, TurnsBytesThatAreNotUtf8IntoLoneLowSurrogates) {
  EXPECT_EQ(Decoded(u"%ff%C3("), u"\xDCFF\xDCC3(");
  EXPECT_EQ(Decoded(u"%C3x%A9"), u"\xDCC3x\xDCA9");
}

TEST(DecodeURL, LeavesMalformedEscapesAsTheyAre) {
  EXPECT_EQ(Decoded(u"%"), u"%");
  EXPECT_EQ(Decoded(u"%4"), u"%4");
  EXPECT_EQ(Decoded(u"%zz%41%"), u"%zzA%");
  EXPECT_EQ(Decoded(u"%%41"), u"%A");
}

TEST(DecodeURL, DecodesOnceOnly) { EXPECT_EQ(Decoded(u"%2541"), u"%41"); }

TEST(DecodeURL, LeavesHalvesOfCharactersAlone) { EXPECT_EQ(Decoded(u"\xD800%41\xDC00"), u"\xD800\u0041\xDC00"); }

}  // namespace
}  // namespace foundation::storage::utility
