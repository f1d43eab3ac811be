// Queries of a snapshot touch nothing but its file.

#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <search_path_environment/snapshot_file.hpp>
#include <search_path_environment/utc_time.hpp>
#include <unit/environment/memory_storage.hpp>

#include "commands.hpp"
#include "outcome.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathEnvironment::PathSnapshot;
using Quorvex::PathEnvironment::TimeFromText;
using testing::HasSubstr;
using testing::Not;

const auto kNoon = *TimeFromText("2026-11-21T12:00:00Z");
constexpr const char* kFile = "file-of-snapshot:///then";

/// A snapshot of a tree, and the tree, which counts what it is asked.
class AQueryOfASnapshot : public testing::Test {
 protected:
  AQueryOfASnapshot() {
    tree_
        .WithFiles(
            {u"/a/greet.vnx", u"/a/private/helper.vnx", u"/b/greet.vnx", u"/b/@Shape/Shape.vnx", u"/b/plain/lost.vnx"})
        .WithLink(u"/link", u"/a");
    const PathSnapshot snapshot{tree_.Path({u"/link", u"/b", u"/missing"}), kNoon};
    WriteSnapshotFile(VornixStorageSystem::GetStorageSystemReference(), InMemory(u"/then", u"file-of-snapshot"),
                      snapshot);
    calls_ = tree_.Through<CountingStorageProvider>();
  }

  // What `run` wrote, or an expectation fails because the tree was asked.
  template <class Run, class Options>
  std::string Asked(const Run& run, Options options) {
    options.path.snapshot = kFile;
    const Outcome outcome = OutcomeOf([&] { return run(options); });
    EXPECT_EQ(calls_->GetCount(), 0U) << outcome.out << outcome.err;
    return outcome.out + outcome.err;
  }

  static PathOptions Masking(const std::string& folder) {
    PathOptions path;
    path.masks.push_back(folder);
    return path;
  }

  MemoryStorage files_ = MemoryStorage(Quorvex::PathEnvironment::NameComparison::Exact, u"file-of-snapshot");
  MemoryStorage tree_;
  std::shared_ptr<CountingStorageProvider> calls_;
};

TEST_F(AQueryOfASnapshot, FindsWithoutTheFolders) {
  WhichOptions which;
  which.names = {"greet", "Shape", "nothing"};
  which.all = true;

  const std::string out = Asked(RunWhich, which);

  EXPECT_THAT(out, HasSubstr("memory:///link/greet.vnx\nmemory:///b/greet.vnx\nmemory:///b/@Shape/Shape.vnx\n"));
  EXPECT_THAT(out, HasSubstr("memory:///missing"));
}

TEST_F(AQueryOfASnapshot, ListsAndMatchesWithoutTheFolders) {
  FilesOptions files;
  files.extensions = {".vnx"};
  EXPECT_THAT(Asked(RunFiles, files), HasSubstr("memory:///link/private/helper.vnx\n"));

  MatchOptions match;
  match.partial = "Shape";
  EXPECT_THAT(Asked(RunMatch, match), HasSubstr("memory:///b/@Shape\n"));
}

TEST_F(AQueryOfASnapshot, AsksFromAFolderUnderItsSpellingAndItsRealPlace) {
  for (const std::string folder : {"memory:///link", "memory:///a"}) {
    WhichOptions which;
    which.names = {"helper"};
    which.from = folder;
    EXPECT_THAT(Asked(RunWhich, which), HasSubstr("memory:///link/private/helper.vnx\n")) << folder;
  }
  WhichOptions which;
  which.names = {"helper"};
  which.from = "memory:///elsewhere";
  EXPECT_THAT(Asked(RunWhich, which), HasSubstr("is not on the path"));
}

TEST_F(AQueryOfASnapshot, MasksAFolderUnderItsSpellingAndItsRealPlace) {
  for (const std::string folder : {"memory:///link", "memory:///a"}) {
    WhichOptions which;
    which.names = {"greet"};
    which.path = Masking(folder);
    EXPECT_THAT(Asked(RunWhich, which), HasSubstr("memory:///b/greet.vnx\n")) << folder;
  }
  WhichOptions which;
  which.names = {"greet"};
  which.path = Masking("memory:///elsewhere");
  EXPECT_THAT(Asked(RunWhich, which), HasSubstr("is no folder of the path"));
}

TEST_F(AQueryOfASnapshot, LooksForWhatIsNearInWhatWasKeptAlone) {
  WhyOptions why;
  why.name = "helper";
  EXPECT_THAT(Asked(RunWhy, why), HasSubstr("memory:///link/private/helper.vnx"));

  why.name = "lost";
  EXPECT_THAT(Asked(RunWhy, why), Not(HasSubstr("/b/plain")));

  why.name = "greet";
  why.from = "memory:///a";
  why.path = Masking("memory:///a");
  EXPECT_THAT(Asked(RunWhy, why), HasSubstr("memory:///b/greet.vnx"));
}

}  // namespace
}  // namespace vornixpath
