#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <fakes/forbidding_storage_provider.hpp>
#include <filesystem>
#include <search_path_environment/working_folder.hpp>
#include <support/without_privileges.hpp>
#include <type_traits>

#include "disk_folder.hpp"
#include "memory_storage.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using current_working_folder::FailedToAbsolutizeException;
using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::ForbiddingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::VornixStorageSystem;
using testing::AllOf;
using testing::Property;
using testing::StrEq;

/// A callable that throws a FailedToAbsolutizeException with the code of `error`.
auto Refuses(AbsolutizeError error) {
  return testing::Throws<FailedToAbsolutizeException>(
      Property("GetErrorCode", &FailedToAbsolutizeException::GetErrorCode, static_cast<int>(error)));
}

/// The same, and what is told to people is `message`.
auto Refuses(AbsolutizeError error, const std::string& message) {
  return AllOf(Refuses(error), testing::Throws<FailedToAbsolutizeException>(
                                   Property("what", &FailedToAbsolutizeException::what, StrEq(message))));
}

WorkingFolder WorkingIn(std::optional<std::u16string> folder) {
  return {std::move(folder), VornixStorageSystem::GetStorageSystemReference()};
}

TEST(TextualWorkingFolder, MakesNamesAbsoluteByText) {
  const TextualWorkingFolder folder(u"/v/w");

  EXPECT_EQ(folder.absolutize(u"a/../b"), AbsoluteIRI(u"file:///v/w/b"));
  EXPECT_EQ(folder.absolutize(u"../50%"), AbsoluteIRI(u"file:///v/50%25"));
  EXPECT_EQ(folder.absolutize(u"/no/such folder"), AbsoluteIRI(u"file:///no/such folder"));
  EXPECT_EQ(folder.absolutize(u"unserved://host/a"), AbsoluteIRI(u"unserved://host/a"));
}

TEST(TextualWorkingFolder, TouchesNoStorage) {
  MemoryStorage storage;
  storage.Through<ForbiddingStorageProvider>()->Forbid();

  EXPECT_EQ(TextualWorkingFolder(u"memory:///w").absolutize(u"a"), InMemory(u"/w/a"));
  EXPECT_EQ(TextualWorkingFolder(u"/w").absolutize(u"memory:///a"), InMemory(u"/a"));
}

TEST(TextualWorkingFolder, RefusesAMalformedName) {
  const TextualWorkingFolder folder(u"/w");

  EXPECT_THAT([&] { return folder.absolutize(u""); },
              Refuses(AbsolutizeError::Malformed, "cannot use the folder \"\": the name is empty"));
  EXPECT_THAT([&] { return folder.absolutize(std::u16string(u"a\0b", 3)); }, Refuses(AbsolutizeError::Malformed));
  EXPECT_THAT([&] { return folder.absolutize(std::u16string(u"file:///\0", 9)); }, Refuses(AbsolutizeError::Malformed));
  EXPECT_THAT([&] { return folder.absolutize(u"\xD800"); }, Refuses(AbsolutizeError::Malformed));
  EXPECT_THAT([&] { return folder.absolutize(u"file:///%zz"); }, Refuses(AbsolutizeError::Malformed));
}

TEST(TextualWorkingFolder, RefusesARelativeNameWhenThereIsNoFolder) {
  const auto refuses = Refuses(AbsolutizeError::NoWorkingFolder,
                               "cannot use the folder \"a\": the name is relative, and there is no working folder");

  EXPECT_THAT([] { return TextualWorkingFolder(std::nullopt).absolutize(u"a"); }, refuses);
  EXPECT_THAT([] { return TextualWorkingFolder(u"").absolutize(u"a"); }, refuses);
  EXPECT_THAT([] { return TextualWorkingFolder(u"relative").absolutize(u"a"); }, refuses);
}

TEST(TextualWorkingFolder, NeedsNoFolderForAnAbsoluteName) {
  const TextualWorkingFolder none(std::nullopt);

  EXPECT_EQ(none.absolutize(u"/a"), AbsoluteIRI(u"file:///a"));
  EXPECT_EQ(none.absolutize(u"memory:///a"), InMemory(u"/a"));
  EXPECT_THAT([&] { return none.absolutize(u""); }, Refuses(AbsolutizeError::Malformed));
}

TEST(TextualWorkingFolder, IsAValue) {
  TextualWorkingFolder folder(u"/v");
  const TextualWorkingFolder copy = folder;

  folder = TextualWorkingFolder(u"/w");

  EXPECT_EQ(copy.absolutize(u"a"), AbsoluteIRI(u"file:///v/a"));
  EXPECT_EQ(folder.absolutize(u"a"), AbsoluteIRI(u"file:///w/a"));
}

class WorkingFolderInMemory : public testing::Test {
 protected:
  WorkingFolderInMemory() {
    storage_.WithFolders({u"/w/folder", u"/elsewhere"}).WithFiles({u"/w/file"});
    storage_.WithLink(u"/w/link", u"/elsewhere").WithLink(u"/w/toFile", u"file");
    storage_.WithLink(u"/w/dangling", u"nowhere").WithLink(u"/w/loop", u"loop");
  }

  MemoryStorage storage_;
  const WorkingFolder folder_ = WorkingIn(u"memory:///w");
};

TEST_F(WorkingFolderInMemory, NamesAFolderThatIsThere) {
  EXPECT_EQ(folder_.absolutize(u"folder"), InMemory(u"/w/folder"));
  EXPECT_EQ(folder_.absolutize(u"."), InMemory(u"/w"));
  EXPECT_EQ(folder_.absolutize(u"../elsewhere/"), InMemory(u"/elsewhere"));
  EXPECT_EQ(folder_.absolutize(u"memory:///elsewhere"), InMemory(u"/elsewhere"));
  EXPECT_EQ(WorkingIn(std::nullopt).absolutize(u"memory:///"), InMemory(u"/"));
}

TEST_F(WorkingFolderInMemory, KeepsTheSpellingOfALink) { EXPECT_EQ(folder_.absolutize(u"link"), InMemory(u"/w/link")); }

TEST_F(WorkingFolderInMemory, TellsWhyANameIsNoFolder) {
  const auto absolutizing = [this](const std::u16string& name) {
    return [=, this] { return folder_.absolutize(name); };
  };

  EXPECT_THAT(absolutizing(u"missing"), Refuses(AbsolutizeError::Missing,
                                                "cannot use the folder \"missing\": cannot check "
                                                "\"memory:///w/missing\": No such file or directory"));
  EXPECT_THAT(absolutizing(u"missing/below"), Refuses(AbsolutizeError::Missing));
  EXPECT_THAT(absolutizing(u"file"), Refuses(AbsolutizeError::NotAFolder));
  EXPECT_THAT(absolutizing(u"toFile"), Refuses(AbsolutizeError::NotAFolder));
  EXPECT_THAT(absolutizing(u"file/below"), Refuses(AbsolutizeError::NotAFolder));
  EXPECT_THAT(absolutizing(u"loop"), Refuses(AbsolutizeError::LinkLoop));
  EXPECT_THAT(absolutizing(u"loop/below"), Refuses(AbsolutizeError::LinkLoop));
  EXPECT_THAT(
      absolutizing(u"dangling"),
      Refuses(AbsolutizeError::DanglingLink, "cannot use the folder \"dangling\": it is a link that leads nowhere"));
  EXPECT_THAT(absolutizing(u"dangling/below"), Refuses(AbsolutizeError::Missing));
}

TEST_F(WorkingFolderInMemory, RefusesByTextBeforeItAsksStorage) {
  storage_.Through<ForbiddingStorageProvider>()->Forbid();

  EXPECT_THAT([&] { return folder_.absolutize(u""); }, Refuses(AbsolutizeError::Malformed));
  EXPECT_THAT([&] { return folder_.absolutize(u"memory:///%zz"); }, Refuses(AbsolutizeError::Malformed));
  EXPECT_THAT([&] { return WorkingIn(std::nullopt).absolutize(u"a"); }, Refuses(AbsolutizeError::NoWorkingFolder));
}

TEST_F(WorkingFolderInMemory, AsksStorageNoMoreThanWhetherTheFolderCanBeListed) {
  const auto counting = storage_.Through<CountingStorageProvider>();

  static_cast<void>(folder_.absolutize(u"folder"));

  EXPECT_EQ(counting->GetCount(StorageOperation::CheckFolder, InMemory(u"/w/folder")), 1U);
  EXPECT_EQ(counting->GetCount(), 1U);
}

TEST_F(WorkingFolderInMemory, TakesANameForMissingWhenNobodyCanTellWhetherALinkStandsThere) {
  const auto failing = storage_.Through<FailingStorageProvider>();
  failing->Plan({.operation = StorageOperation::List, .error = std::make_error_code(std::errc::permission_denied)});

  EXPECT_THAT([&] { return folder_.absolutize(u"dangling"); }, Refuses(AbsolutizeError::Missing));
}

TEST_F(WorkingFolderInMemory, TranslatesEveryErrorOfStorage) {
  const auto failing = storage_.Through<FailingStorageProvider>();
  const auto failingWith = [&](std::errc error) {
    return [&, error] {
      failing->Clear();
      failing->Plan({.operation = StorageOperation::CheckFolder, .error = std::make_error_code(error)});
      return folder_.absolutize(u"folder");
    };
  };

  EXPECT_THAT(failingWith(std::errc::permission_denied), Refuses(AbsolutizeError::PermissionDenied));
  EXPECT_THAT(failingWith(std::errc::operation_not_permitted), Refuses(AbsolutizeError::PermissionDenied));
  EXPECT_THAT(failingWith(std::errc::not_a_directory), Refuses(AbsolutizeError::NotAFolder));
  EXPECT_THAT(failingWith(std::errc::too_many_symbolic_link_levels), Refuses(AbsolutizeError::LinkLoop));
  EXPECT_THAT(failingWith(std::errc::filename_too_long), Refuses(AbsolutizeError::NameTooLong));
  EXPECT_THAT(failingWith(std::errc::too_many_files_open), Refuses(AbsolutizeError::StorageFailure));
  EXPECT_THAT(failingWith(std::errc::io_error),
              Refuses(AbsolutizeError::StorageFailure,
                      "cannot use the folder \"folder\": cannot check \"memory:///w/folder\": Input/output error"));
}

TEST_F(WorkingFolderInMemory, IsAValue) {
  WorkingFolder folder = folder_;
  const WorkingFolder copy = folder;

  folder = WorkingIn(u"memory:///");

  EXPECT_EQ(copy.absolutize(u"folder"), InMemory(u"/w/folder"));
  EXPECT_EQ(folder.absolutize(u"elsewhere"), InMemory(u"/elsewhere"));
}

TEST(WorkingFolder, FindsADanglingLinkUnderAnySpellingWhereLetterCaseMakesNoDifference) {
  MemoryStorage storage(NameComparison::IgnoreCase);
  storage.WithLink(u"/w/Dangling", u"nowhere");

  EXPECT_THAT([] { return WorkingIn(u"memory:///w").absolutize(u"dANGLING"); }, Refuses(AbsolutizeError::DanglingLink));
}

TEST(WorkingFolder, TellsLetterCasesApartWhereTheyMakeADifference) {
  MemoryStorage storage;
  storage.WithLink(u"/w/Dangling", u"nowhere");

  EXPECT_THAT([] { return WorkingIn(u"memory:///w").absolutize(u"dANGLING"); }, Refuses(AbsolutizeError::Missing));
}

TEST(WorkingFolder, NamesASchemeThatNobodyServes) {
  EXPECT_THAT([] { return WorkingIn(u"/").absolutize(u"unserved:///a"); },
              Refuses(AbsolutizeError::StorageFailure,
                      "cannot use the folder \"unserved:///a\": cannot find storage for \"unserved:///a\": no storage "
                      "serves its scheme"));
}

TEST(WorkingFolder, ShowsNoNameThatATerminalWouldActOn) {
  EXPECT_THAT([] { return WorkingIn(std::nullopt).absolutize(u"\x1B[31m"); },
              Refuses(AbsolutizeError::NoWorkingFolder,
                      "cannot use the folder \"\\u{1B}[31m\": the name is relative, and there is no working folder"));
}

TEST(WorkingFolder, ShowsALongNameByItsEnds) {
  EXPECT_THAT([] { return WorkingIn(std::nullopt).absolutize(std::u16string(5000, u'n')); },
              Refuses(AbsolutizeError::NoWorkingFolder,
                      "cannot use the folder \"" + std::string(100, 'n') + "..." + std::string(100, 'n') +
                          "\" (5,000 characters): the name is relative, and there is no working folder"));
}

TEST(WorkingFolder, NamesFoldersOnDisk) {
  const DiskFolder disk;
  disk.AddFolder("a b");
  disk.AddFile("file");
  disk.AddFifo("fifo");
  disk.AddLink("link", "a b");
  disk.AddLink("dangling", "nowhere");
  const WorkingFolder folder = WorkingIn(fl::filesystem::from_bytes(disk.PathOf()));

  EXPECT_EQ(folder.absolutize(u"a b"), disk.LocationOf("a b"));
  EXPECT_EQ(folder.absolutize(u"link"), disk.LocationOf("link"));
  EXPECT_THAT([&] { return folder.absolutize(u"missing"); }, Refuses(AbsolutizeError::Missing));
  EXPECT_THAT([&] { return folder.absolutize(u"dangling"); }, Refuses(AbsolutizeError::DanglingLink));
  EXPECT_THAT([&] { return folder.absolutize(u"file/below"); }, Refuses(AbsolutizeError::NotAFolder));
  EXPECT_THAT([&] { return folder.absolutize(u"fifo"); }, Refuses(AbsolutizeError::NotAFolder));
  EXPECT_THAT([&] { return folder.absolutize(std::u16string(256, u'n')); }, Refuses(AbsolutizeError::NameTooLong));
}

TEST(WorkingFolder, RefusesAFolderOnDiskThatMayNotBeRead) {
  const DiskFolder disk;
  disk.AddFolder("closed");
  const WorkingFolder folder = WorkingIn(fl::filesystem::from_bytes(disk.PathOf()));
  std::filesystem::permissions(disk.PathOf("closed"), std::filesystem::perms::none);

  EXPECT_THAT(
      [&] { PathManagement::support::WithoutPrivileges([&] { static_cast<void>(folder.absolutize(u"closed")); }); },
      Refuses(AbsolutizeError::PermissionDenied));

  std::filesystem::permissions(disk.PathOf("closed"), std::filesystem::perms::owner_all);  // so that it can be removed
}

TEST(WorkingFolderException, KeepsItsTextWhenCopied) {
  const WorkingFolderException failure(AbsolutizeError::LinkLoop, u"a", "why");
  WorkingFolderException copy(AbsolutizeError::Missing, u"b", "other");

  copy = failure;

  EXPECT_STREQ(copy.what(), "cannot use the folder \"a\": why");
  EXPECT_EQ(copy.GetErrorCode(), 7);
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<WorkingFolderException>);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
