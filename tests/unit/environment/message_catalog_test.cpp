#include <gmock/gmock.h>

#include <current_working_folder/current_working_folder.hpp>
#include <limits>
#include <search_path_environment/message_catalog.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

using foundation::core::except::Notification;
using foundation::core::except::NotificationArgument;
using foundation::storage::vfs::AbsoluteIRI;
using testing::EndsWith;
using testing::StartsWith;

/// The text of the message that a folder which does not exist is told with.
std::string Missing(const std::u16string& folder) {
  return TextOf({{folder}, "VORNIX:mpath", "nameNonexistentOrNotADirectory"});
}

const std::string kIsMissing = " does not exist or is not a folder: check the spelling, or make the folder first";

std::u16string Repeated(std::size_t count, const std::u16string& text) {
  std::u16string repeated;
  for (std::size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

std::string Repeated(std::size_t count, const std::string& text) {
  std::string repeated;
  for (std::size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

TEST(MessageCatalog, NamesTheFolderAndSaysWhatToDo) {
  EXPECT_EQ(TextOf({{u"x://%zz"}, "VORNIX:mpath", "invalidLocation"}),
            "\"x://%zz\" is not a valid folder name: check the spelling, and in an identifier write '%' as %25, '?' as "
            "%3F and '#' as %23");
  EXPECT_EQ(TextOf({{u"/a"}, "VORNIX:mpath", "directoryPermissionDenied"}),
            "\"/a\" may not be read: ask for the permission to list it, or leave it out");
  EXPECT_EQ(TextOf({{u"/a"}, "VORNIX:mpath", "nameNonexistentOrNotADirectory"}),
            "\"/a\" does not exist or is not a folder: check the spelling, or make the folder first");
  EXPECT_EQ(TextOf({{u"/a"}, "VORNIX:mpath", "directoryNameTooLong"}),
            "\"/a\" is longer than a folder's name can be: use a shorter one");
  EXPECT_EQ(TextOf({{u"/a"}, "VORNIX:rmpath", "DirNotFound"}),
            "\"/a\" is not on the search path, so nothing was removed: 'vornixpath path' lists what is");
}

/// Refuses every name with the same code.
class Refusing final : public current_working_folder::ICurrentWorkingFolder {
 public:
  explicit Refusing(int code) : code_(code) {}
  [[nodiscard]] AbsoluteIRI absolutize(const std::u16string& /*name*/) const override {
    throw current_working_folder::FailedToAbsolutizeException(code_);
  }

 private:
  int code_;
};

TEST(MessageCatalog, HoldsEveryWarningThatARefusedNameGives) {
  for (const int code : {0, 3, 4, 5, 6, 7, 9}) {
    Notification warnings;
    static_cast<void>(PathManagement::ConvertUstringToAbsoluteIRI(u"/a", Refusing(code), warnings));

    ASSERT_EQ(warnings.GetMessages().size(), 1U) << code;
    EXPECT_THAT(TextOf(warnings.GetMessages()[0]), StartsWith("\"/a\" ")) << code;
  }
}

TEST(MessageCatalog, ShowsNoNameThatATerminalWouldActOn) {
  EXPECT_EQ(Missing(u"a\x1B[31m\n\xDCFF\\"), "\"a\\u{1B}[31m\\u{A}\\xFF\\\\\"" + kIsMissing);
}

TEST(MessageCatalog, ShowsANameOfUpTo300CharactersWhole) {
  EXPECT_EQ(Missing(Repeated(300, u"n")), '"' + Repeated(300, "n") + '"' + kIsMissing);
  EXPECT_EQ(Missing(Repeated(300, u"\U0001F600")), '"' + Repeated(300, "\xF0\x9F\x98\x80") + '"' + kIsMissing);
}

TEST(MessageCatalog, ShowsALongerNameByItsEndsAndItsLength) {
  const std::u16string name = Repeated(100, u"a") + Repeated(4800, u"-") + Repeated(100, u"z");

  EXPECT_EQ(Missing(name),
            '"' + Repeated(100, "a") + "..." + Repeated(100, "z") + "\" (5,000 characters)" + kIsMissing);
  EXPECT_EQ(Missing(Repeated(301, u"n")),
            '"' + Repeated(100, "n") + "..." + Repeated(100, "n") + "\" (301 characters)" + kIsMissing);
  EXPECT_THAT(Missing(Repeated(1234567, u"n")), EndsWith("\" (1,234,567 characters)" + kIsMissing));
}

TEST(MessageCatalog, CutsNoCharacterInTwo) {
  const std::string face = "\xF0\x9F\x98\x80";

  EXPECT_EQ(Missing(Repeated(1000, u"\U0001F600")),
            '"' + Repeated(100, face) + "..." + Repeated(100, face) + "\" (1,000 characters)" + kIsMissing);
}

TEST(MessageCatalog, CountsAStrayHalfOfACharacterAsOne) {
  EXPECT_EQ(Missing(Repeated(301, u"\xDCFF")),
            '"' + Repeated(100, "\\xFF") + "..." + Repeated(100, "\\xFF") + "\" (301 characters)" + kIsMissing);
  EXPECT_THAT(Missing(Repeated(301, u"\xD83D")), EndsWith("\" (301 characters)" + kIsMissing));
}

TEST(MessageCatalog, ShowsAMessageThatItDoesNotKnowWithAllItHolds) {
  const std::vector<NotificationArgument> arguments = {u"/a", std::int64_t{-12}, 0.1};

  EXPECT_EQ(TextOf({arguments, "VORNIX:mpath", "unknown"}),
            "message \"unknown\" of \"VORNIX:mpath\": \"/a\", -12, 0.1");
  EXPECT_EQ(TextOf({arguments, "VORNIX:rmpath", "invalidLocation"}),
            "message \"invalidLocation\" of \"VORNIX:rmpath\": \"/a\", -12, 0.1");
  EXPECT_EQ(TextOf({{}, "VORNIX:mpath", "unknown"}), "message \"unknown\" of \"VORNIX:mpath\"");
}

TEST(MessageCatalog, LosesNothingOfAMessageThatItDoesNotKnow) {
  EXPECT_EQ(
      TextOf({{Repeated(1000, u"n"), std::numeric_limits<std::int64_t>::min(), -1.7976931348623157e308}, "i", "k"}),
      "message \"k\" of \"i\": \"" + Repeated(1000, "n") + "\", -9223372036854775808, -1.7976931348623157e+308");
  EXPECT_EQ(TextOf({{std::numeric_limits<double>::infinity(), 1.0 / 3}, "i", "k"}),
            "message \"k\" of \"i\": inf, 0.3333333333333333");
}

TEST(MessageCatalog, MakesAMessageThatItDoesNotKnowSafeForATerminal) {
  EXPECT_EQ(TextOf({{u"\u202E"}, "\x1B[31m", "\xFF"}), "message \"\\xFF\" of \"\\u{1B}[31m\": \"\\u{202E}\"");
}

TEST(MessageCatalog, ShowsAMessageWithoutAFolderWithAllItHolds) {
  EXPECT_EQ(TextOf({{}, "VORNIX:rmpath", "DirNotFound"}), "message \"DirNotFound\" of \"VORNIX:rmpath\"");
  EXPECT_EQ(TextOf({{std::int64_t{7}, u"/a"}, "VORNIX:rmpath", "DirNotFound"}),
            "message \"DirNotFound\" of \"VORNIX:rmpath\": 7, \"/a\"");
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
