#include <gmock/gmock.h>

#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <support/storage_matchers.hpp>

namespace foundation::storage::vfs {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

AbsoluteIRI At(const std::u16string& path) { return AbsoluteIRI(u"memory://" + path); }

std::vector<std::u16string> NamesIn(const MemoryStorageProvider& storage, const std::u16string& folder) {
  std::vector<std::u16string> names;
  for (const ListedEntry& entry : storage.List(At(folder)).entries) names.push_back(entry.name);
  return names;
}

TEST(MemoryStorage, AddsFilesWithAllFoldersOnTheWay) {
  MemoryStorageProvider storage;

  storage.AddFile(u"/a/b/f", "bytes");

  EXPECT_EQ(storage.Stat(At(u"/a/b/f")).size, 5U);
  EXPECT_THAT(NamesIn(storage, u"/a"), ElementsAre(u"b"));
}

TEST(MemoryStorage, ReplacesAFileByANewOneOfTheSameName) {
  MemoryStorageProvider storage;
  storage.AddFile(u"/f", "old");
  const FileIdentity old = storage.Stat(At(u"/f")).identity;

  storage.AddFile(u"/f", "newer");

  EXPECT_EQ(storage.Stat(At(u"/f")).size, 5U);
  EXPECT_NE(storage.Stat(At(u"/f")).identity, old);
}

TEST(MemoryStorage, LeavesAFolderThatIsAddedAgainAsItIs) {
  MemoryStorageProvider storage;
  storage.AddFile(u"/a/f");

  storage.AddFolder(u"/a");

  EXPECT_THAT(NamesIn(storage, u"/a"), ElementsAre(u"f"));
}

TEST(MemoryStorage, AddsNothingWhereSomethingElseStandsInTheWay) {
  MemoryStorageProvider storage;
  storage.AddFile(u"/f");
  storage.AddFolder(u"/d");
  storage.AddLink(u"/nowhere", u"missing/target");

  EXPECT_THAT([&] { storage.AddFile(u"/f/g"); },
              FailsAbout(u"memory:///f/g", "cannot add \"memory:///f/g\": Not a directory"));
  EXPECT_THAT([&] { storage.AddFolder(u"/f"); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { storage.AddFile(u"/d"); }, FailsWith(std::errc::is_a_directory));
  EXPECT_THAT([&] { storage.AddLink(u"/d", u"/f"); }, FailsWith(std::errc::is_a_directory));
  EXPECT_THAT([&] { storage.AddFile(u"/nowhere/f"); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { storage.AddFile(u"relative"); }, FailsWith(std::errc::invalid_argument));
}

TEST(MemoryStorage, ReplacesALinkAndNotItsTarget) {
  MemoryStorageProvider storage;
  storage.AddFile(u"/target", "target");
  storage.AddLink(u"/name", u"target");

  storage.AddFile(u"/name", "file");

  EXPECT_EQ(storage.Stat(At(u"/target")).size, 6U);
  EXPECT_EQ(storage.Stat(At(u"/name")).size, 4U);
}

TEST(MemoryStorage, TakesAPathTextForBytesAndNotForAnIdentifier) {
  MemoryStorageProvider storage;

  storage.AddFile(u"/50%/a?b");

  EXPECT_THAT(NamesIn(storage, u"/50%25"), ElementsAre(u"a?b"));
}

TEST(MemoryStorage, IsOnNoHost) {
  const MemoryStorageProvider storage;
  EXPECT_THAT([&] { return storage.List(AbsoluteIRI(u"memory://host/")); },
              FailsAbout(u"memory://host/", "cannot list \"memory://host/\": a tree in memory is on no host"));
}

TEST(MemoryStorage, TellsLetterCaseApartUnlessAskedNotTo) {
  MemoryStorageProvider storage;
  storage.AddFile(u"/a");
  storage.AddFile(u"/A");

  EXPECT_TRUE(storage.ComparesNamesExactly(At(u"/")));
  EXPECT_THAT(NamesIn(storage, u"/"), UnorderedElementsAre(u"a", u"A"));
}

class CaselessMemoryStorage : public testing::Test {
 protected:
  MemoryStorageProvider storage_{NameComparison::IgnoreCase};
};

TEST_F(CaselessMemoryStorage, SaysThatLetterCaseDoesNotMatter) {
  EXPECT_FALSE(storage_.ComparesNamesExactly(At(u"/")));
}

TEST_F(CaselessMemoryStorage, FindsANameInAnySpelling) {
  storage_.AddFile(u"/Folder/Stra\u00DFe", "x");

  EXPECT_EQ(storage_.Stat(At(u"/FOLDER/STRASSE")).size, 1U);
}

TEST_F(CaselessMemoryStorage, KeepsTheSpellingWithWhichANameWasMade) {
  storage_.AddFile(u"/Folder/File");

  EXPECT_THAT(NamesIn(storage_, u"/fOLDER"), ElementsAre(u"File"));
  EXPECT_EQ(storage_.CanonicalLocation(At(u"/FOLDER/FILE/")), At(u"/Folder/File"));
  EXPECT_EQ(storage_.CanonicalLocation(At(u"/FOLDER/Missing")), At(u"/Folder/Missing"));
}

TEST_F(CaselessMemoryStorage, HoldsOneFileUnderTwoSpellings) {
  storage_.AddFile(u"/a");
  storage_.AddFile(u"/A");

  EXPECT_THAT(NamesIn(storage_, u"/"), ElementsAre(u"a"));
  EXPECT_THAT([&] { storage_.CreateFolder(At(u"/a")); }, FailsWith(std::errc::file_exists));
}

TEST_F(CaselessMemoryStorage, RenamesInLetterCaseAlone) {
  storage_.AddFile(u"/name", "x");

  storage_.Rename(At(u"/name"), At(u"/NAME"));

  EXPECT_THAT(NamesIn(storage_, u"/"), ElementsAre(u"NAME"));
  EXPECT_EQ(storage_.Stat(At(u"/name")).size, 1U);
}

TEST_F(CaselessMemoryStorage, KeepsStrayBytesApart) {
  storage_.AddFile(u"/\xDCE9");
  storage_.AddFile(u"/\xDCC9");

  EXPECT_THAT(NamesIn(storage_, u"/"), UnorderedElementsAre(u"\xDCE9", u"\xDCC9"));
}

TEST(MemoryStorage, KeepsMappedBytesWhateverIsWrittenLater) {
  MemoryStorageProvider storage;
  storage.AddFile(u"/f", "before");
  const auto mapped = storage.Map(At(u"/f"));

  storage.OpenForWriting(At(u"/f"), WriteMode::Append)->Write(std::as_bytes(std::span("x", 1)));
  storage.Remove(At(u"/f"));

  EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(mapped->data()), mapped->size()), "before");
}

TEST(MemoryStorage, GivesTwoChangesTwoTimes) {
  MemoryStorageProvider storage;
  storage.AddFolder(u"/d");
  const FileTime before = storage.Stat(At(u"/d")).modificationTime;

  storage.AddFile(u"/d/f");

  EXPECT_GT(storage.Stat(At(u"/d")).modificationTime, before);
}

TEST(MemoryStorage, LetsOpenFilesOutliveIt) {
  auto storage = std::make_unique<MemoryStorageProvider>();
  storage->AddFile(u"/f", "abc");
  const auto file = storage->OpenForReading(At(u"/f"));
  const auto lock = storage->Lock(At(u"/lock"), std::chrono::milliseconds(0));

  storage.reset();

  std::byte bytes[8];
  EXPECT_EQ(file->Read(bytes), 3U);
}

TEST(MemoryStorage, FallsApartWithoutExhaustingTheStackHoweverDeepItIs) {
  auto storage = std::make_unique<MemoryStorageProvider>();
  storage->AddFolder(u"/top");
  for (int depth = 0; depth < 30'000; ++depth) {
    storage->CreateFolder(At(u"/new"));
    storage->Rename(At(u"/top"), At(u"/new/d"));
    storage->Rename(At(u"/new"), At(u"/top"));
  }

  storage.reset();

  EXPECT_EQ(storage, nullptr);
}

}  // namespace
}  // namespace foundation::storage::vfs
