#include "folder_changes.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <support/random_source.hpp>
#include <unit/environment/memory_storage.hpp>

namespace vornixpath {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathManagement::support::RandomSource;
using testing::ElementsAre;
using testing::IsEmpty;
using Folders = std::vector<AbsoluteIRI>;

// One folder a letter.
Folders FoldersNamed(const std::u16string& letters) {
  Folders folders;
  for (const char16_t letter : letters) folders.push_back(InMemory(u"/" + std::u16string(1, letter)));
  return folders;
}

// "+a": the mark and the letter.
std::vector<std::string> Changes(const std::u16string& before, const std::u16string& after) {
  std::vector<std::string> texts;
  for (const FolderChange& change : ChangesBetween(FoldersNamed(before), FoldersNamed(after))) {
    const std::string words = InWords(change);
    texts.push_back({words.front(), words.back()});
  }
  return texts;
}

std::size_t LongestCommonSubsequence(const std::u16string& left, const std::u16string& right) {
  if (left.empty() || right.empty()) return 0;
  const std::u16string leftRest = left.substr(1);
  const std::u16string rightRest = right.substr(1);
  if (left.front() == right.front()) return 1 + LongestCommonSubsequence(leftRest, rightRest);
  return std::max(LongestCommonSubsequence(leftRest, right), LongestCommonSubsequence(left, rightRest));
}

std::u16string WithLetters(const std::u16string& text, const std::function<bool(char16_t)>& isWanted) {
  std::u16string letters;
  std::copy_if(text.begin(), text.end(), std::back_inserter(letters), isWanted);
  return letters;
}

TEST(FolderChanges, AreNoneBetweenEqualPaths) {
  EXPECT_THAT(Changes(u"", u""), IsEmpty());
  EXPECT_THAT(Changes(u"abc", u"abc"), IsEmpty());
}

TEST(FolderChanges, TellAdditionsInTheirOrderAndThenRemovals) {
  EXPECT_THAT(Changes(u"ab", u"yaxz"), ElementsAre("+y", "+x", "+z", "-b"));
  EXPECT_THAT(Changes(u"", u"ba"), ElementsAre("+b", "+a"));
  EXPECT_THAT(Changes(u"ba", u""), ElementsAre("-b", "-a"));
}

TEST(FolderChanges, CountAsMovedWhatWasTakenToTheBeginningOrTheEndAndNothingElse) {
  EXPECT_THAT(Changes(u"abcd", u"dabc"), ElementsAre("~d"));
  EXPECT_THAT(Changes(u"abcd", u"bcda"), ElementsAre("~a"));
  EXPECT_THAT(Changes(u"abcd", u"bxacd"), ElementsAre("~b", "+x"));
}

TEST(FolderChanges, GoByTheFirstPlaceOfAFolderThatIsRepeated) {
  EXPECT_THAT(Changes(u"aba", u"ab"), IsEmpty());
  EXPECT_THAT(Changes(u"aa", u"aab"), ElementsAre("+b"));
  EXPECT_THAT(Changes(u"aa", u""), ElementsAre("-a"));
}

TEST(FolderChanges, MoveAsFewFoldersAsCanBe) {
  RandomSource random = RandomSource::OfThisRun(20);
  SCOPED_TRACE(random.Describe());
  for (int round = 0; round < 500; ++round) {
    std::u16string before = u"abcdefg";
    std::u16string after = u"abcdexyz";
    for (std::size_t i = 1; i < before.size(); ++i) std::swap(before[i], before[random.Below(i + 1)]);
    for (std::size_t i = 1; i < after.size(); ++i) std::swap(after[i], after[random.Below(i + 1)]);

    const auto changes = ChangesBetween(FoldersNamed(before), FoldersNamed(after));

    const auto count = [&changes](ChangeKind kind) {
      return static_cast<std::size_t>(std::count_if(
          changes.begin(), changes.end(), [kind](const FolderChange& change) { return change.kind == kind; }));
    };
    EXPECT_EQ(count(ChangeKind::Moved), 5 - LongestCommonSubsequence(before, after));
    EXPECT_EQ(count(ChangeKind::Added), 3U);
    EXPECT_EQ(count(ChangeKind::Removed), 2U);

    // Whatever is left alone keeps its order.
    const auto isLeftAlone = [&changes](char16_t letter) {
      const AbsoluteIRI folder = InMemory(u"/" + std::u16string(1, letter));
      return std::none_of(changes.begin(), changes.end(),
                          [&folder](const FolderChange& change) { return change.folder == folder; });
    };
    EXPECT_EQ(WithLetters(before, isLeftAlone), WithLetters(after, isLeftAlone));
  }
}

}  // namespace
}  // namespace vornixpath
