#include <gtest/gtest.h>

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <support/random_text.hpp>

namespace fl::filesystem {
namespace {

using foundation::support::RandomBytes;
using foundation::support::RandomSource;

TEST(DisplayedText, ShowsOrdinaryTextAsUtf8) {
  EXPECT_EQ(to_displayed_text(u"a b/\u00E9\u20AC\U0001F600"), "a b/\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(DisplayedText, EscapesControlCharacters) {
  EXPECT_EQ(to_displayed_text(u"\x1B[31m\n\t"), "\\u{1B}[31m\\u{A}\\u{9}");
  EXPECT_EQ(to_displayed_text(std::u16string_view(u"\0", 1)), "\\u{0}");
  EXPECT_EQ(to_displayed_text(u"\x7F\u0080\u009F\u00A0"), "\\u{7F}\\u{80}\\u{9F}\xC2\xA0");
}

TEST(DisplayedText, EscapesWhatTurnsTheDirectionOfWriting) {
  EXPECT_EQ(to_displayed_text(u"\u202A\u202E\u2066\u2069"), "\\u{202A}\\u{202E}\\u{2066}\\u{2069}");
  EXPECT_EQ(to_displayed_text(u"\u200E\u200F\u061C"), "\\u{200E}\\u{200F}\\u{61C}");
}

TEST(DisplayedText, EscapesLineSeparatorsAndTheByteOrderMark) {
  EXPECT_EQ(to_displayed_text(u"\u2028\u2029\uFEFF"), "\\u{2028}\\u{2029}\\u{FEFF}");
}

TEST(DisplayedText, ShowsAStrayByteAsAByteAndOtherHalvesAsCodes) {
  EXPECT_EQ(to_displayed_text(u"\xDCFF\xDC80"), "\\xFF\\x80");
  EXPECT_EQ(to_displayed_text(u"\xD800"), "\\u{D800}");
  EXPECT_EQ(to_displayed_text(u"\xDC00\xDD00"), "\\u{DC00}\\u{DD00}");
}

TEST(DisplayedText, DoublesBackslashesSoThatNoEscapeCanBeForged) { EXPECT_EQ(to_displayed_text(u"\\xFF"), "\\\\xFF"); }

TEST(DisplayedText, LetsNoControlByteThrough) {
  RandomSource random = RandomSource::OfThisRun(5);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const std::string shown = to_displayed_text(from_bytes(RandomBytes(random, 16)));
    ASSERT_TRUE(
        std::none_of(shown.begin(), shown.end(), [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; }));
  }
}

}  // namespace
}  // namespace fl::filesystem
