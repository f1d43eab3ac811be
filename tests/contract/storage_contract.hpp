#pragma once

// What every storage must do, whatever it keeps its files on.
//
// A new kind of storage derives StorageUnderTest and adds one INSTANTIATE_TEST_SUITE_P.

#include <gmock/gmock.h>

#include <atomic>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <support/run_together.hpp>
#include <support/storage_matchers.hpp>
#include <thread>
#include <utility>
#include <vector>

namespace foundation::storage::vfs::contract {

/// One kind of storage with an empty folder in it.
class StorageUnderTest {
 public:
  StorageUnderTest() = default;
  StorageUnderTest(const StorageUnderTest&) = delete;
  StorageUnderTest& operator=(const StorageUnderTest&) = delete;
  virtual ~StorageUnderTest() = default;

  [[nodiscard]] virtual const IStorageProvider& GetProvider() const = 0;
  /// The empty folder, spelled canonically.
  [[nodiscard]] virtual AbsoluteIRI GetFolder() const = 0;
  /// Makes a link in that folder. `target` is relative to it.
  virtual void AddLink(const std::u16string& name, const std::u16string& target) = 0;
};

struct StorageMaker {
  std::function<std::unique_ptr<StorageUnderTest>()> make;

  // The name of the instantiation tells which storage it is.
  friend void PrintTo(const StorageMaker& /*maker*/, std::ostream* out) { *out << "a new one"; }
};

class StorageContract : public testing::TestWithParam<StorageMaker> {
 protected:
  [[nodiscard]] const IStorageProvider& Storage() const { return storage_->GetProvider(); }
  [[nodiscard]] AbsoluteIRI Folder() const { return storage_->GetFolder(); }
  [[nodiscard]] AbsoluteIRI At(const std::u16string& name) const { return Folder().getChild(name); }
  [[nodiscard]] AbsoluteIRI At(const std::u16string& folder, const std::u16string& name) const {
    return At(folder).getChild(name);
  }

  void Write(const AbsoluteIRI& file, std::string_view content, WriteMode mode = WriteMode::Truncate) const {
    const auto opened = Storage().OpenForWriting(file, mode);
    opened->Write(std::as_bytes(std::span(content)));
    opened->Close();
  }

  static std::string ReadAll(IReadableFile& file, std::size_t pieceSize = 3) {
    std::string content;
    std::vector<char> piece(pieceSize);
    while (const std::size_t count = file.Read(std::as_writable_bytes(std::span(piece)))) {
      content.append(piece.data(), count);
    }
    return content;
  }

  [[nodiscard]] std::string Read(const AbsoluteIRI& file) const { return ReadAll(*Storage().OpenForReading(file)); }

  static std::string TextOf(const MappedBytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }

  [[nodiscard]] std::vector<ListedEntry> Entries() const { return Storage().List(Folder()).entries; }

  void AddLink(const std::u16string& name, const std::u16string& target) { storage_->AddLink(name, target); }

 private:
  std::unique_ptr<StorageUnderTest> storage_ = GetParam().make();
};

using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST_P(StorageContract, ListsNothingInAnEmptyFolder) {
  const FolderListing listing = Storage().List(Folder());

  EXPECT_THAT(listing.entries, IsEmpty());
  EXPECT_THAT(listing.problems, IsEmpty());
}

TEST_P(StorageContract, ListsFilesAndFoldersByWhatTheyAre) {
  Write(At(u"file"), "");
  Storage().CreateFolder(At(u"folder"));
  Write(At(u"folder", u"inner"), "");

  EXPECT_THAT(Entries(),
              UnorderedElementsAre(ListedEntry{u"file", FileKind::File}, ListedEntry{u"folder", FileKind::Folder}));
}

TEST_P(StorageContract, ListsLinksByWhatTheyLeadTo) {
  Write(At(u"file"), "");
  Storage().CreateFolder(At(u"folder"));
  AddLink(u"toFile", u"file");
  AddLink(u"toFolder", u"folder");
  AddLink(u"toLink", u"toFolder");

  EXPECT_THAT(Entries(),
              testing::IsSupersetOf({ListedEntry{u"toFile", FileKind::File}, ListedEntry{u"toFolder", FileKind::Folder},
                                     ListedEntry{u"toLink", FileKind::Folder}}));
}

TEST_P(StorageContract, ListsLinksThatLeadNowhereAsSomethingElse) {
  Write(At(u"file"), "");
  AddLink(u"dangling", u"missing");
  AddLink(u"throughAFile", u"file/x");
  AddLink(u"loop", u"loop");

  const FolderListing listing = Storage().List(Folder());

  EXPECT_THAT(listing.entries, testing::IsSupersetOf({ListedEntry{u"dangling", FileKind::Other},
                                                      ListedEntry{u"throughAFile", FileKind::Other},
                                                      ListedEntry{u"loop", FileKind::Other}}));
  EXPECT_THAT(listing.problems, IsEmpty());
}

TEST_P(StorageContract, ListsAFolderThroughALink) {
  Storage().CreateFolder(At(u"folder"));
  Write(At(u"folder", u"inner"), "");
  AddLink(u"link", u"folder");

  EXPECT_THAT(Storage().List(At(u"link")).entries, UnorderedElementsAre(ListedEntry{u"inner", FileKind::File}));
}

TEST_P(StorageContract, KeepsEveryNameAsItIs) {
  const std::vector<std::u16string> names = {u"a b",    u"50%",     u"what?",        u"c#",      u"%2F",
                                             u"\u00E9", u"e\u0301", u"\U0001F600",   u"\xDCFF",  u".hidden",
                                             u"a:b",    u"back\\",  u"\u0001\u0085", u"\u202Ex", u" "};
  std::vector<ListedEntry> expected;
  for (const std::u16string& name : names) {
    Write(At(name), "content");
    expected.push_back({name, FileKind::File});
  }

  EXPECT_THAT(Entries(), testing::UnorderedElementsAreArray(expected));
  for (const std::u16string& name : names) EXPECT_EQ(Read(At(name)), "content");
}

TEST_P(StorageContract, TellsFoldersApartByTheirIdentities) {
  Storage().CreateFolder(At(u"one"));
  Storage().CreateFolder(At(u"other"));
  AddLink(u"link", u"one");

  EXPECT_NE(Storage().List(At(u"one")).identity, Storage().List(At(u"other")).identity);
  EXPECT_EQ(Storage().List(At(u"one")).identity, Storage().List(At(u"link")).identity);
  EXPECT_EQ(Storage().List(At(u"one")).identity, Storage().Stat(At(u"one")).identity);
  EXPECT_EQ(std::hash<FileIdentity>()(Storage().Stat(At(u"one")).identity),
            std::hash<FileIdentity>()(Storage().Stat(At(u"link")).identity));
}

TEST_P(StorageContract, ListsAFolderWithItsModificationTime) {
  EXPECT_EQ(Storage().List(Folder()).modificationTime, Storage().Stat(Folder()).modificationTime);
}

TEST_P(StorageContract, ListsAFolderWithItsChangeTime) {
  EXPECT_EQ(Storage().List(Folder()).changeTime, Storage().Stat(Folder()).changeTime);
}

TEST_P(StorageContract, GivesNoChangeThatAListingMissedAnEarlierTime) {
  for (char16_t name = u'a'; name <= u'z'; ++name) {
    const FileTime readAt = Storage().List(Folder()).readAt;
    Write(At(std::u16string(1, name)), "");
    EXPECT_GE(Storage().Stat(Folder()).modificationTime, readAt);
    EXPECT_GE(Storage().Stat(Folder()).changeTime, readAt);
  }
}

TEST_P(StorageContract, TellsWhichEntriesAreLinks) {
  Write(At(u"file"), "");
  Storage().CreateFolder(At(u"folder"));
  AddLink(u"toFile", u"file");
  AddLink(u"toFolder", u"folder");
  AddLink(u"dangling", u"missing");

  EXPECT_THAT(Storage().List(Folder()).links, testing::UnorderedElementsAre(u"toFile", u"toFolder", u"dangling"));
}

TEST_P(StorageContract, CannotListWhatIsNoFolder) {
  Write(At(u"file"), "");

  EXPECT_THAT([&] { return Storage().List(At(u"missing")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { return Storage().List(At(u"file")); }, FailsWith(std::errc::not_a_directory));
}

TEST_P(StorageContract, TellsWhichFolderItIsThatCanBeListed) {
  Storage().CreateFolder(At(u"folder"));
  AddLink(u"link", u"folder");

  const FileIdentity identity = Storage().Stat(At(u"folder")).identity;
  EXPECT_EQ(Storage().CheckFolder(At(u"folder")), identity);
  EXPECT_EQ(Storage().CheckFolder(At(u"link")), identity);
}

TEST_P(StorageContract, FailsTheCheckOfWhatCannotBeListed) {
  Write(At(u"file"), "");
  AddLink(u"toFile", u"file");
  AddLink(u"dangling", u"missing");
  AddLink(u"loop", u"loop");

  EXPECT_THAT([&] { Storage().CheckFolder(At(u"missing")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { Storage().CheckFolder(At(u"missing", u"x")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { Storage().CheckFolder(At(u"file")); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { Storage().CheckFolder(At(u"file", u"x")); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { Storage().CheckFolder(At(u"toFile")); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { Storage().CheckFolder(At(u"dangling")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { Storage().CheckFolder(At(u"loop")); }, FailsWith(std::errc::too_many_symbolic_link_levels));
}

TEST_P(StorageContract, NamesTheFolderThatFailedItsCheck) {
  EXPECT_THAT(
      [&] { Storage().CheckFolder(At(u"missing")); },
      FailsAbout(At(u"missing").toString(), "cannot check \"" + fl::filesystem::to_bytes(At(u"missing").toString()) +
                                                "\": No such file or directory"));
}

TEST_P(StorageContract, TellsKindAndSize) {
  Write(At(u"file"), "seven..");

  const FileStatus file = Storage().Stat(At(u"file"));

  EXPECT_EQ(file.kind, FileKind::File);
  EXPECT_EQ(file.size, 7U);
  EXPECT_EQ(Storage().Stat(Folder()).kind, FileKind::Folder);
  EXPECT_GT(file.modificationTime, FileTime());
}

TEST_P(StorageContract, TellsTheStatusOfWhatALinkLeadsTo) {
  Write(At(u"file"), "abc");
  AddLink(u"link", u"file");

  EXPECT_EQ(Storage().Stat(At(u"link")).size, 3U);
  EXPECT_EQ(Storage().Stat(At(u"link")).identity, Storage().Stat(At(u"file")).identity);
}

TEST_P(StorageContract, HasNoStatusOfWhatIsNotThere) {
  Write(At(u"file"), "");
  AddLink(u"dangling", u"missing");
  AddLink(u"loop", u"loop");

  EXPECT_THAT([&] { return Storage().Stat(At(u"missing")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { return Storage().Stat(At(u"dangling")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { return Storage().Stat(At(u"file", u"x")); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { return Storage().Stat(At(u"loop")); }, FailsWith(std::errc::too_many_symbolic_link_levels));
}

TEST_P(StorageContract, NamesTheOperationAndTheLocationThatFailed) {
  const AbsoluteIRI missing = At(u"miss\ning");
  try {
    static_cast<void>(Storage().List(missing));
    FAIL() << "listed what is not there";
  } catch (const Exception& problem) {
    EXPECT_EQ(problem.GetOperation(), "list");
    EXPECT_EQ(problem.GetOffendingText(), missing.toString());
    EXPECT_THAT(problem.what(), testing::AllOf(testing::StartsWith("cannot list \""), testing::HasSubstr("miss%0Aing"),
                                               testing::EndsWith("\": No such file or directory")));
  }
}

TEST_P(StorageContract, FindsNoFileUnderANameThatHoldsAnEscapedSeparatorOrNul) {
  Storage().CreateFolder(At(u"a"));
  Write(At(u"a", u"b"), "");
  const AbsoluteIRI separator(Folder().toString() + u"/a%2Fb");
  const AbsoluteIRI nul(Folder().toString() + u"/a%00");

  EXPECT_THAT([&] { return Storage().Stat(separator); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { return Storage().Stat(nul); }, FailsWith(std::errc::invalid_argument));
  EXPECT_THAT([&] { Storage().CheckFolder(nul); }, FailsWith(std::errc::invalid_argument));
}

TEST_P(StorageContract, DoesNothingWithARootlessIdentifier) {
  const AbsoluteIRI rootless(Folder().getScheme() + u":relative");
  const auto fails = FailsWith(std::errc::invalid_argument);

  EXPECT_THAT([&] { return Storage().List(rootless); }, fails);
  EXPECT_THAT([&] { Storage().CheckFolder(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().Stat(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().CanonicalLocation(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().ComparesNamesExactly(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().OpenForReading(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().Map(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().OpenForWriting(rootless, WriteMode::Append); }, fails);
  EXPECT_THAT([&] { Storage().FlushFolder(rootless); }, fails);
  EXPECT_THAT([&] { Storage().Rename(rootless, At(u"x")); }, fails);
  EXPECT_THAT([&] { Storage().Rename(At(u"x"), rootless); }, fails);
  EXPECT_THAT([&] { Storage().Remove(rootless); }, fails);
  EXPECT_THAT([&] { Storage().CreateFolder(rootless); }, fails);
  EXPECT_THAT([&] { return Storage().Lock(rootless, std::chrono::milliseconds(0)); }, fails);
}

TEST_P(StorageContract, FindsACanonicalLocationWhereItIs) {
  Write(At(u"file"), "");

  EXPECT_EQ(Storage().CanonicalLocation(At(u"file")), At(u"file"));
  EXPECT_EQ(Storage().CanonicalLocation(Folder()), Folder());
}

TEST_P(StorageContract, FollowsEveryLinkToACanonicalLocation) {
  Storage().CreateFolder(At(u"folder"));
  Write(At(u"folder", u"file"), "");
  AddLink(u"link", u"folder");
  AddLink(u"linkToLink", u"link");
  AddLink(u"linkUpAndDown", u"folder/../link/file");

  EXPECT_EQ(Storage().CanonicalLocation(At(u"linkToLink", u"file")), At(u"folder", u"file"));
  EXPECT_EQ(Storage().CanonicalLocation(At(u"linkUpAndDown")), At(u"folder", u"file"));
}

TEST_P(StorageContract, GivesWhatIsMissingTheCanonicalLocationOfItsDeepestAncestorPlusTheRest) {
  Storage().CreateFolder(At(u"folder"));
  AddLink(u"link", u"folder");
  AddLink(u"dangling", u"missing");

  EXPECT_EQ(Storage().CanonicalLocation(At(u"link", u"no").getChild(u"where")),
            At(u"folder", u"no").getChild(u"where"));
  EXPECT_EQ(Storage().CanonicalLocation(At(u"dangling", u"x")), At(u"dangling", u"x"));
}

TEST_P(StorageContract, HasNoCanonicalLocationForALoopOrBelowAFile) {
  Write(At(u"file"), "");
  AddLink(u"loop", u"loop");

  EXPECT_THAT([&] { return Storage().CanonicalLocation(At(u"loop")); },
              FailsWith(std::errc::too_many_symbolic_link_levels));
  EXPECT_THAT([&] { return Storage().CanonicalLocation(At(u"file", u"x")); }, FailsWith(std::errc::not_a_directory));
}

TEST_P(StorageContract, ComparesNamesAsItSays) {
  Write(At(u"name"), "");
  Write(At(u"NAME"), "");

  EXPECT_EQ(Entries().size(), Storage().ComparesNamesExactly(Folder()) ? 2U : 1U);
}

TEST_P(StorageContract, AnswersForAMissingFolderHowItWouldCompareNames) {
  EXPECT_EQ(Storage().ComparesNamesExactly(At(u"missing")), Storage().ComparesNamesExactly(Folder()));
}

TEST_P(StorageContract, ReadsAFileFromItsBeginningToItsEnd) {
  Write(At(u"file"), "0123456789");

  EXPECT_EQ(ReadAll(*Storage().OpenForReading(At(u"file")), 3), "0123456789");
  EXPECT_EQ(ReadAll(*Storage().OpenForReading(At(u"file")), 100), "0123456789");
}

TEST_P(StorageContract, ReadsNothingIntoAnEmptyBuffer) {
  Write(At(u"file"), "x");
  const auto file = Storage().OpenForReading(At(u"file"));

  EXPECT_EQ(file->Read({}), 0U);
  EXPECT_EQ(ReadAll(*file), "x");
}

TEST_P(StorageContract, ReadsOnlyFilesThatAreThere) {
  EXPECT_THAT([&] { return Storage().OpenForReading(At(u"missing")); },
              FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { return Storage().OpenForReading(Folder()); }, FailsWith(std::errc::is_a_directory));
}

TEST_P(StorageContract, MapsTheBytesOfAFile) {
  Write(At(u"file"), "mapped");
  Write(At(u"empty"), "");

  EXPECT_EQ(TextOf(*Storage().Map(At(u"file"))), "mapped");
  EXPECT_EQ(Storage().Map(At(u"empty"))->size(), 0U);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(Storage().Map(At(u"file"))->data()) % 16, 0U);
}

TEST_P(StorageContract, KeepsMappedBytesWhenAnotherFileTakesTheName) {
  Write(At(u"file"), "old");
  Write(At(u"draft"), "new");
  const auto mapped = Storage().Map(At(u"file"));

  Storage().Rename(At(u"draft"), At(u"file"));

  EXPECT_EQ(TextOf(*mapped), "old");
  EXPECT_EQ(TextOf(*Storage().Map(At(u"file"))), "new");
}

TEST_P(StorageContract, MapsOnlyFilesThatAreThere) {
  EXPECT_THAT([&] { return Storage().Map(At(u"missing")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { return Storage().Map(Folder()); }, FailsWith(std::errc::is_a_directory));
}

TEST_P(StorageContract, MakesANewFileInEveryMode) {
  Write(At(u"new"), "1", WriteMode::CreateNew);
  Write(At(u"truncated"), "2", WriteMode::Truncate);
  Write(At(u"appended"), "3", WriteMode::Append);

  EXPECT_EQ(Read(At(u"new")) + Read(At(u"truncated")) + Read(At(u"appended")), "123");
}

TEST_P(StorageContract, MakesAFileAsSoonAsItIsOpened) {
  const auto file = Storage().OpenForWriting(At(u"file"), WriteMode::CreateNew);

  EXPECT_THAT(Entries(), UnorderedElementsAre(ListedEntry{u"file", FileKind::File}));
}

TEST_P(StorageContract, MakesNothingNewUnderANameThatIsTaken) {
  Write(At(u"file"), "kept");
  AddLink(u"dangling", u"missing");

  EXPECT_THAT([&] { return Storage().OpenForWriting(At(u"file"), WriteMode::CreateNew); },
              FailsWith(std::errc::file_exists));
  EXPECT_THAT([&] { return Storage().OpenForWriting(At(u"dangling"), WriteMode::CreateNew); },
              FailsWith(std::errc::file_exists));
  EXPECT_EQ(Read(At(u"file")), "kept");
}

TEST_P(StorageContract, EmptiesAFileOrGoesOnAtItsEnd) {
  Write(At(u"file"), "long content");
  Write(At(u"file"), "a", WriteMode::Truncate);
  Write(At(u"file"), "b", WriteMode::Append);

  EXPECT_EQ(Read(At(u"file")), "ab");
}

TEST_P(StorageContract, AppendsEachWriteToTheEndAsItThenIs) {
  const auto first = Storage().OpenForWriting(At(u"log"), WriteMode::Append);
  const auto second = Storage().OpenForWriting(At(u"log"), WriteMode::Append);

  first->Write(std::as_bytes(std::span("1", 1)));
  second->Write(std::as_bytes(std::span("2", 1)));
  first->Write(std::as_bytes(std::span("3", 1)));

  EXPECT_EQ(Read(At(u"log")), "123");
}

TEST_P(StorageContract, WritesOneBehindTheOther) {
  const std::string much(100'000, 'x');
  const auto file = Storage().OpenForWriting(At(u"file"), WriteMode::Truncate);
  file->Write(std::as_bytes(std::span(much)));
  file->Write({});
  file->Write(std::as_bytes(std::span("y", 1)));
  file->Flush();

  EXPECT_EQ(TextOf(*Storage().Map(At(u"file"))), much + "y");
}

TEST_P(StorageContract, WritesThroughALinkEvenToMakeTheFile) {
  AddLink(u"link", u"target");

  Write(At(u"link"), "through");

  EXPECT_EQ(Read(At(u"target")), "through");
}

TEST_P(StorageContract, WritesOnlyFilesInFoldersThatAreThere) {
  Write(At(u"file"), "");

  EXPECT_THAT([&] { return Storage().OpenForWriting(At(u"no", u"where"), WriteMode::Truncate); },
              FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { return Storage().OpenForWriting(At(u"file", u"x"), WriteMode::Truncate); },
              FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { return Storage().OpenForWriting(Folder(), WriteMode::Truncate); },
              FailsWith(std::errc::is_a_directory));
}

TEST_P(StorageContract, WritesNothingToAClosedFile) {
  const auto file = Storage().OpenForWriting(At(u"file"), WriteMode::Truncate);
  file->Close();

  EXPECT_THAT([&] { file->Write(std::as_bytes(std::span("x", 1))); }, FailsWith(std::errc::bad_file_descriptor));
  EXPECT_THAT([&] { file->Flush(); }, FailsWith(std::errc::bad_file_descriptor));
  EXPECT_NO_THROW(file->Close());
  EXPECT_EQ(Read(At(u"file")), "");
}

TEST_P(StorageContract, KeepsWhatWasWrittenToAFileThatWasNeverClosed) {
  Storage().OpenForWriting(At(u"file"), WriteMode::Truncate)->Write(std::as_bytes(std::span("kept", 4)));

  EXPECT_EQ(Read(At(u"file")), "kept");
}

TEST_P(StorageContract, FlushesAFolderThatIsThere) {
  EXPECT_NO_THROW(Storage().FlushFolder(Folder()));
  EXPECT_THAT([&] { Storage().FlushFolder(At(u"missing")); }, FailsWith(std::errc::no_such_file_or_directory));
}

TEST_P(StorageContract, RenamesAFileWhichStaysTheSameOne) {
  Write(At(u"from"), "content");
  const FileIdentity identity = Storage().Stat(At(u"from")).identity;

  Storage().Rename(At(u"from"), At(u"to"));

  EXPECT_THAT(Entries(), UnorderedElementsAre(ListedEntry{u"to", FileKind::File}));
  EXPECT_EQ(Storage().Stat(At(u"to")).identity, identity);
}

TEST_P(StorageContract, ReplacesAFileByAnotherInOneStep) {
  Write(At(u"from"), "new");
  Write(At(u"to"), "old");

  Storage().Rename(At(u"from"), At(u"to"));

  EXPECT_EQ(Read(At(u"to")), "new");
  EXPECT_EQ(Entries().size(), 1U);
}

TEST_P(StorageContract, RenamesAFolderWithAllThatIsInIt) {
  Storage().CreateFolder(At(u"from"));
  Write(At(u"from", u"file"), "x");
  Storage().CreateFolder(At(u"to"));

  Storage().Rename(At(u"from"), At(u"to"));

  EXPECT_EQ(Read(At(u"to", u"file")), "x");
  EXPECT_EQ(Entries().size(), 1U);
}

TEST_P(StorageContract, RenamesALinkAndNotWhatItLeadsTo) {
  Write(At(u"file"), "x");
  AddLink(u"from", u"file");

  Storage().Rename(At(u"from"), At(u"to"));

  EXPECT_EQ(Storage().CanonicalLocation(At(u"to")), At(u"file"));
}

TEST_P(StorageContract, ChangesNothingWhenSomethingIsRenamedToItself) {
  Write(At(u"file"), "x");

  Storage().Rename(At(u"file"), At(u"file"));

  EXPECT_EQ(Read(At(u"file")), "x");
}

TEST_P(StorageContract, RenamesNothingOverWhatMustNotBeReplaced) {
  Write(At(u"file"), "");
  Storage().CreateFolder(At(u"empty"));
  Storage().CreateFolder(At(u"full"));
  Write(At(u"full", u"x"), "");

  EXPECT_THAT([&] { Storage().Rename(At(u"file"), At(u"empty")); }, FailsWith(std::errc::is_a_directory));
  EXPECT_THAT([&] { Storage().Rename(At(u"empty"), At(u"file")); }, FailsWith(std::errc::not_a_directory));
  EXPECT_THAT([&] { Storage().Rename(At(u"empty"), At(u"full")); }, FailsWith(std::errc::directory_not_empty));
  EXPECT_THAT([&] { Storage().Rename(At(u"full"), At(u"full", u"inner")); }, FailsWith(std::errc::invalid_argument));
}

TEST_P(StorageContract, RenamesNothingFromOrToWhereNothingIs) {
  Write(At(u"file"), "");

  EXPECT_THAT([&] { Storage().Rename(At(u"missing"), At(u"x")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { Storage().Rename(At(u"file"), At(u"no", u"where")); },
              FailsWith(std::errc::no_such_file_or_directory));
}

TEST_P(StorageContract, RemovesFilesAndEmptyFolders) {
  Write(At(u"file"), "");
  Storage().CreateFolder(At(u"folder"));

  Storage().Remove(At(u"file"));
  Storage().Remove(At(u"folder"));

  EXPECT_THAT(Entries(), IsEmpty());
}

TEST_P(StorageContract, RemovesALinkAndNotWhatItLeadsTo) {
  Storage().CreateFolder(At(u"folder"));
  Write(At(u"folder", u"file"), "kept");
  AddLink(u"link", u"folder");

  Storage().Remove(At(u"link"));

  EXPECT_THAT(Entries(), UnorderedElementsAre(ListedEntry{u"folder", FileKind::Folder}));
  EXPECT_EQ(Read(At(u"folder", u"file")), "kept");
}

TEST_P(StorageContract, RemovesNothingThatIsMissingOrFull) {
  Storage().CreateFolder(At(u"full"));
  Write(At(u"full", u"x"), "");

  EXPECT_THAT([&] { Storage().Remove(At(u"missing")); }, FailsWith(std::errc::no_such_file_or_directory));
  EXPECT_THAT([&] { Storage().Remove(At(u"full")); }, FailsWith(std::errc::directory_not_empty));
}

TEST_P(StorageContract, ReadsAnOpenFileToItsEndEvenWhenItIsRemoved) {
  Write(At(u"file"), "still here");
  const auto file = Storage().OpenForReading(At(u"file"));

  Storage().Remove(At(u"file"));

  EXPECT_EQ(ReadAll(*file), "still here");
}

TEST_P(StorageContract, MakesAFolderInAFolderThatIsThere) {
  Write(At(u"file"), "");
  AddLink(u"dangling", u"missing");
  Storage().CreateFolder(At(u"folder"));

  EXPECT_EQ(Storage().Stat(At(u"folder")).kind, FileKind::Folder);
  EXPECT_THAT([&] { Storage().CreateFolder(At(u"folder")); }, FailsWith(std::errc::file_exists));
  EXPECT_THAT([&] { Storage().CreateFolder(At(u"file")); }, FailsWith(std::errc::file_exists));
  EXPECT_THAT([&] { Storage().CreateFolder(At(u"dangling")); }, FailsWith(std::errc::file_exists));
  EXPECT_THAT([&] { Storage().CreateFolder(At(u"no", u"where")); }, FailsWith(std::errc::no_such_file_or_directory));
}

TEST_P(StorageContract, LocksAFileThatItMakesIfNeedBe) {
  const auto lock = Storage().Lock(At(u"lock"), std::chrono::milliseconds(0));

  EXPECT_THAT(Entries(), UnorderedElementsAre(ListedEntry{u"lock", FileKind::File}));
}

TEST_P(StorageContract, LocksOutEveryOtherHolder) {
  auto lock = Storage().Lock(At(u"lock"), std::chrono::milliseconds(0));

  EXPECT_THAT([&] { return Storage().Lock(At(u"lock"), std::chrono::milliseconds(1)); },
              FailsWith(std::errc::timed_out));
  EXPECT_NO_THROW(static_cast<void>(Storage().Lock(At(u"other"), std::chrono::milliseconds(0))));
  lock.reset();
  EXPECT_NO_THROW(static_cast<void>(Storage().Lock(At(u"lock"), std::chrono::milliseconds(0))));
}

TEST_P(StorageContract, WaitsForALockUntilItsHolderLetsGo) {
  auto lock = Storage().Lock(At(u"lock"), std::chrono::milliseconds(0));
  std::atomic<bool> isHeld = true;
  std::jthread waiter([&] {
    const auto waited = Storage().Lock(At(u"lock"), std::chrono::milliseconds::max());
    EXPECT_FALSE(isHeld);
  });

  isHeld = false;
  lock.reset();
}

TEST_P(StorageContract, LetsOneHolderInAtATime) {
  std::atomic<bool> isInside = false;
  std::atomic<int> encounters = 0;
  Quorvex::PathManagement::support::RunTogether(4, [&](std::size_t) {
    for (int round = 0; round < 10; ++round) {
      const auto lock = Storage().Lock(At(u"lock"), std::chrono::minutes(1));
      if (isInside.exchange(true)) ++encounters;
      isInside = false;
    }
  });
  EXPECT_EQ(encounters, 0);
}

TEST_P(StorageContract, LocksOnlyFiles) {
  EXPECT_THAT([&] { return Storage().Lock(Folder(), std::chrono::milliseconds(0)); },
              FailsWith(std::errc::is_a_directory));
}

TEST_P(StorageContract, MayBeUsedByManyThreads) {
  std::atomic<int> failures = 0;
  Quorvex::PathManagement::support::RunTogether(4, [&](std::size_t index) {
    const AbsoluteIRI mine = At(u"file" + std::u16string(index + 1, u'x'));
    for (int round = 0; round < 20; ++round) {
      Write(mine, "content");
      if (Read(mine) != "content") ++failures;
      static_cast<void>(Entries());
      Storage().Remove(mine);
    }
  });
  EXPECT_EQ(failures, 0);
  EXPECT_THAT(Entries(), IsEmpty());
}

}  // namespace foundation::storage::vfs::contract
