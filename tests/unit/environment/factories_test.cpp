#include <gmock/gmock.h>

#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <sstream>
#include <stdexcept>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::VornixStorageSystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(FolderPathFactory, MakesALeafPathBehindTheContract) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f"});
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
  const FolderPathFactory factory;
  const PathManagement::IPathFactory& contract = factory;

  const auto path = contract.CreatePath({InMemory(u"/a")}, entries);

  EXPECT_NE(dynamic_cast<const FolderPath*>(path.get()), nullptr);
  EXPECT_THAT(AllShown(*path->GetMainEntries()), ElementsAre("/a"));
}

// Makes no entries at all.
class BarrenFactory : public PathManagement::IPathEntryFactory {
 public:
  [[nodiscard]] EntryPtr CreateMainEntry(const AbsoluteIRI&) const override { return nullptr; }
  void WriteToolboxCache(std::ostream&, const AbsoluteIRI&) const override {}
};

TEST(FolderPathFactory, RefusesEntriesThatAreNotItsOwnAndNamesTheFolder) {
  const BarrenFactory entries;

  try {
    static_cast<void>(FolderPathFactory().CreatePath({InMemory(u"/the/folder")}, entries));
    FAIL() << "nothing was thrown";
  } catch (const std::invalid_argument& refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("memory:///the/folder"));
  }
}

std::shared_ptr<const FolderEntry> Read(const FolderEntryFactory& factory, const std::u16string& folder) {
  return std::dynamic_pointer_cast<const FolderEntry>(factory.CreateMainEntry(InMemory(folder)));
}

TEST(FolderEntryFactory, KeepsTheEntryOfAFolderThatHasNotChanged) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/a/+p/@c/g", u"/a/private/h"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
  const FolderEntryFactory copy = factory;

  const auto before = Read(factory, u"/a");

  EXPECT_EQ(Read(factory, u"/a"), before);
  EXPECT_EQ(Read(copy, u"/a"), before) << "copies share what they know";
  EXPECT_EQ(Read(factory, u"/missing"), Read(factory, u"/missing")) << "a folder that is missing still has not changed";
}

TEST(FolderEntryFactory, MakesNewEntriesFromAChangeUpAndKeepsTheRest) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/a/+p/@c/g", u"/a/+p/@d/g", u"/a/+q/g", u"/a/private/h"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
  const auto before = Read(factory, u"/a");
  storage.WithFiles({u"/a/+p/@c/new"});

  const auto after = Read(factory, u"/a");

  EXPECT_NE(after, before);
  EXPECT_EQ(after->GetPrivateEntry(), before->GetPrivateEntry());
  const auto packages = *after->GetSecondEntryGroup();
  const auto packagesBefore = *before->GetSecondEntryGroup();
  EXPECT_NE(packages[0], packagesBefore[0]);
  EXPECT_EQ(packages[1], packagesBefore[1]);
  const auto classes = *packages[0]->GetFirstEntryGroup();
  const auto classesBefore = *packagesBefore[0]->GetFirstEntryGroup();
  EXPECT_NE(classes[0], classesBefore[0]);
  EXPECT_EQ(classes[1], classesBefore[1]);
}

TEST(FolderEntryFactory, GoesOnWithTheEntriesOfAPredecessor) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/foo.vnx", u"/b/foo.vnx"});
  const auto before = storage.Path({u"/a", u"/b"});
  storage.WithFiles({u"/b/new.vnx"});

  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference(), *before);
  const auto a = factory.CreateMainEntry(InMemory(u"/a"));
  const auto b = factory.CreateMainEntry(InMemory(u"/b"));

  EXPECT_EQ(a, before->GetMainEntries()->front());
  EXPECT_NE(b, before->GetMainEntries()->back());
}

TEST(FolderEntryFactory, MakesANewEntryWhateverKindOfChangeThereWas) {
  const std::vector<std::function<void(MemoryStorage&)>> changes = {
      [](MemoryStorage& storage) { storage.WithFiles({u"/a/g"}); },
      [](MemoryStorage& storage) { storage.GetProvider().Remove(InMemory(u"/a/f")); },
      [](MemoryStorage& storage) { storage.WithFolders({u"/a/private"}); },
      [](MemoryStorage& storage) { storage.WithFolders({u"/a/+p/resources"}); },
      [](MemoryStorage& storage) {
        storage.GetProvider().Rename(InMemory(u"/a"), InMemory(u"/moved"));
        storage.WithLink(u"/a", u"/elsewhere/a");
      },
      [](MemoryStorage& storage) { storage.WithLink(u"/a/+p/+loop", u"/a"); },
  };
  for (std::size_t change = 0; change < changes.size(); ++change) {
    MemoryStorage storage;
    storage.WithFiles({u"/a/f", u"/a/+p/g", u"/elsewhere/a/f", u"/elsewhere/a/+p/g"});
    const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
    const auto before = Read(factory, u"/a");

    changes[change](storage);

    EXPECT_NE(Read(factory, u"/a"), before) << "change " << change;
  }
}

TEST(FolderEntryFactory, ForgetsEntriesThatNobodyHolds) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());

  auto entry = Read(factory, u"/a");
  const std::weak_ptr<const FolderEntry> watched = entry;
  entry.reset();

  EXPECT_TRUE(watched.expired());
  EXPECT_NE(Read(factory, u"/a"), nullptr);
}

TEST(FolderPathFactory, SharesEntriesBetweenThePathsOfOneEntryFactory) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f", u"/b/f", u"/c/f"});
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
  const auto pathOver = [&](const std::vector<AbsoluteIRI>& folders) {
    return *FolderPathFactory().CreateFolderPath(folders, entries)->GetMainEntries();
  };
  const auto before = pathOver({InMemory(u"/a"), InMemory(u"/b"), InMemory(u"/c")});
  storage.WithFiles({u"/b/g"});

  const auto after = pathOver({InMemory(u"/c"), InMemory(u"/b"), InMemory(u"/a")});

  EXPECT_EQ(after[0], before[2]);
  EXPECT_NE(after[1], before[1]);
  EXPECT_EQ(after[2], before[0]);
}

std::u16string NumberedFolder(std::size_t number) {
  const std::string digits = std::to_string(number);
  return u"/f" + std::u16string(digits.begin(), digits.end());
}

TEST(FolderPathFactory, ReadsALongPathWithSeveralThreadsInTheOrderGiven) {
  MemoryStorage storage;
  std::vector<std::u16string> folders;
  for (std::size_t number = 0; number < 500; ++number) {
    const std::u16string folder = NumberedFolder(number);
    folders.push_back(folder);
    if (number % 7 != 0) storage.WithFiles({folder + u"/only" + folder.substr(1), folder + u"/@c/m"});
  }

  const auto path = storage.Path(folders);

  const auto entries = *path->GetMainEntries();
  ASSERT_EQ(entries.size(), folders.size());
  for (std::size_t number = 0; number < folders.size(); ++number) {
    ASSERT_EQ(entries[number]->GetAbsoluteIRI(), InMemory(folders[number]));
    ASSERT_EQ(entries[number]->GetItems()->size(), number % 7 != 0 ? 1U : 0U);
  }
  EXPECT_EQ(path->GetProblems().size(), 72U) << "the missing ones";
  EXPECT_EQ(path->GetProblems()[1].position, 7U);
}

TEST(FolderPathFactory, LetsAFailureOnAnyThreadPass) {
  const BarrenFactory entries;
  std::vector<AbsoluteIRI> folders;
  for (std::size_t number = 0; number < 500; ++number) folders.push_back(InMemory(NumberedFolder(number)));

  EXPECT_THROW(static_cast<void>(FolderPathFactory().CreatePath(folders, entries)), std::invalid_argument);
}

TEST(FolderEntryFactory, ReadsEachTimeAnew) {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());

  const auto before = factory.CreateMainEntry(InMemory(u"/a"));
  storage.WithFiles({u"/a/g"});
  const auto after = factory.CreateMainEntry(InMemory(u"/a"));

  EXPECT_NE(before, after);
  EXPECT_THAT(AllShown(*before->GetItems()), ElementsAre("f"));
  EXPECT_THAT(AllShown(*after->GetItems()), ElementsAre("f", "g"));
}

TEST(FolderEntryFactory, SeesStorageMountedAfterItWasMade) {
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
  MemoryStorage storage;
  storage.WithFiles({u"/a/f"});

  EXPECT_THAT(AllShown(*factory.CreateMainEntry(InMemory(u"/a"))->GetItems()), ElementsAre("f"));
}

Texts FoldersWritten(const FolderEntryFactory& factory, const MemoryStorage& storage, const AbsoluteIRI& root) {
  std::ostringstream out;
  factory.WriteToolboxCache(out, root);
  storage.GetProvider().AddFile(u"/cache", out.str());
  Texts folders;
  const auto cache =
      ToolboxCache::Open(VornixStorageSystem::GetStorageSystemReference(), InMemory(u"/cache"), CacheTrust::Blind);
  for (const auto& entry : cache.GetMainEntries()) folders.push_back(Shown(entry->GetLocation()));
  return folders;
}

TEST(FolderEntryFactory, WritesItsEntriesAtOrBelowTheToolboxRootInTheOrderOfThePath) {
  MemoryStorage storage;
  storage.WithFolders({u"/t", u"/t/b", u"/t/a", u"/toolbox", u"/other"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
  const auto path = FolderPathFactory().CreateFolderPath(
      {InMemory(u"/t/b"), InMemory(u"/toolbox"), InMemory(u"/t"), InMemory(u"/other"), InMemory(u"/t/a")}, factory);

  EXPECT_THAT(FoldersWritten(factory, storage, InMemory(u"/t")), ElementsAre("/t/b", "/t", "/t/a"));
}

TEST(FolderEntryFactory, WritesEntriesOfNoPathByLocation) {
  MemoryStorage storage;
  storage.WithFolders({u"/t/b", u"/t/a", u"/t/c"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
  const auto b = factory.CreateMainEntry(InMemory(u"/t/b"));
  const auto a = factory.CreateMainEntry(InMemory(u"/t/a"));
  static_cast<void>(factory.CreateMainEntry(InMemory(u"/t/c")));  // nobody holds it

  EXPECT_THAT(FoldersWritten(factory, storage, InMemory(u"/")), ElementsAre("/t/a", "/t/b"));
}

TEST(PathProblem, GivesItsReasonInWords) {
  const auto reasonOf = [](ProblemKind kind) {
    return ReasonOf({AbsoluteIRI(u"memory:///a"), kind, std::make_error_code(std::errc::permission_denied)});
  };

  EXPECT_EQ(reasonOf(ProblemKind::Missing), "there is no such folder");
  EXPECT_EQ(reasonOf(ProblemKind::NotAFolder), "it is not a folder");
  EXPECT_EQ(reasonOf(ProblemKind::Unreadable), "it cannot be read: Permission denied");
  EXPECT_EQ(reasonOf(ProblemKind::Loop), "it leads back to a folder that encloses it");
  EXPECT_EQ(reasonOf(ProblemKind::TooDeep), "its special subfolders are nested too deep");
  EXPECT_EQ(reasonOf(ProblemKind::Repeated), "it stands earlier on the path");
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
