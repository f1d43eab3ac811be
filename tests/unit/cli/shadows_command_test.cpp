// The command where storage refuses, as it cannot be made to on every disk.

#include <gmock/gmock.h>

#include <fakes/failing_storage_provider.hpp>
#include <search_path_environment/whole_file.hpp>
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

const std::string kOld = "# shadowed names, version 1\n# old\n";

class ShadowsWithAFileThatCannotBeRead : public testing::Test {
 protected:
  ShadowsWithAFileThatCannotBeRead() {
    storage_.GetProvider().AddFile(u"/base", kOld);
    static_cast<void>(RunAdd({{{"memory:///a", "memory:///b"}, kSession, false}, false}));
    storage_.Through<FailingStorageProvider>()->Plan({.operation = StorageOperation::Stat,
                                                      .location = InMemory(u"/b/f.vnx"),
                                                      .error = std::make_error_code(std::errc::permission_denied),
                                                      .persistence = Persistence::Persistent});
  }

  // What is written to standard error goes to `messages_`.
  ExitStatus Run(bool strict) {
    ShadowsOptions options;
    options.path.session = kSession;
    options.newBaseline = "memory:///base";
    options.strict = strict;
    const Outcome outcome = OutcomeOf([&] { return RunShadows(options); });
    listed_ = outcome.out;
    messages_ = outcome.err;
    return outcome.status;
  }

  MemoryStorage storage_ = std::move(MemoryStorage().WithFiles({u"/a/f.vnx", u"/b/f.vnx"}));
  std::string listed_;
  std::string messages_;
};

TEST_F(ShadowsWithAFileThatCannotBeRead, WriteNoBaseline) {
  EXPECT_EQ(Run(false), ExitStatus::CouldNotWork);
  EXPECT_EQ(Run(true), ExitStatus::Incomplete);

  EXPECT_EQ(Quorvex::PathEnvironment::ReadWholeFile(storage_.GetProvider(), InMemory(u"/base")), kOld);
  EXPECT_THAT(messages_, HasSubstr("cannot write the baseline \"memory:///base\": not everything on the path could be "
                                   "read\n"));
}

TEST_F(ShadowsWithAFileThatCannotBeRead, ListItWithAWarningThatShowsItsPath) {
  static_cast<void>(Run(false));

  EXPECT_EQ(listed_, "memory:///a hides 1 name of memory:///b\n  different    f\n");
  EXPECT_THAT(messages_, HasSubstr("warning: cannot examine \"memory:///b/f.vnx\": Permission denied\n"));
}

}  // namespace
}  // namespace vornixpath
