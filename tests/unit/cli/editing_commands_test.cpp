// The editing commands where storage refuses or fails, as it cannot be made to on every disk.

#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <search_path_environment/saved_path_file.hpp>
#include <support/storage_matchers.hpp>
#include <unit/environment/memory_storage.hpp>

#include "commands.hpp"
#include "outcome.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Fault;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using testing::HasSubstr;

Fault RefusalToList(std::u16string_view folder) {
  return {StorageOperation::CheckFolder, InMemory(folder), 1, std::make_error_code(std::errc::permission_denied),
          Persistence::Persistent};
}

EditOptions EditOf(const std::vector<std::string>& folders) { return {folders, kSession, false}; }

PathListOptions SessionsPath() {
  PathListOptions options;
  options.path.session = kSession;
  return options;
}

class EditingCommands : public testing::Test {
 protected:
  MemoryStorage storage_ = std::move(MemoryStorage().WithFolders({u"/a", u"/b", u"/shut"}));
};

TEST_F(EditingCommands, AddWarnsOfAFolderThatMayNotBeListedAndAddsNothing) {
  storage_.Through<FailingStorageProvider>()->Plan(RefusalToList(u"/shut"));

  const Outcome outcome = OutcomeOf([] { return RunAdd({EditOf({"memory:///a", "memory:///shut"}), false}); });

  EXPECT_EQ(outcome.status, ExitStatus::No);
  EXPECT_THAT(outcome.err, HasSubstr("\"memory:///shut\" may not be read"));
  EXPECT_THAT(OutcomeOf([] { return RunPath(SessionsPath()); }).out, "");
}

TEST_F(EditingCommands, AddLetsAFailureOfStoragePassThatIsNoMatterOfTheFolder) {
  storage_.Through<FailingStorageProvider>()->Plan({StorageOperation::CheckFolder, InMemory(u"/a")});

  EXPECT_THAT(
      [] {
        return RunAdd({EditOf({"memory:///a"}), false});
      },
      testing::Throws<std::exception>(testing::Property(&std::exception::what, HasSubstr("memory:///a"))));
}

TEST_F(EditingCommands, AddLetsAFailureToSavePassAndLeavesThePathAsItWas) {
  ASSERT_EQ(RunAdd({EditOf({"memory:///a"}), false}), ExitStatus::Yes);
  storage_.Through<FailingStorageProvider>()->Plan({StorageOperation::Rename, std::nullopt, 1,
                                                    std::make_error_code(std::errc::no_space_on_device),
                                                    Persistence::Persistent});

  EXPECT_THAT(
      [] {
        return RunAdd({EditOf({"memory:///b"}), false});
      },
      foundation::storage::vfs::FailsWith(std::errc::no_space_on_device));
  EXPECT_EQ(OutcomeOf([] { return RunPath(SessionsPath()); }).out, "present     memory:///a\n");
}

TEST_F(EditingCommands, RemoveAsksNothingAboutTheFolder) {
  ASSERT_EQ(RunAdd({EditOf({"memory:///a", "memory:///shut"}), false}), ExitStatus::Yes);
  storage_.Through<FailingStorageProvider>()->Plan(RefusalToList(u"/shut"));

  EXPECT_EQ(RunRemove({EditOf({"memory:///shut"})}), ExitStatus::Yes);

  EXPECT_EQ(OutcomeOf([] { return RunPath(SessionsPath()); }).out, "present     memory:///a\n");
}

TEST_F(EditingCommands, PathTellsAFolderThatMayNotBeListedFromOneThatIsMissing) {
  ASSERT_EQ(RunAdd({EditOf({"memory:///a", "memory:///shut", "memory:///b"}), false}), ExitStatus::Yes);
  storage_.GetProvider().Remove(InMemory(u"/b"));
  storage_.Through<FailingStorageProvider>()->Plan(RefusalToList(u"/shut"));

  EXPECT_EQ(OutcomeOf([] { return RunPath(SessionsPath()); }).out,
            "present     memory:///a\n"
            "unreadable  memory:///shut\n"
            "missing     memory:///b\n");

  PathListOptions asJson = SessionsPath();
  asJson.json = true;
  EXPECT_THAT(OutcomeOf([&asJson] { return RunPath(asJson); }).out,
              HasSubstr(R"("state":"unreadable","reason":"it cannot be read: Permission denied"})"));
}

TEST_F(EditingCommands, PathAsksOnceAboutEachFolderAndListsNone) {
  ASSERT_EQ(RunAdd({EditOf({"memory:///a", "memory:///b"}), false}), ExitStatus::Yes);
  const auto counting = storage_.Through<CountingStorageProvider>();

  ASSERT_EQ(OutcomeOf([] { return RunPath(SessionsPath()); }).status, ExitStatus::Yes);

  EXPECT_EQ(counting->GetCount(StorageOperation::CheckFolder), 2U);
  EXPECT_EQ(counting->GetCount(StorageOperation::List), 0U);
}

TEST_F(EditingCommands, DryRunsWriteNothing) {
  ASSERT_EQ(RunAdd({EditOf({"memory:///a"}), false}), ExitStatus::Yes);
  const auto counting = storage_.Through<CountingStorageProvider>();
  EditOptions rehearsed = EditOf({"memory:///b"});
  rehearsed.isDryRun = true;

  EXPECT_EQ(OutcomeOf([&] { return RunAdd({rehearsed, false}); }).out, "+ memory:///b\n");

  for (const StorageOperation writing :
       {StorageOperation::Lock, StorageOperation::OpenForWriting, StorageOperation::Rename, StorageOperation::Remove,
        StorageOperation::CreateFolder, StorageOperation::FlushFolder}) {
    EXPECT_EQ(counting->GetCount(writing), 0U);
  }
}

}  // namespace
}  // namespace vornixpath
