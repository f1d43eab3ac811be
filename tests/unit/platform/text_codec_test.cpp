#include <gmock/gmock.h>

#include <fl/filesystem/text_codec.hpp>
#include <support/random_text.hpp>

namespace fl::filesystem {
namespace {

using foundation::support::RandomBytes;
using foundation::support::RandomSource;

TEST(TextCodec, DecodesUtf8OfEveryLength) {
  EXPECT_EQ(from_bytes("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u00E9\u20AC\U0001F600");
}

TEST(TextCodec, DecodesTheFirstAndTheLastCodePointOfEachLength) {
  EXPECT_EQ(from_bytes(std::string_view("\0\x7F", 2)), std::u16string_view(u"\0\x7F", 2));
  EXPECT_EQ(from_bytes("\xC2\x80\xDF\xBF"), u"\u0080\u07FF");
  EXPECT_EQ(from_bytes("\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"), u"\u0800\uD7FF\uE000\uFFFF");
  EXPECT_EQ(from_bytes("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), u"\U00010000\U0010FFFF");
}

TEST(TextCodec, TurnsEachStrayByteIntoALoneLowSurrogate) {
  EXPECT_EQ(from_bytes("a\xFF\x62"), u"a\xDCFF\u0062");
  EXPECT_EQ(from_bytes("\xC3("), u"\xDCC3(");
  EXPECT_EQ(from_bytes("\xE2\x82"), u"\xDCE2\xDC82");
}

TEST(TextCodec, TakesOverlongFormsAndEncodedSurrogatesAndCodesBeyondUnicodeForStrayBytes) {
  EXPECT_EQ(from_bytes("\xC0\xAF"), u"\xDCC0\xDCAF");
  EXPECT_EQ(from_bytes("\xE0\x80\xAF"), u"\xDCE0\xDC80\xDCAF");
  EXPECT_EQ(from_bytes("\xED\xA0\x80"), u"\xDCED\xDCA0\xDC80");
  EXPECT_EQ(from_bytes("\xF4\x90\x80\x80"), u"\xDCF4\xDC90\xDC80\xDC80");
}

TEST(TextCodec, GivesBackEveryByteString) {
  RandomSource random = RandomSource::OfThisRun(20240117);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(200'000); ++round) {
    const std::string bytes = RandomBytes(random, 16);
    ASSERT_EQ(to_bytes(from_bytes(bytes)), bytes);
  }
}

TEST(TextCodec, GivesBackTheBytesOfTextsThatJoinStrayHalves) {
  const std::u16string joined = u"\xDCC3\xDCA9";

  EXPECT_EQ(to_bytes(joined), "\xC3\xA9");
  EXPECT_EQ(from_bytes(to_bytes(joined)), u"\u00E9");
}

TEST(TextCodec, RefusesHalvesOfCharactersThatStandForNoByte) {
  EXPECT_THROW(static_cast<void>(to_bytes(u"a\xD800")), encoding_error);
  EXPECT_THROW(static_cast<void>(to_bytes(u"\xD800z")), encoding_error);
  EXPECT_THROW(static_cast<void>(to_bytes(u"\xDC00")), encoding_error);
  EXPECT_THROW(static_cast<void>(to_bytes(u"\xDC7F")), encoding_error);
  EXPECT_THROW(static_cast<void>(to_bytes(u"\xDD00")), encoding_error);
}

TEST(TextCodec, QuotesTheRefusedTextWithItsEscapes) {
  EXPECT_THAT(
      [] { return to_bytes(u"a\n\xD800"); },
      testing::ThrowsMessage<encoding_error>("no bytes stand for \"a\\u{A}\\u{D800}\": it holds half a character"));
}

}  // namespace
}  // namespace fl::filesystem
