#include <gmock/gmock.h>

#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
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

TEST(FolderEntryFactory, WritesTheFoldersOfTheToolboxInWalkOrderEachFollowedByItsFiles) {
  MemoryStorage storage;
  storage.WithFiles({u"/t/b.x", u"/t/a\nb", u"/t/+p/@c/m", u"/t/private/f", u"/t/plain/not"});
  const FolderEntryFactory factory(VornixStorageSystem::GetStorageSystemReference());
  std::ostringstream out;

  factory.WriteToolboxCache(out, InMemory(u"/t"));

  EXPECT_EQ(out.str(),
            "folder memory:///t\n"
            "file a\\u{A}b\n"
            "file b.x\n"
            "folder memory:///t/private\n"
            "file f\n"
            "folder memory:///t/+p\n"
            "folder memory:///t/+p/@c\n"
            "file m\n");
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
