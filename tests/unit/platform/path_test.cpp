#include <gtest/gtest.h>

#include <fl/filesystem/path.hpp>
#include <type_traits>

namespace fl::filesystem {
namespace {

using detail::extract_extension;
using detail::extract_filename;
using detail::extract_root_path;
using detail::make_native_form;
using detail::path_style;

TEST(Path, KeepsItsTextAsGiven) { EXPECT_EQ(path(u"/a//b/../c/").u16string(), u"/a//b/../c/"); }

TEST(Path, IsTheNameOfTheTemplateThatOthersSpellOut) {
  EXPECT_TRUE((std::is_same_v<path, basic_path<char, char16_t, detail::path_traits<char, char16_t>>>));
}

TEST(Path, IsEmptyWhenItsTextIs) {
  EXPECT_TRUE(path().empty());
  EXPECT_TRUE(path(u"").empty());
  EXPECT_FALSE(path(u"/").empty());
}

TEST(Path, IsEqualWhenTheTextsAre) {
  EXPECT_EQ(path(u"/a"), path(u"/a"));
  EXPECT_NE(path(u"/a"), path(u"/a/"));
}

TEST(Path, GivesTheBytesThatNameItToTheSystem) {
  EXPECT_EQ(path(u"/\u00E9\xDCFF").string(), "/\xC3\xA9\xFF");
  EXPECT_THROW(static_cast<void>(path(u"\xD800").string()), encoding_error);
}

TEST(Path, FindsItsLastComponent) {
  EXPECT_EQ(path(u"/a/b.vnx").filename(), u"b.vnx");
  EXPECT_EQ(path(u"b").filename(), u"b");
  EXPECT_EQ(path(u"/a/").filename(), u"");
  EXPECT_EQ(path(u"/").filename(), u"");
}

TEST(Path, BeginsItsExtensionAtTheLastDot) {
  EXPECT_EQ(path(u"/a/b.tar.gz").extension(), u".gz");
  EXPECT_EQ(path(u"foo.").extension(), u".");
  EXPECT_EQ(path(u"..x").extension(), u".x");
}

TEST(Path, HasNoExtensionWithoutADotBehindTheFirstCharacterOfItsLastComponent) {
  EXPECT_EQ(path(u"/a.b/c").extension(), u"");
  EXPECT_EQ(path(u".hidden").extension(), u"");
  EXPECT_EQ(path(u"/a/.hidden").extension(), u"");
  EXPECT_EQ(path(u"").extension(), u"");
  EXPECT_EQ(path(u"/a.b/").extension(), u"");
}

TEST(PosixNativeForm, CollapsesSeparatorsAndDropsTheTrailingOne) {
  EXPECT_EQ(make_native_form(u"//a///b//", true, path_style::posix), u"/a/b");
  EXPECT_EQ(make_native_form(u"a/b/", true, path_style::posix), u"a/b");
}

TEST(PosixNativeForm, NeverDropsTheRoot) {
  EXPECT_EQ(make_native_form(u"/", true, path_style::posix), u"/");
  EXPECT_EQ(make_native_form(u"///", true, path_style::posix), u"/");
  EXPECT_EQ(make_native_form(u"", true, path_style::posix), u"");
}

TEST(PosixNativeForm, TakesABackslashForAnOrdinaryCharacter) {
  EXPECT_EQ(make_native_form(u"a\\\\b\\", true, path_style::posix), u"a\\\\b\\");
}

TEST(PosixNativeForm, LeavesTheTextAloneWhenNotAskedToCollapse) {
  EXPECT_EQ(make_native_form(u"//a//", false, path_style::posix), u"//a//");
}

TEST(WindowsNativeForm, TurnsSlashesIntoBackslashes) {
  EXPECT_EQ(make_native_form(u"C:/a//b/", false, path_style::windows), u"C:\\a\\\\b\\");
}

TEST(WindowsNativeForm, CollapsesSeparatorsAndDropsTheTrailingOne) {
  EXPECT_EQ(make_native_form(u"C:\\\\a//b\\/", true, path_style::windows), u"C:\\a\\b");
  EXPECT_EQ(make_native_form(u"a\\b\\", true, path_style::windows), u"a\\b");
}

TEST(WindowsNativeForm, NeverDropsTheRoot) {
  EXPECT_EQ(make_native_form(u"C:\\\\", true, path_style::windows), u"C:\\");
  EXPECT_EQ(make_native_form(u"C:", true, path_style::windows), u"C:");
  EXPECT_EQ(make_native_form(u"\\\\", true, path_style::windows), u"\\");
  EXPECT_EQ(make_native_form(u"\\\\server\\share\\", true, path_style::windows), u"\\\\server\\share\\");
}

TEST(WindowsNativeForm, KeepsTheLeadingPairOfServersAndVerbatimPaths) {
  EXPECT_EQ(make_native_form(u"//server//share//a", true, path_style::windows), u"\\\\server\\share\\a");
  EXPECT_EQ(make_native_form(u"\\\\?\\C:\\a\\\\b", true, path_style::windows), u"\\\\?\\C:\\a\\b");
  EXPECT_EQ(make_native_form(u"\\\\\\a", true, path_style::windows), u"\\a");
}

TEST(NativeForm, IsItsOwnNativeForm) {
  for (const auto style : {path_style::posix, path_style::windows}) {
    for (const std::u16string text :
         {u"//a//b//", u"\\\\s\\\\t\\\\", u"C://", u"\\\\?\\UNC\\s\\t\\x\\", u"/\\/", u"c:x//"}) {
      const std::u16string once = make_native_form(text, true, style);
      EXPECT_EQ(make_native_form(once, true, style), once);
    }
  }
}

TEST(PosixRoot, IsTheLeadingRunOfSlashes) {
  EXPECT_EQ(extract_root_path(u"/a/b", path_style::posix), u"/");
  EXPECT_EQ(extract_root_path(u"//a", path_style::posix), u"//");
  EXPECT_EQ(extract_root_path(u"/", path_style::posix), u"/");
}

TEST(PosixRoot, IsEmptyForARelativePath) {
  EXPECT_EQ(extract_root_path(u"a/b", path_style::posix), u"");
  EXPECT_EQ(extract_root_path(u"", path_style::posix), u"");
  EXPECT_EQ(extract_root_path(u"\\a", path_style::posix), u"");
  EXPECT_EQ(extract_root_path(u"C:/a", path_style::posix), u"");
}

TEST(WindowsRoot, IsTheDriveWithItsSeparator) {
  EXPECT_EQ(extract_root_path(u"C:\\a", path_style::windows), u"C:\\");
  EXPECT_EQ(extract_root_path(u"c:/a", path_style::windows), u"c:/");
  EXPECT_EQ(extract_root_path(u"C:a", path_style::windows), u"C:");
  EXPECT_EQ(extract_root_path(u"C:", path_style::windows), u"C:");
}

TEST(WindowsRoot, IsTheServerAndItsShare) {
  EXPECT_EQ(extract_root_path(u"\\\\server\\share\\a", path_style::windows), u"\\\\server\\share\\");
  EXPECT_EQ(extract_root_path(u"//server/share", path_style::windows), u"//server/share");
  EXPECT_EQ(extract_root_path(u"\\\\server", path_style::windows), u"\\\\server");
}

TEST(WindowsRoot, IncludesAVerbatimPrefix) {
  EXPECT_EQ(extract_root_path(u"\\\\?\\C:\\a", path_style::windows), u"\\\\?\\C:\\");
  EXPECT_EQ(extract_root_path(u"\\\\?\\UNC\\server\\share\\a", path_style::windows), u"\\\\?\\UNC\\server\\share\\");
  EXPECT_EQ(extract_root_path(u"\\\\?\\Volume\\a", path_style::windows), u"\\\\?\\");
}

TEST(WindowsRoot, MayBeASeparatorAlone) { EXPECT_EQ(extract_root_path(u"\\a", path_style::windows), u"\\"); }

TEST(WindowsRoot, IsEmptyForARelativePath) {
  EXPECT_EQ(extract_root_path(u"a\\b", path_style::windows), u"");
  EXPECT_EQ(extract_root_path(u"1:\\b", path_style::windows), u"");
}

TEST(WindowsFilename, StandsBehindTheLastSeparatorOfEitherKindAndBehindTheRoot) {
  EXPECT_EQ(extract_filename(u"C:\\a/b.c", path_style::windows), u"b.c");
  EXPECT_EQ(extract_filename(u"C:b.c", path_style::windows), u"b.c");
  EXPECT_EQ(extract_filename(u"\\\\server\\share.x", path_style::windows), u"");
  EXPECT_EQ(extract_extension(u"C:.hidden", path_style::windows), u"");
  EXPECT_EQ(extract_extension(u"C:\\a.b\\c", path_style::windows), u"");
}

TEST(NativeStyle, IsThatOfTheBuild) {
  EXPECT_EQ(make_native_form(u"a\\/b", false), make_native_form(u"a\\/b", false, detail::native_style));
  EXPECT_EQ(extract_root_path(u"\\a"), extract_root_path(u"\\a", detail::native_style));
  EXPECT_EQ(extract_filename(u"a\\b"), extract_filename(u"a\\b", detail::native_style));
  EXPECT_EQ(extract_extension(u"a.b\\c"), extract_extension(u"a.b\\c", detail::native_style));
}

}  // namespace
}  // namespace fl::filesystem
