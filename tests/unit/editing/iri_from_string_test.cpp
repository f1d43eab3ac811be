#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/storage_matchers.hpp>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FailsAbout;
using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::toAbsoluteIRI;
using testing::AllOf;
using testing::HasSubstr;
using testing::Property;
using testing::Throws;

/// A callable whose Exception quotes `text`, as it was given, in its message.
auto FailsQuoting(const std::string& text) {
  return Throws<Exception>(Property("what", &Exception::what, HasSubstr("\"" + text + "\"")));
}

TEST(GetIRIFromString, MakesAFileIdentifierOfAPath) {
  EXPECT_EQ(GetIRIFromString(u"/a/b"), AbsoluteIRI(u"file:///a/b"));
  EXPECT_EQ(GetIRIFromString(u"/"), AbsoluteIRI(u"file:///"));
}

TEST(GetIRIFromString, TakesThePathInNativeForm) {
  EXPECT_EQ(GetIRIFromString(u"//a///b/"), AbsoluteIRI(u"file:///a/b"));
  EXPECT_EQ(GetIRIFromString(u"///"), AbsoluteIRI(u"file:///"));
}

TEST(GetIRIFromString, TakesDotFoldersOutByText) {
  EXPECT_EQ(GetIRIFromString(u"/a/./b/../c"), AbsoluteIRI(u"file:///a/c"));
}

TEST(GetIRIFromString, TakesEveryCharacterOfAPathAsItIs) {
  const AbsoluteIRI iri = GetIRIFromString(u"/50% off?/a#b/%41 \u00E9/\xDCFF");

  EXPECT_EQ(iri.getPath(), u"/50% off?/a#b/%41 \u00E9/\xDCFF");
  EXPECT_EQ(iri.toString(), u"file:///50%25 off%3F/a%23b/%2541 \u00E9/%FF");
}

TEST(GetIRIFromString, OfAnEmptyTextIsTheFileIdentifierOfAnEmptyPath) {
  EXPECT_EQ(GetIRIFromString(u""), toAbsoluteIRI(u"file", fl::filesystem::path()));
  EXPECT_EQ(GetIRIFromString(u"").toString(), u"file:");
}

TEST(GetIRIFromString, DoesNotMakeARelativePathAbsolute) {
  EXPECT_EQ(GetIRIFromString(u"a/b").toString(), u"file:a/b");
  EXPECT_EQ(GetIRIFromString(u"../a").toString(), u"file:../a");
  EXPECT_EQ(GetIRIFromString(u".").toString(), u"file:");
  EXPECT_TRUE(GetIRIFromString(u"a").isRootless());
}

TEST(GetIRIFromString, TakesATextWithoutAWholeSchemePrefixAsAPath) {
  EXPECT_EQ(GetIRIFromString(u"file:/a").getPath(), u"file:/a");
  EXPECT_EQ(GetIRIFromString(u"a:b").getPath(), u"a:b");
  EXPECT_EQ(GetIRIFromString(u"/memory://a").toString(), u"file:///memory:/a");
  EXPECT_TRUE(GetIRIFromString(u"file:/a").isRootless());
}

TEST(GetIRIFromString, BringsAnIdentifierToNormalForm) {
  EXPECT_EQ(GetIRIFromString(u"FILE:///a/./b/../%7Ec/").toString(), u"file:///a/~c");
  EXPECT_EQ(GetIRIFromString(u"Memory://HOST/a%20b").toString(), u"memory://host/a b");
  EXPECT_EQ(GetIRIFromString(u"memory:///a%2fb").toString(), u"memory:///a%2Fb");
}

TEST(GetIRIFromString, NeverLooksAtStorage) {
  EXPECT_EQ(GetIRIFromString(u"nowhere-mounted:///a").toString(), u"nowhere-mounted:///a");
  EXPECT_EQ(GetIRIFromString(u"/no/such/folder").toString(), u"file:///no/such/folder");
}

TEST(GetIRIFromString, RefusesAMalformedIdentifierAndQuotesIt) {
  EXPECT_THAT([] { return GetIRIFromString(u"file:///a%zz"); },
              AllOf(FailsWith(std::errc::invalid_argument), FailsQuoting("file:///a%zz")));
  EXPECT_THAT([] { return GetIRIFromString(u"file:///a?b"); },
              AllOf(FailsWith(std::errc::invalid_argument), FailsQuoting("file:///a?b")));
  EXPECT_THAT([] { return GetIRIFromString(u"memory:///a#b"); },
              AllOf(FailsWith(std::errc::invalid_argument), FailsQuoting("memory:///a#b")));
  EXPECT_THAT([] { return GetIRIFromString(u"memory:///a\nb"); },
              AllOf(FailsWith(std::errc::invalid_argument), FailsQuoting("memory:///a\\u{A}b")));
}

TEST(GetIRIFromString, RefusesAPathThatNamesNothingAndQuotesIt) {
  const std::u16string withNul(u"/a\0b", 4);

  EXPECT_THAT([&] { return GetIRIFromString(withNul); },
              FailsAbout(withNul, "malformed identifier \"/a\\u{0}b\": a path cannot hold NUL"));
  EXPECT_THAT([] { return GetIRIFromString(u"/\xD800"); }, FailsWith(std::errc::invalid_argument));
}

// The platform that makes the identifier does so, too, and would hide it if the library did not.
TEST(GetIRIFromString, HandsThePathOnInNativeFormAsAMessageShows) {
  const std::u16string withNul(u"//a//\0", 6);

  EXPECT_THAT([&] { return GetIRIFromString(withNul); }, FailsQuoting("/a/\\u{0}"));
}

}  // namespace
}  // namespace Quorvex::PathManagement
