#include <gmock/gmock.h>

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <support/random_text.hpp>
#include <support/storage_matchers.hpp>

namespace foundation::storage::vfs {
namespace {

using fl::filesystem::path;
using fl::filesystem::detail::path_style;
using support::RandomNameBytes;
using support::RandomSource;

std::u16string FromPosix(const std::u16string& text) {
  return detail::toAbsoluteIRI(u"file", path(text), path_style::posix).toString();
}
std::u16string FromWindows(const std::u16string& text) {
  return detail::toAbsoluteIRI(u"file", path(text), path_style::windows).toString();
}
std::u16string ToPosix(const std::u16string& iri) {
  return detail::fromAbsoluteIRI(AbsoluteIRI(iri), path_style::posix).u16string();
}
std::u16string ToWindows(const std::u16string& iri) {
  return detail::fromAbsoluteIRI(AbsoluteIRI(iri), path_style::windows).u16string();
}

TEST(IRIPrefix, IsASchemeOfTwoCharactersOrMoreAndTwoSlashes) {
  EXPECT_TRUE(hasIRIPrefix(u"file:///a"));
  EXPECT_TRUE(hasIRIPrefix(u"X+1.-://"));
  EXPECT_TRUE(hasIRIPrefix(u"ab://"));
}

TEST(IRIPrefix, IsNotFoundInPaths) {
  for (const std::u16string text :
       {u"C:\\x", u"a:b", u"x://y", u"file:/a", u"file:a", u"/a://b", u"1a://b", u"://", u"", u"a b://c"}) {
    EXPECT_FALSE(hasIRIPrefix(text)) << fl::filesystem::to_bytes(text);
  }
}

TEST(PathToIRI, NamesTheSamePlace) {
  EXPECT_EQ(FromPosix(u"/a/b"), u"file:///a/b");
  EXPECT_EQ(FromPosix(u"/"), u"file:///");
  EXPECT_EQ(FromPosix(u"/a b/\u00E9"), u"file:///a b/\u00E9");
}

TEST(PathToIRI, EscapesWhatHasAMeaningInIdentifiers) {
  EXPECT_EQ(FromPosix(u"/50%/a?b#c/%41"), u"file:///50%25/a%3Fb%23c/%2541");
  EXPECT_EQ(FromPosix(u"/a\nb/\xDCFF"), u"file:///a%0Ab/%FF");
  EXPECT_EQ(FromPosix(u"/a\\b:c"), u"file:///a\\b:c");
}

TEST(PathToIRI, TakesDotSegmentsAndRepeatedSeparatorsOut) {
  EXPECT_EQ(FromPosix(u"//a/./b//../c/"), u"file:///a/c");
  EXPECT_EQ(FromPosix(u"/../a"), u"file:///a");
}

TEST(PathToIRI, IsRootlessForARelativePath) {
  EXPECT_EQ(FromPosix(u"rel/x"), u"file:rel/x");
  EXPECT_EQ(FromPosix(u"../x"), u"file:../x");
  EXPECT_EQ(FromPosix(u""), u"file:");
  EXPECT_EQ(FromPosix(u"."), u"file:");
}

TEST(PathToIRI, TakesAnyScheme) {
  EXPECT_EQ(detail::toAbsoluteIRI(u"Memory", path(u"/a"), path_style::posix).toString(), u"memory:///a");
}

TEST(PathToIRI, RefusesWhatCanNameNothing) {
  EXPECT_THAT([] { return toAbsoluteIRI(u"f", path(u"/a")); },
              FailsAbout(u"f", "malformed identifier \"f\": it is no scheme"));
  EXPECT_THAT([] { return toAbsoluteIRI(u"fi:le", path(u"/a")); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([] { return toAbsoluteIRI(u"file", path(u"/\xD800")); },
              FailsAbout(u"file:///\xD800/", "malformed identifier \"file:///\\u{D800}/\": it holds half a character"));
  EXPECT_THAT([] { return toAbsoluteIRI(u"file", path(std::u16string(u"/a\0b", 4))); },
              FailsAbout(std::u16string(u"/a\0b", 4), "malformed identifier \"/a\\u{0}b\": a path cannot hold NUL"));
}

TEST(IRIToPath, NamesTheSamePlace) {
  EXPECT_EQ(ToPosix(u"file:///a%20b/%25%FF"), u"/a b/%\xDCFF");
  EXPECT_EQ(ToPosix(u"file:///"), u"/");
  EXPECT_EQ(ToPosix(u"file:rel/x"), u"rel/x");
  EXPECT_EQ(ToPosix(u"file:"), u"");
}

TEST(IRIToPath, RefusesAnotherScheme) {
  EXPECT_THAT([] { return fromAbsoluteIRI(AbsoluteIRI(u"memory:///a")); },
              FailsAbout(u"memory:///a", "cannot convert \"memory:///a\": its scheme is not \"file\""));
}

TEST(IRIToPath, RefusesAHostOnPosix) {
  EXPECT_THAT([] { return ToPosix(u"file://host/a"); },
              FailsAbout(u"file://host/a", "cannot convert \"file://host/a\": it names a host"));
}

TEST(IRIToPath, RefusesNamesThatNoFileCanHave) {
  EXPECT_THAT([] { return ToPosix(u"file:///a%2Fb"); },
              FailsAbout(u"file:///a%2Fb", "cannot convert \"file:///a%2Fb\": a name in it holds '/'"));
  EXPECT_THAT([] { return ToPosix(u"file:///a%00"); },
              FailsAbout(u"file:///a%00", "cannot convert \"file:///a%00\": a name in it holds NUL"));
  EXPECT_THAT([] { return ToWindows(u"file:///C:/a\\b"); },
              FailsAbout(u"file:///C:/a\\b", "cannot convert \"file:///C:/a\\\\b\": a name in it holds a backslash"));
  EXPECT_EQ(ToPosix(u"file:///a\\b"), u"/a\\b");
}

TEST(PathAndIRI, GiveBackEveryAbsolutePathInNormalForm) {
  RandomSource random = RandomSource::OfThisRun(41);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < RandomSource::Rounds(50'000); ++round) {
    std::string bytes;
    for (std::size_t depth = random.Below(4); depth > 0; --depth) bytes += "/" + RandomNameBytes(random);
    if (bytes.empty()) bytes = "/";
    const path native(fl::filesystem::from_bytes(bytes));
    const path back = fromAbsoluteIRI(AbsoluteIRI(toAbsoluteIRI(u"file", native).toString()));
    ASSERT_EQ(back.string(), bytes);
    ASSERT_EQ(back, native);
  }
}

TEST(WindowsPathToIRI, PutsTheDriveInFrontOfThePath) {
  EXPECT_EQ(FromWindows(u"C:\\x\\y"), u"file:///C:/x/y");
  EXPECT_EQ(FromWindows(u"C:/x//y\\"), u"file:///C:/x/y");
  EXPECT_EQ(FromWindows(u"C:\\"), u"file:///C:");
  EXPECT_EQ(FromWindows(u"\\x"), u"file:///x");
}

TEST(WindowsPathToIRI, PutsTheServerIntoTheAuthority) {
  EXPECT_EQ(FromWindows(u"\\\\Srv\\share\\x"), u"file://srv/share/x");
  EXPECT_EQ(FromWindows(u"\\\\srv"), u"file://srv/");
}

TEST(WindowsPathToIRI, DropsTheVerbatimPrefix) {
  EXPECT_EQ(FromWindows(u"\\\\?\\C:\\x"), u"file:///C:/x");
  EXPECT_EQ(FromWindows(u"\\\\?\\UNC\\srv\\share\\x"), u"file://srv/share/x");
}

TEST(WindowsPathToIRI, NeverLeavesTheDriveOrTheShare) {
  EXPECT_EQ(FromWindows(u"C:\\..\\..\\x\\.\\y"), u"file:///C:/x/y");
  EXPECT_EQ(FromWindows(u"\\\\srv\\share\\..\\x"), u"file://srv/share/x");
}

TEST(WindowsPathToIRI, IsRootlessForARelativePath) {
  EXPECT_EQ(FromWindows(u"a\\b"), u"file:a/b");
  EXPECT_EQ(FromWindows(u"C:a"), u"file:C:a");
  EXPECT_EQ(FromWindows(u""), u"file:");
}

TEST(WindowsPathToIRI, RefusesAShareOfThisMachineWhichHasNoIdentifier) {
  EXPECT_THAT(
      [] { return FromWindows(u"\\\\localhost\\share"); },
      FailsAbout(u"\\\\localhost\\share",
                 "malformed identifier \"\\\\\\\\localhost\\\\share\": a share of this machine has no identifier"));
}

TEST(WindowsPathAndIRI, GiveBackPathsInNormalForm) {
  for (const std::u16string text : {u"C:\\x\\y", u"C:\\", u"C:", u"C:a", u"\\\\srv\\share\\", u"\\\\srv\\share\\x",
                                    u"\\\\srv", u"\\x", u"\\", u"a\\b", u"..\\a", u"", u"\\\\.\\pipe\\a"}) {
    EXPECT_EQ(ToWindows(FromWindows(text)), text) << fl::filesystem::to_bytes(text);
  }
}

TEST(NativePath, IsTheSameForEveryScheme) {
  EXPECT_EQ(detail::toNativePath(AbsoluteIRI(u"disk:///a"), path_style::posix), path(u"/a"));
}

}  // namespace
}  // namespace foundation::storage::vfs
