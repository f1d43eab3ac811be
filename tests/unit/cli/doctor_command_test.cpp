// The command where storage refuses, as it cannot be made to on every disk.

#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <unit/environment/memory_storage.hpp>

#include "commands.hpp"
#include "outcome.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::fakes::StorageOperation;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using testing::HasSubstr;

class DoctorWhereStorageRefuses : public testing::Test {
 protected:
  DoctorWhereStorageRefuses() { static_cast<void>(RunAdd({{{"memory:///a", "memory:///b"}, kSession, false}, false})); }

  void Refuse(StorageOperation operation, const std::u16string& location) {
    storage_.Through<FailingStorageProvider>()->Plan({.operation = operation,
                                                      .location = InMemory(location),
                                                      .error = std::make_error_code(std::errc::permission_denied),
                                                      .persistence = Persistence::Persistent});
  }

  static DoctorOptions Strict(bool strict) {
    DoctorOptions options;
    options.path.session = kSession;
    options.strict = strict;
    return options;
  }

  ExitStatus Run(const DoctorOptions& options) {
    const Outcome outcome = OutcomeOf([&] { return RunDoctor(options); });
    told_ = outcome.out;
    EXPECT_EQ(outcome.err, "");
    return outcome.status;
  }

  MemoryStorage storage_ = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));
  std::string told_;
};

TEST_F(DoctorWhereStorageRefuses, TellsOfAFileThatCouldNotBeCompared) {
  Refuse(StorageOperation::Stat, u"/b/f.vnx");

  EXPECT_EQ(Run(Strict(false)), ExitStatus::No);
  EXPECT_THAT(told_, HasSubstr("it hides the second, which could not be compared: cannot examine "
                               "\"memory:///b/f.vnx\": Permission denied\n"));
  EXPECT_EQ(Run(Strict(true)), ExitStatus::Incomplete);
}

TEST_F(DoctorWhereStorageRefuses, TellsOfAFolderThatCannotBeRead) {
  Refuse(StorageOperation::List, u"/b");

  EXPECT_EQ(Run(Strict(false)), ExitStatus::No);
  EXPECT_EQ(told_,
            "errors\n"
            "  unreadable-folder  it cannot be read: Permission denied\n"
            "    memory:///b, folder 2\n"
            "    fix: make it readable, or take it off the session memory:///state/path: "
            "vornixpath remove --session 'memory:///state/path' 'memory:///b'\n"
            "score 90 of 100: 1 error\n");
  EXPECT_EQ(Run(Strict(true)), ExitStatus::Incomplete);
}

TEST_F(DoctorWhereStorageRefuses, TellsNothingOfAFolderThatIsMasked) {
  Refuse(StorageOperation::List, u"/b");
  DoctorOptions options = Strict(true);
  options.path.masks = {"memory:///b"};

  EXPECT_EQ(Run(options), ExitStatus::Yes);
  EXPECT_EQ(told_, "score 100 of 100: nothing found\n");
}

TEST_F(DoctorWhereStorageRefuses, IsStrictWhateverTheScore) {
  Refuse(StorageOperation::List, u"/b");
  DoctorOptions options = Strict(true);
  options.minScore = 100;

  EXPECT_EQ(Run(options), ExitStatus::Incomplete);
  options.strict = false;
  EXPECT_EQ(Run(options), ExitStatus::No);
  options.minScore = 90;
  EXPECT_EQ(Run(options), ExitStatus::Yes);
}

}  // namespace
}  // namespace vornixpath
