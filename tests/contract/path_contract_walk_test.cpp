// Visiting entries one by one, and stopping.

#include <mutex>
#include <stdexcept>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;

std::vector<EntryPtr> Walked(const IPath& path, SearchScope scope) {
  std::vector<EntryPtr> visited;
  EXPECT_FALSE(path.ForEachEntry(scope, [&](const EntryPtr& entry) {
    visited.push_back(entry);
    return false;
  }));
  return visited;
}

/// In the order of the calls, of which several may have come at once.
std::vector<EntryPtr> WalkedConcurrently(const IPath& path, SearchScope scope) {
  std::mutex mutex;
  std::vector<EntryPtr> visited;
  EXPECT_FALSE(path.ConcurrentForEachEntry(scope, [&](const EntryPtr& entry) {
    const std::scoped_lock lock(mutex);
    visited.push_back(entry);
    return false;
  }));
  return visited;
}

TEST_P(PathContract, VisitsEachFolderAndThenItsMethodEntries) {
  EXPECT_EQ(Walked(Path(), kEveryKind), Entries()) << testing::PrintToString(Shown(Walked(Path(), kEveryKind)));
}

TEST_P(PathContract, VisitsTheEntriesThatItsFoldersVisitOneAfterAnother) {
  std::vector<EntryPtr> expected;
  for (const EntryPtr& main : MainEntries()) {
    main->ForEachEntryInScope(VisibleScope, [&](const EntryPtr& entry) {
      expected.push_back(entry);
      return false;
    });
  }

  EXPECT_EQ(Walked(Path(), VisibleScope), expected) << testing::PrintToString(Shown(Walked(Path(), VisibleScope)));
}

TEST_P(PathContract, VisitsOnlyKindsInTheScope) {
  for (const PathEntryType kind : kEachKind) EXPECT_EQ(Walked(Path(), Only(kind)), EntriesIn(Only(kind)));
  EXPECT_EQ(Walked(Path(), MainScope), *Path().GetMainEntries());
  EXPECT_EQ(Walked(Path(), VisibleScope), EntriesIn(VisibleScope));
  EXPECT_THAT(Walked(Path(), kNoKind), IsEmpty());
}

TEST_P(PathContract, VisitsAnEntryOnceHoweverOftenTheScopeNamesItsKind) {
  constexpr std::array kMainTwice = {PathEntryType::Main, PathEntryType::Class, PathEntryType::Main};
  const SearchScope scope(kMainTwice.data(), kMainTwice.data() + kMainTwice.size());

  EXPECT_EQ(Walked(Path(), scope), EntriesIn(scope));
}

TEST_P(PathContract, EndsAWalkWhereverItIsStopped) {
  const std::vector<EntryPtr> entries = Entries();

  for (std::size_t last = 0; last < entries.size(); ++last) {
    std::vector<EntryPtr> visited;
    const bool wasStopped = Path().ForEachEntry(kEveryKind, [&](const EntryPtr& entry) {
      visited.push_back(entry);
      return entry == entries[last];
    });

    EXPECT_TRUE(wasStopped) << Shown(entries[last]);
    EXPECT_EQ(visited, std::vector<EntryPtr>(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(last) + 1));
  }
}

TEST_P(PathContract, LetsAnExceptionOutOfAWalk) {
  int visits = 0;
  const auto fail = [&](const EntryPtr&) -> bool {
    ++visits;
    throw std::runtime_error("enough");
  };

  EXPECT_THROW(Path().ForEachEntry(kEveryKind, fail), std::runtime_error);
  EXPECT_EQ(visits, 1);
  EXPECT_EQ(Walked(Path(), kEveryKind), Entries()) << "nothing of the failed walk is left";
}

TEST_P(PathContract, AnswersWhileItIsWalked) {
  EXPECT_FALSE(Path().ForEachEntry(kEveryKind, [&](const EntryPtr& entry) {
    EXPECT_TRUE(Path().IsEntryOnPath(*entry));
    EXPECT_THAT(Walked(Path(), MainScope), SizeIs(4));
    EXPECT_EQ(Shown(Path().FindFirstInScope(kEveryKind, Wanted{u"deep"}.Target(), kNative)), "/a/+pkg/+sub/deep.vnx");
    return false;
  }));
}

TEST_P(PathContract, VisitsTheSameEntriesConcurrently) {
  for (const SearchScope scope : {kEveryKind, MainScope, VisibleScope, Only(PathEntryType::Private), kNoKind}) {
    EXPECT_THAT(WalkedConcurrently(Path(), scope), UnorderedElementsAreArray(EntriesIn(scope)));
  }
}

TEST_P(PathContract, EndsAConcurrentWalkThatIsStopped) {
  const std::vector<EntryPtr> entries = Entries();

  for (const EntryPtr& last : entries) {
    std::mutex mutex;
    std::vector<EntryPtr> visited;
    const bool wasStopped = Path().ConcurrentForEachEntry(kEveryKind, [&](const EntryPtr& entry) {
      const std::scoped_lock lock(mutex);
      visited.push_back(entry);
      return entry == last;
    });

    EXPECT_TRUE(wasStopped) << Shown(last);
    EXPECT_THAT(visited, testing::Contains(last));
    EXPECT_THAT(entries, IsSupersetOf(visited));
  }
}

TEST_P(PathContract, VisitsNothingWithoutFolders) {
  const PathPtr path = Make({});
  int visits = 0;
  const auto count = [&](const EntryPtr&) { return ++visits > 0; };

  EXPECT_FALSE(path->ForEachEntry(kEveryKind, count));
  EXPECT_FALSE(path->ConcurrentForEachEntry(kEveryKind, count));
  EXPECT_EQ(visits, 0);
}

}  // namespace
}  // namespace Quorvex::PathManagement::contract
