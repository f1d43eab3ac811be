#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <foundation/storage/vfs/exception.hpp>
#include <fstream>
#include <search_path_environment/path_changed_exception.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_file.hpp>

#include "memory_storage.hpp"
#include "support/storage_matchers.hpp"
#include "support/temporary_folder.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::FailsWith;
using foundation::storage::vfs::VornixStorageSystem;
using foundation::storage::vfs::WriteMode;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::ThrowsMessage;
using namespace std::chrono_literals;

AbsoluteIRI Folder(const std::u16string& path) { return AbsoluteIRI(u"file://" + path); }

class SavedPathFileTest : public testing::Test {
 protected:
  static std::string BytesOf(const SavedPathText::Folders& folders) {
    return SavedPathText().WithFolders(folders).ToBytes();
  }
  // As an edit does it.
  void Save(const SavedPathText::Folders& folders, EditKind kind = EditKind::Addition, std::uint64_t undone = 0) const {
    const auto lock = file_.Lock(1s);
    file_.Replace(file_.ReadBytes(), file_.Read().WithFolders(folders).ToBytes(), kind, undone);
  }
  [[nodiscard]] std::vector<std::u16string> NamesBeside() const {
    std::vector<std::u16string> names;
    for (const auto& entry : memory_.GetProvider().List(InMemory(u"/home")).entries) names.push_back(entry.name);
    return names;
  }

  static SavedPathFile OtherName() { return {InMemory(u"/other"), VornixStorageSystem::GetStorageSystemReference()}; }

  MemoryStorage memory_;
  SavedPathFile file_{InMemory(u"/home/path"), VornixStorageSystem::GetStorageSystemReference()};
};

TEST_F(SavedPathFileTest, HoldsNoFolderBeforeTheFirstEdit) {
  EXPECT_EQ(file_.ReadBytes(), std::nullopt);
  EXPECT_THAT(file_.Read().GetFolders(), IsEmpty());
  EXPECT_THAT(file_.GetVersions(), IsEmpty());
}

TEST_F(SavedPathFileTest, IsMadeWithItsFoldersByTheFirstEdit) {
  const SavedPathFile deep(InMemory(u"/new/state/of/mine"), VornixStorageSystem::GetStorageSystemReference());
  const auto lock = deep.Lock(1s);
  deep.Replace(std::nullopt, BytesOf({Folder(u"/a")}), EditKind::Addition);
  EXPECT_THAT(deep.Read().GetFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(SavedPathFileTest, LeavesNothingBesideItButTheLockAndTheVersions) {
  Save({Folder(u"/a")});
  EXPECT_THAT(NamesBeside(), testing::UnorderedElementsAre(u"path", u"path.lock", u"path.versions"));
}

TEST_F(SavedPathFileTest, SweepsTheDraftThatAKilledEditLeft) {
  memory_.GetProvider().AddFile(u"/home/path.draft", "half a li");
  Save({Folder(u"/a")});
  EXPECT_THAT(NamesBeside(), testing::UnorderedElementsAre(u"path", u"path.lock", u"path.versions"));
  EXPECT_EQ(file_.ReadBytes(), BytesOf({Folder(u"/a")}));
}

TEST_F(SavedPathFileTest, LocksOutWhoeverElseWantsToEdit) {
  const auto lock = file_.Lock(0ms);
  EXPECT_THAT([this] { static_cast<void>(file_.Lock(0ms)); }, FailsWith(std::errc::timed_out));
}

TEST_F(SavedPathFileTest, SharesALockAmongItsNames) {
  memory_.GetProvider().AddFile(u"/home/path", BytesOf({}));
  memory_.WithLink(u"/other", u"/home/path");
  const auto lock = OtherName().WithLinksFollowed().Lock(0ms);
  EXPECT_THAT([this] { static_cast<void>(file_.Lock(0ms)); }, FailsWith(std::errc::timed_out));
}

TEST_F(SavedPathFileTest, WritesThroughALinkAndLeavesItALink) {
  memory_.GetProvider().AddFile(u"/home/path", BytesOf({}));
  memory_.WithLink(u"/other", u"/home/path");
  const SavedPathFile other = OtherName().WithLinksFollowed();
  const auto lock = other.Lock(0ms);
  other.Replace(other.ReadBytes(), BytesOf({Folder(u"/a")}), EditKind::Addition);
  EXPECT_EQ(file_.ReadBytes(), BytesOf({Folder(u"/a")}));
  EXPECT_EQ(memory_.GetProvider().CanonicalLocation(InMemory(u"/other")), InMemory(u"/home/path"));
}

TEST_F(SavedPathFileTest, IsRefusedWhenDamagedAndLeftAsItIs) {
  const std::string bytes = "# search path, version 1\n/a\nnonsense\n";
  memory_.GetProvider().AddFile(u"/home/path", bytes);
  EXPECT_THAT([this] { static_cast<void>(file_.Read()); },
              ThrowsMessage<SavedPathError>(
                  AllOf(HasSubstr("/home/path"), HasSubstr("left as it is"), HasSubstr("line 3: \"nonsense\""))));
  EXPECT_EQ(file_.ReadBytes(), bytes);
}

TEST_F(SavedPathFileTest, IsNotWrittenWhenNothingChanges) {
  Save({Folder(u"/a")});
  Save({Folder(u"/a")});
  EXPECT_THAT(file_.GetVersions(), SizeIs(1));
}

TEST_F(SavedPathFileTest, KeepsWhatEachEditReplaced) {
  Save({Folder(u"/a")});
  Save({}, EditKind::Removal);
  const auto versions = file_.GetVersions();
  ASSERT_THAT(versions, SizeIs(2));
  EXPECT_EQ(versions[0].number, 1);
  EXPECT_EQ(versions[0].kind, EditKind::Addition);
  EXPECT_THAT(versions[0].before.GetFolders(), IsEmpty());
  EXPECT_EQ(versions[1].number, 2);
  EXPECT_EQ(versions[1].kind, EditKind::Removal);
  EXPECT_THAT(versions[1].before.GetFolders(), ElementsAre(Folder(u"/a")));
  EXPECT_GE(versions[1].time, versions[0].time);
}

TEST_F(SavedPathFileTest, DropsTheOldestVersionsBeyondTheNumberThatIsKept) {
  const std::size_t edits = SavedPathFile::kVersions + 3;
  for (std::size_t edit = 0; edit < edits; ++edit) {
    Save(SavedPathText::Folders(edit + 1, Folder(u"/a")));
  }
  const auto versions = file_.GetVersions();
  ASSERT_THAT(versions, SizeIs(SavedPathFile::kVersions));
  EXPECT_EQ(versions.front().number, 4);
  EXPECT_EQ(versions.back().number, edits);
}

TEST_F(SavedPathFileTest, TellsNothingOfAnEditThatWasKilledBeforeItCameAbout) {
  Save({Folder(u"/a")});
  // What stands there when an edit kept the version but never replaced the file.
  const std::string bytes = file_.ReadBytes().value();
  Save({Folder(u"/b")});
  memory_.GetProvider().AddFile(u"/home/path", bytes);

  EXPECT_THAT(file_.GetVersions(), SizeIs(1));
  Save({Folder(u"/c")});
  const auto versions = file_.GetVersions();
  ASSERT_THAT(versions, SizeIs(2));
  EXPECT_EQ(versions[1].number, 2);
  EXPECT_THAT(versions[1].before.GetFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(SavedPathFileTest, RefusesALinkThatLeadsNowhere) {
  memory_.GetProvider().AddFolder(u"/links");
  memory_.WithLink(u"/links/path", u"/gone/path");
  const SavedPathFile file(InMemory(u"/links/path"), VornixStorageSystem::GetStorageSystemReference());
  EXPECT_THAT([&] { static_cast<void>(file.WithLinksFollowed()); },
              ThrowsMessage<foundation::storage::vfs::Exception>(HasSubstr("a link that leads nowhere")));
}

TEST_F(SavedPathFileTest, RefusesToReplaceWhatSomebodyEditedMeanwhile) {
  Save({Folder(u"/a")});
  const auto lock = file_.Lock(1s);
  const auto old = file_.ReadBytes();
  memory_.GetProvider().AddFile(u"/home/path", BytesOf({Folder(u"/by/hand")}));
  EXPECT_THROW(file_.Replace(old, BytesOf({Folder(u"/b")}), EditKind::Addition), PathChangedException);
  EXPECT_EQ(file_.ReadBytes(), BytesOf({Folder(u"/by/hand")}));
  EXPECT_THAT(file_.GetVersions(), SizeIs(1));
}

TEST_F(SavedPathFileTest, ReportsAVersionThatIsNotWhatWasWrittenAndReadsTheOthers) {
  Save({Folder(u"/a")});
  const AbsoluteIRI folder = InMemory(u"/home/path.versions");
  const auto entries = memory_.GetProvider().List(folder).entries;
  const auto writer = memory_.GetProvider().OpenForWriting(folder.getChild(entries.at(0).name), WriteMode::Append);
  writer->Write(std::as_bytes(std::span("/x\n", 3)));
  writer->Close();
  Save({Folder(u"/b")});

  const auto versions = file_.GetVersions();
  ASSERT_THAT(versions, SizeIs(2));
  EXPECT_THAT(versions[0].damage->what(), HasSubstr("not what was written"));
  EXPECT_EQ(versions[1].damage, std::nullopt);
  EXPECT_THAT(versions[1].before.GetFolders(), ElementsAre(Folder(u"/a")));
}

TEST_F(SavedPathFileTest, TakesNothingForAVersionThatIsNone) {
  Save({Folder(u"/a")});
  memory_.GetProvider().AddFolder(u"/home/path.versions/9-9");
  memory_.GetProvider().AddFile(u"/home/path.versions/notes");
  EXPECT_THAT(file_.GetVersions(), SizeIs(1));
}

// Edits 1, 2, ..., each of which found a path of its own.
std::vector<PathVersion> Versions(std::size_t count) {
  std::vector<PathVersion> versions(count);
  for (std::size_t i = 0; i < count; ++i) {
    versions[i].number = i + 1;
    versions[i].before = SavedPathText().WithFolders(SavedPathText::Folders(i, Folder(u"/a")));
  }
  return versions;
}
const SavedPathText::Folders kOther = {Folder(u"/other")};

TEST(VersionToUndo, IsThatOfTheLastEdit) {
  const auto versions = Versions(2);
  EXPECT_EQ(SavedPathFile::VersionToUndo(versions, kOther), &versions[1]);
}

TEST(VersionToUndo, IsTheOneBeforeWhatWasUndone) {
  auto versions = Versions(3);
  versions[2].kind = EditKind::Undo;
  versions[2].undone = 2;
  EXPECT_EQ(SavedPathFile::VersionToUndo(versions, kOther)->number, 1);
}

TEST(VersionToUndo, IsThatOfAnEditMadeSinceAnUndo) {
  auto versions = Versions(4);
  versions[2].kind = EditKind::Undo;
  versions[2].undone = 2;
  EXPECT_EQ(SavedPathFile::VersionToUndo(versions, kOther)->number, 4);
  versions.push_back(Versions(5).back());
  versions[4].kind = EditKind::Undo;
  versions[4].undone = 4;
  EXPECT_EQ(SavedPathFile::VersionToUndo(versions, kOther)->number, 1);
}

TEST(VersionToUndo, PassesOverAnEditThatSomebodyTookBackByHand) {
  auto versions = Versions(2);
  EXPECT_EQ(SavedPathFile::VersionToUndo(versions, versions[1].before.GetFolders()), versions.data());
  versions.push_back(Versions(3).back());
  versions[2].kind = EditKind::Undo;
  versions[2].undone = 1;
  EXPECT_EQ(SavedPathFile::VersionToUndo(versions, kOther), nullptr);
}

TEST(VersionToUndo, IsNoneWhenNothingWasEdited) { EXPECT_EQ(SavedPathFile::VersionToUndo({}, kOther), nullptr); }

TEST(SavedPathFileOnDisk, IsReplacedAndNotRewritten) {
  const PathManagement::support::TemporaryFolder folder;
  const auto name = folder.GetPath() / "path";
  const SavedPathFile file(Folder(name.u16string()), VornixStorageSystem::GetStorageSystemReference());
  const auto lock = file.Lock(1s);
  file.Replace(std::nullopt, SavedPathText().WithFolders({Folder(u"/a")}).ToBytes(), EditKind::Addition);
  std::ifstream before(name);
  file.Replace(file.ReadBytes(), SavedPathText().WithFolders({Folder(u"/b")}).ToBytes(), EditKind::Addition);

  const std::string seen(std::istreambuf_iterator<char>(before), {});
  EXPECT_EQ(seen, SavedPathText().WithFolders({Folder(u"/a")}).ToBytes());  // a reader that had it open
  EXPECT_THAT(file.Read().GetFolders(), ElementsAre(Folder(u"/b")));
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
