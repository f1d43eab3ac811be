// Folders that change at random while they are watched: in the end the path holds what a fresh scan finds.

#include <gmock/gmock.h>

#include <iostream>
#include <support/random_disk.hpp>
#include <support/random_source.hpp>

#include "shown.hpp"
#include "watched_disk.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using PathManagement::support::RandomDisk;
using PathManagement::support::RandomSource;

// All hits of some names, entries by location: what an index answers, without regard to which objects.
Texts Answers(const FolderPath& path) {
  Texts answers;
  for (const char16_t* const name : {u"a", u"b", u"c", u"noextension", u"i", u"p/a", u"A/b", u"p/q/a", u"linked"}) {
    for (const auto& found : path.FindAllInScope(kEveryKind, Wanted{name, {u".x", u".y", u""}}.Target(), kNative)) {
      answers.push_back(Shown(found));
    }
  }
  for (const char16_t* const name : {u"A", u"B"}) {
    for (const auto& folder : path.GetMethodEntriesByName(kEveryKind, name, kNative)) answers.push_back(Shown(folder));
  }
  for (const auto& entry : path.GetMethodEntries()) {
    answers.push_back(Shown(entry) + " in " + Shown(path.GetParentEntryForEntry(*entry)));
  }
  for (const auto& problem : path.GetProblems()) answers.push_back(Shown(problem));
  return answers;
}

void ExpectTheAnswersOfAFreshScan(const FolderPath& path) {
  std::vector<AbsoluteIRI> folders;
  for (const auto& entry : *path.GetMainEntries()) folders.push_back(entry->GetAbsoluteIRI());
  EXPECT_EQ(Answers(path), Answers(*ReadPath(folders)));
}

class WatchedPathAgainstRandomChanges : public testing::Test {
 protected:
  WatchedPathAgainstRandomChanges() { std::cout << random.Describe() << '\n'; }

  // Changes the folders in bouts; while each lasts, the path is refreshed now and then.
  void ChangeAndCompare(WatchedDisk& watched, int bouts, int changes) {
    for (int bout = 0; bout < bouts && !HasFailure(); ++bout) {
      SCOPED_TRACE(random.Describe() + ", bout " + std::to_string(bout));
      for (int change = 0; change < changes; ++change) {
        disk.Change();
        if (!random.OneIn(5)) continue;
        DispatchSessionEvents();
        static_cast<void>(watched.watched->Refresh());
      }
      ASSERT_TRUE(watched.AwaitFreshness());
      ExpectTheAnswersOfAFreshScan(*watched.GetPath());
    }
  }

  RandomSource random = RandomSource::OfThisRun(20'270);
  RandomDisk disk{random};
};

TEST_F(WatchedPathAgainstRandomChanges, HoldsWhatAFreshScanFinds) {
  WatchedDisk watched(disk.GetMainFolders());

  ChangeAndCompare(watched, 250, 12);
}

TEST_F(WatchedPathAgainstRandomChanges, HoldsWhatAFreshScanFindsWhereSomeWatchesAreRefused) {
  auto trouble = std::make_shared<WatchTrouble>();
  trouble->RefuseWatches([](const std::string& path) { return std::hash<std::string>()(path) % 3 == 0 ? ENOSPC : 0; });
  WatchedDisk watched(disk.GetMainFolders(), std::chrono::milliseconds(5), trouble);

  ChangeAndCompare(watched, 100, 12);
}

TEST_F(WatchedPathAgainstRandomChanges, HoldsWhatAFreshScanFindsWhereAllWatchesAreRefused) {
  auto trouble = std::make_shared<WatchTrouble>();
  trouble->RefuseWatches([](const std::string& /*path*/) { return EMFILE; });
  WatchedDisk watched(disk.GetMainFolders(), std::chrono::milliseconds(5), trouble);

  ChangeAndCompare(watched, 100, 12);
}

TEST_F(WatchedPathAgainstRandomChanges, HoldsWhatAFreshScanFindsAfterTheSystemLostEvents) {
  WatchedDisk watched(disk.GetMainFolders());
  ASSERT_TRUE(watched.AwaitFreshness());

  watched.trouble->Pause();
  disk.Flood(10'000);
  for (int change = 0; change < 300; ++change) disk.Change();
  watched.trouble->Resume();

  ASSERT_TRUE(watched.AwaitFreshness());
  ExpectTheAnswersOfAFreshScan(*watched.GetPath());
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
