#include <gtest/gtest.h>

#include <search_path_environment/location_from_text.hpp>
#include <support/storage_matchers.hpp>

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FailsWith;

TEST(LocationFromText, TakesAnIdentifierAsOneWhateverTheBase) {
  EXPECT_EQ(LocationFromText(u"memory:///a%20b/../c", u"/w"), AbsoluteIRI(u"memory:///c"));
  EXPECT_EQ(LocationFromText(u"FILE://localhost/a", u"memory:///w"), AbsoluteIRI(u"file:///a"));
}

TEST(LocationFromText, TakesAnAbsolutePathAsItIsWhateverTheBase) {
  EXPECT_EQ(LocationFromText(u"//a///50% b/", u"/w").toString(), u"file:///a/50%25 b");
  EXPECT_EQ(LocationFromText(u"/a", u"memory:///w"), AbsoluteIRI(u"file:///a"));
  EXPECT_EQ(LocationFromText(u"/memory://a", u"/w"), AbsoluteIRI(u"file:///memory:/a"));
}

TEST(LocationFromText, JoinsARelativePathToTheBase) {
  EXPECT_EQ(LocationFromText(u"a/b", u"/w"), AbsoluteIRI(u"file:///w/a/b"));
  EXPECT_EQ(LocationFromText(u"a//b/", u"//w//"), AbsoluteIRI(u"file:///w/a/b"));
  EXPECT_EQ(LocationFromText(u"a", u"/"), AbsoluteIRI(u"file:///a"));
  EXPECT_EQ(LocationFromText(u"a:b", u"/w"), AbsoluteIRI(u"file:///w/a:b"));
}

TEST(LocationFromText, TakesDotFoldersOutByText) {
  EXPECT_EQ(LocationFromText(u".", u"/w"), AbsoluteIRI(u"file:///w"));
  EXPECT_EQ(LocationFromText(u"", u"/w"), AbsoluteIRI(u"file:///w"));
  EXPECT_EQ(LocationFromText(u"../a/./b", u"/v/w"), AbsoluteIRI(u"file:///v/a/b"));
  EXPECT_EQ(LocationFromText(u"../../../a", u"/v/w"), AbsoluteIRI(u"file:///a"));
}

TEST(LocationFromText, JoinsARelativePathToABaseThatIsAnIdentifier) {
  EXPECT_EQ(LocationFromText(u"a", u"memory:///w"), AbsoluteIRI(u"memory:///w/a"));
  EXPECT_EQ(LocationFromText(u"a", u"memory:///"), AbsoluteIRI(u"memory:///a"));
  EXPECT_EQ(LocationFromText(u"../a", u"memory://host/v/w"), AbsoluteIRI(u"memory://host/v/a"));
}

TEST(LocationFromText, LetsTheNamesInAPathStandForThemselves) {
  EXPECT_EQ(LocationFromText(u"50%/%41?#\xDCFF", u"/w%20").getPath(), u"/w%20/50%/%41?#\xDCFF");
  EXPECT_EQ(LocationFromText(u"50%/%41?#\xDCFF", u"memory:///w%20").getPath(), u"/w /50%/%41?#\xDCFF");
}

TEST(LocationFromText, KeepsARelativePathRelativeWithoutABaseToTakeItFrom) {
  EXPECT_TRUE(LocationFromText(u"a", u"").isRootless());
  EXPECT_TRUE(LocationFromText(u"a", u"w").isRootless());
}

TEST(LocationFromText, RefusesWhatNamesNothing) {
  EXPECT_THAT([] { return LocationFromText(u"file:///a%zz", u"/w"); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([] { return LocationFromText(std::u16string(u"a\0b", 3), u"/w"); },
              FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([] { return LocationFromText(u"\xD800", u"/w"); }, FailsWith(std::errc::invalid_argument));
}

TEST(LocationFromPath, TakesNoPathForAnIdentifier) {
  EXPECT_EQ(LocationFromPath(u"memory://a", u"/w"), AbsoluteIRI(u"file:///w/memory:/a"));
  EXPECT_EQ(LocationFromPath(u"file:///a", u"memory:///w"), AbsoluteIRI(u"memory:///w/file:/a"));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
