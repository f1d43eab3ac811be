#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/path.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <support/random_source.hpp>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using fl::filesystem::path;
using support::RandomSource;

TEST(RemoveRootPathFromAbsolutePath, CutsTheRootOff) {
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"/a/b")), u"a/b");
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"/a/")), u"a/");
}

TEST(RemoveRootPathFromAbsolutePath, CutsARootOfSeveralSeparatorsOffWhole) {
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"///a//b")), u"a//b");
}

TEST(RemoveRootPathFromAbsolutePath, LeavesNothingOfARoot) {
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"/")), u"");
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"//")), u"");
}

TEST(RemoveRootPathFromAbsolutePath, CutsOnlyAtTheBeginningThoughTheRootsTextComesAgain) {
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"/a/b/c/")), u"a/b/c/");
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"//a//b")), u"a//b");
}

TEST(RemoveRootPathFromAbsolutePath, LeavesAPathWithoutRootUnchanged) {
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"a/b")), u"a/b");
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path(u"./a")), u"./a");
  EXPECT_EQ(RemoveRootPathFromAbsolutePath(path()), u"");
}

TEST(RemoveRootPathFromAbsolutePath, LeavesThePathItselfAlone) {
  const path original(u"/a/b");

  static_cast<void>(RemoveRootPathFromAbsolutePath(original));

  EXPECT_EQ(original, path(u"/a/b"));
}

// A root that its own text does not hold would be reported as std::out_of_range; a root is a beginning of its text, so
// no text gets there.
TEST(RemoveRootPathFromAbsolutePath, SplitsEveryTextIntoItsRootAndTheRest) {
  const std::vector<char16_t> units = {u'/', u'\\', u'.', u'a', u'C', u':', u'?', u' ', u'\xDCFF'};
  RandomSource random = RandomSource::OfThisRun(3121);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(20'000); ++round) {
    const auto drawn = random.ListOf(8, [&] { return random.Pick(units); });
    const std::u16string text(drawn.begin(), drawn.end());
    SCOPED_TRACE(fl::filesystem::to_displayed_text(text));

    const std::u16string rest = RemoveRootPathFromAbsolutePath(path(text));

    ASSERT_EQ(fl::filesystem::detail::extract_root_path(text) + rest, text);
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement
