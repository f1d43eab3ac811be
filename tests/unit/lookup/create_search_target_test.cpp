#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using detail::SearchTarget;
using testing::ElementsAre;

using Extensions = std::vector<std::u16string>;

const Extensions& SrcAndObj() {
  static const Extensions extensions = {u".src", u".obj"};
  return extensions;
}

const Extensions& NoExtensions() {
  static const Extensions extensions;
  return extensions;
}

/// Passes for a name that the target takes as it is, and its list too, without copying either.
void ExpectBorrowed(const std::u16string& name, const Extensions& extensions) {
  const SearchTarget target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);

  EXPECT_FALSE(target.OwnsItsParts());
  EXPECT_EQ(&target.GetBaseName(), &name);
  EXPECT_EQ(&target.GetExtensions(), &extensions);
}

/// Passes for a name that the target cuts into these two parts, which are its own.
void ExpectOwned(const std::u16string& name, const Extensions& extensions, const std::u16string& baseName,
                 const std::u16string& extension) {
  const SearchTarget target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);

  EXPECT_TRUE(target.OwnsItsParts());
  EXPECT_EQ(target.GetBaseName(), baseName);
  EXPECT_THAT(target.GetExtensions(), ElementsAre(extension));
}

TEST(CreateSearchTarget, BorrowsANameWithoutExtensionAndTheList) {
  ExpectBorrowed(u"foo", SrcAndObj());
  ExpectBorrowed(u"a/foo", SrcAndObj());
  ExpectBorrowed(u"@Cls/foo", SrcAndObj());
}

TEST(CreateSearchTarget, LooksOnlyForTheExtensionThatTheNameHas) {
  ExpectOwned(u"foo.src", SrcAndObj(), u"foo", u".src");
  ExpectOwned(u"foo.obj", SrcAndObj(), u"foo", u".obj");
  ExpectOwned(u"a/foo.src", SrcAndObj(), u"a/foo", u".src");
}

TEST(CreateSearchTarget, PrefersAnExtensionThatTheListDoesNotHave) {
  ExpectOwned(u"foo.txt", SrcAndObj(), u"foo", u".txt");
  ExpectOwned(u"foo.txt", NoExtensions(), u"foo", u".txt");
  ExpectOwned(u"foo.SRC", SrcAndObj(), u"foo", u".SRC");
}

TEST(CreateSearchTarget, CutsAtTheLastDot) {
  ExpectOwned(u"foo.tar.gz", SrcAndObj(), u"foo.tar", u".gz");
  ExpectOwned(u"foo..src", SrcAndObj(), u"foo.", u".src");
  ExpectOwned(u"a.b/foo.src", SrcAndObj(), u"a.b/foo", u".src");
}

TEST(CreateSearchTarget, TakesALoneDotAtTheEndForTheExtension) {
  ExpectOwned(u"foo.", SrcAndObj(), u"foo", u".");
  ExpectOwned(u"foo.", NoExtensions(), u"foo", u".");
  ExpectOwned(u"foo.src.", SrcAndObj(), u"foo.src", u".");
  ExpectOwned(u".", SrcAndObj(), u"", u".");
  ExpectOwned(u"..", SrcAndObj(), u".", u".");
  ExpectOwned(u"a/.", SrcAndObj(), u"a/", u".");
}

TEST(CreateSearchTarget, LooksForTheExactNameWhenThereIsNoExtensionAtAll) {
  ExpectOwned(u"foo", NoExtensions(), u"foo", u"");
  ExpectOwned(u"a/foo", NoExtensions(), u"a/foo", u"");
  ExpectOwned(u"a.b/c", NoExtensions(), u"a.b/c", u"");
}

TEST(CreateSearchTarget, DoesNotTakeTheDotOfAFolderForAnExtension) {
  ExpectBorrowed(u"a.b/c", SrcAndObj());
  ExpectBorrowed(u"../c", SrcAndObj());
}

TEST(CreateSearchTarget, DoesNotTakeTheDotOfAHiddenFileForAnExtension) {
  ExpectBorrowed(u".hidden", SrcAndObj());
  ExpectBorrowed(u"a/.hidden", SrcAndObj());
  ExpectOwned(u".hidden.src", SrcAndObj(), u".hidden", u".src");
}

TEST(CreateSearchTarget, CutsAHiddenFileAtItsDotWhenTheListIsEmpty) {
  ExpectOwned(u".hidden", NoExtensions(), u"", u".hidden");
  ExpectOwned(u"a/.hidden", NoExtensions(), u"a/", u".hidden");
}

TEST(CreateSearchTarget, KeepsTrailingSeparatorsInAnExactName) {
  ExpectOwned(u"a.b/", SrcAndObj(), u"a.b/", u"");
  ExpectOwned(u"a.b//", SrcAndObj(), u"a.b//", u"");
  ExpectOwned(u"a.b/", NoExtensions(), u"a.b/", u"");
  ExpectOwned(u"a./", SrcAndObj(), u"a./", u"");
  ExpectOwned(u"a/", NoExtensions(), u"a/", u"");
}

TEST(CreateSearchTarget, BorrowsANameWithTrailingSeparatorsAndNoDot) {
  ExpectBorrowed(u"a/", SrcAndObj());
  ExpectBorrowed(u"/", SrcAndObj());
  ExpectOwned(u"/", NoExtensions(), u"/", u"");
}

TEST(CreateSearchTarget, AcceptsAnEmptyName) {
  ExpectBorrowed(u"", SrcAndObj());
  ExpectOwned(u"", NoExtensions(), u"", u"");
}

TEST(CreateSearchTarget, BorrowsAListThatHoldsOnlyAnEmptyExtension) { ExpectBorrowed(u"foo", {u""}); }

TEST(CreateSearchTarget, OutlivesTheNameAndTheListWhenItOwnsItsParts) {
  auto name = std::make_unique<std::u16string>(u"a_name_that_is_too_long_to_stand_inside_the_string.src");
  auto extensions = std::make_unique<Extensions>(SrcAndObj());

  const SearchTarget target = CreateSearchTargetWithExtensionInFilenamePreferred(*name, *extensions);
  name.reset();
  extensions.reset();

  EXPECT_EQ(target.GetBaseName(), u"a_name_that_is_too_long_to_stand_inside_the_string");
  EXPECT_THAT(target.GetExtensions(), ElementsAre(u".src"));
}

}  // namespace
}  // namespace Quorvex::PathManagement
