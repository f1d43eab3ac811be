#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/storage_matchers.hpp>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FailsAbout;

std::u16string StringOf(const std::u16string& iri) { return GetStringFromIRI(AbsoluteIRI(iri)); }

TEST(GetStringFromIRI, OfAFileIdentifierIsTheNativePathWithoutScheme) {
  EXPECT_EQ(StringOf(u"file:///a/b"), u"/a/b");
  EXPECT_EQ(StringOf(u"file:///"), u"/");
  EXPECT_EQ(StringOf(u"file:///a%20b/%25%3F%23/%FF"), u"/a b/%?#/\xDCFF");
}

TEST(GetStringFromIRI, OfAFileIdentifierDoesNotDependOnTheSpellingOfTheScheme) {
  EXPECT_EQ(StringOf(u"FILE:///a"), u"/a");
}

TEST(GetStringFromIRI, OfARootlessFileIdentifierIsTheRelativePath) {
  EXPECT_EQ(StringOf(u"file:a/b"), u"a/b");
  EXPECT_EQ(StringOf(u"file:"), u"");
}

TEST(GetStringFromIRI, OfAnotherSchemeIsTheWholeIdentifier) {
  EXPECT_EQ(StringOf(u"memory:///a/b"), u"memory:///a/b");
  EXPECT_EQ(StringOf(u"memory://host/a"), u"memory://host/a");
  EXPECT_EQ(StringOf(u"files:///a"), u"files:///a");
  EXPECT_EQ(StringOf(u"fil:///a"), u"fil:///a");
}

TEST(GetStringFromIRI, DecodesTheEscapesOfAnotherScheme) {
  EXPECT_EQ(StringOf(u"memory:///a%23b/%25%3F/%C3%A9%FF"), u"memory:///a#b/%?/\u00E9\xDCFF");
  EXPECT_EQ(StringOf(u"memory:///a%2Fb"), u"memory:///a/b");
}

TEST(GetStringFromIRI, DecodesOnceOnly) { EXPECT_EQ(StringOf(u"memory:///%2541"), u"memory:///%41"); }

TEST(GetStringFromIRI, RefusesAFileIdentifierThatNoNativePathExpresses) {
  EXPECT_THAT([] { return StringOf(u"file:///a%2Fb"); },
              FailsAbout(u"file:///a%2Fb", "cannot convert \"file:///a%2Fb\": a name in it holds '/'"));
  EXPECT_THAT([] { return StringOf(u"file:///a%00"); },
              FailsAbout(u"file:///a%00", "cannot convert \"file:///a%00\": a name in it holds NUL"));
  EXPECT_THAT([] { return StringOf(u"file://host/a"); },
              FailsAbout(u"file://host/a", "cannot convert \"file://host/a\": it names a host"));
}

}  // namespace
}  // namespace Quorvex::PathManagement
