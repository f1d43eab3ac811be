// Every command, with storage that fails at each of its calls: what the command tells must be right all the same, or
// say what was in the way; and what was kept must stay whole.

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fakes/failing_storage_provider.hpp>
#include <iostream>
#include <map>
#include <support/random_source.hpp>
#include <unit/cli/outcome.hpp>
#include <unit/environment/memory_storage.hpp>

#include "program.hpp"

namespace vornixpath {
namespace {

using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::Persistence;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::MemoryStorageProvider;
using Quorvex::PathEnvironment::InMemory;
using Quorvex::PathEnvironment::MemoryStorage;
using Quorvex::PathManagement::support::RandomSource;
using testing::StartsWith;

using Arguments = std::vector<std::string>;
using Tree = std::map<std::u16string, std::string>;  // the bytes of each file

// `text` without the times in it, such as 2026-01-31T12:00:00Z, which differ from run to run.
std::string WithoutTimes(std::string text) {
  for (std::size_t at = text.find("Z"); at != std::string::npos; at = text.find("Z", at + 1)) {
    if (at < 19 || text[at - 9] != 'T' || text[at - 12] != '-') continue;
    text.erase(at - 19, 20);
    at -= 19;
  }
  return text;
}

Outcome OutcomeOfProgram(const Arguments& arguments) {
  Outcome outcome = OutcomeOf([&] { return RunProgram(arguments); });
  outcome.out = WithoutTimes(std::move(outcome.out));
  return outcome;
}

std::string BytesOf(const MemoryStorageProvider& storage, const AbsoluteIRI& file) {
  const auto bytes = storage.Map(file);
  return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
}

void Collect(const MemoryStorageProvider& storage, const std::u16string& folder, Tree& tree) {
  for (const auto& entry : storage.List(InMemory(folder)).entries) {
    const std::u16string path = folder + (folder == u"/" ? u"" : u"/") + entry.name;
    if (entry.kind == FileKind::Folder) {
      Collect(storage, path, tree);
    } else {
      tree[path] = BytesOf(storage, InMemory(path));
    }
  }
}

Tree TreeOf(const MemoryStorageProvider& storage) {
  Tree tree;
  Collect(storage, u"/", tree);
  return tree;
}

const std::u16string kSavedPath = u"/state/path";
const std::string kCache = "memory:///cache/toolbox";
const std::string kSnapshot = "memory:///kept/snapshot";
const std::string kPage = "memory:///kept/page.html";
const std::string kOldPage = "<!DOCTYPE html>\n<!-- vornixpath report, version 1 -->\n<p>old</p>\n</html>\n";

/// A path with all that a folder may hold, packages, a snapshot of it, and a cache.
MemoryStorage UsualStorage() {
  MemoryStorage storage;
  storage.WithFiles({u"/a/f.vnx", u"/a/only.vnx", u"/a/+pkg/g.vnx", u"/a/@Cls/method.vnx", u"/a/private/hidden.vnx",
                     u"/b/f.vnx", u"/b/resources/r.vnx", u"/b/@Cls/other.vnx", u"/packages/geometry/area.vnx"});
  storage.WithFolders({u"/c", u"/state", u"/cache", u"/kept"});
  storage.GetProvider().AddFile(u"/packages/geometry.json",
                                R"({"component": "geometry", "root": "geometry", "pathFolders": ["."]})");
  storage.GetProvider().AddFile(u"/kept/page.html", kOldPage);
  return storage;
}

void Prepare(const Arguments& arguments) {
  const Outcome outcome = OutcomeOfProgram(arguments);
  ASSERT_EQ(outcome.status, ExitStatus::Yes) << outcome.err;
}

void PrepareSession() {
  Prepare({"add", "--session", kSession, "memory:///b"});
  Prepare({"add", "--session", kSession, "memory:///a"});
  Prepare({"snapshot", kSnapshot, "--session", kSession});
  Prepare({"cache", "write", "--session", kSession, "--cache-file", kCache});
}

std::string InWords(const Arguments& arguments) {
  std::string words = "vornixpath";
  for (const std::string& argument : arguments) words += ' ' + argument;
  return words;
}

// Where the system's own words are left out: in a list, because whoever writes a cache is told only that it failed, and
// because a folder that cannot be proven counts as changed.
bool IsToldInWords(const std::string& said) {
  const auto says = [&said](const char* words) { return said.find(words) != std::string::npos; };
  return says("may not be read") || says("unreadable") || says("could not be written") || says("changed");
}

struct Figures {
  std::size_t points = 0;
  std::size_t rightAnswers = 0;
  std::size_t told = 0;
};

// Of the calls, those that are let fail: one in five, evenly, where nothing else is asked for.
const std::size_t kPercent = static_cast<std::size_t>(std::clamp(RandomSource::Rounds(20), 5, 100));

/// One command, tried with a fault at each of its calls.
class Sweep {
 public:
  Sweep(Arguments arguments, std::error_code error, Persistence persistence)
      : arguments_(std::move(arguments)), error_(error), persistence_(persistence) {}

  void Run(Figures& figures) {
    SCOPED_TRACE(InWords(arguments_));
    LearnWhatIsRight();
    const std::size_t step = 100 / kPercent;
    for (std::size_t call = 1; !testing::Test::HasFailure(); call += step) {
      SCOPED_TRACE("call " + std::to_string(call) + ": " + error_.message() +
                   (persistence_ == Persistence::Transient ? ", once" : ", from then on"));
      if (!TryOnce(call, figures)) return;
    }
  }

 private:
  void LearnWhatIsRight() {
    const MemoryStorage storage = UsualStorage();
    PrepareSession();
    before_ = TreeOf(storage.GetProvider());
    right_ = OutcomeOfProgram(arguments_);
    EXPECT_TRUE(right_.status == ExitStatus::Yes || right_.status == ExitStatus::No) << right_.err;
    after_ = TreeOf(storage.GetProvider());
  }

  // Whether the command makes as many calls.
  bool TryOnce(std::size_t call, Figures& figures) {
    MemoryStorage storage = UsualStorage();
    PrepareSession();
    const auto failing = storage.Through<FailingStorageProvider>();
    failing->Plan({std::nullopt, std::nullopt, call, error_, persistence_});
    const Outcome outcome = OutcomeOfProgram(arguments_);
    if (failing->GetFailureCount() == 0) return false;
    failing->Clear();

    ++figures.points;
    ExpectRightOrTold(outcome, figures);
    ExpectNothingLost(TreeOf(storage.GetProvider()), outcome);
    ExpectTheNextEditWorks(storage);
    return true;
  }

  void ExpectRightOrTold(const Outcome& outcome, Figures& figures) const {
    if (outcome.status == right_.status && outcome.out == right_.out) {
      ++figures.rightAnswers;
      return;
    }
    const std::string said = outcome.out + outcome.err;
    EXPECT_TRUE(said.find(error_.message()) != std::string::npos || IsToldInWords(said))
        << "status " << static_cast<int>(outcome.status) << "\n"
        << said;
    EXPECT_NE(outcome.status, ExitStatus::WrongUsage) << said;
    ++figures.told;
  }

  // Whatever happened, the saved path is as it was or as it was to become, and each file is there and can be read.
  void ExpectNothingLost(const Tree& tree, const Outcome& outcome) const {
    const std::string& saved = tree.at(kSavedPath);
    EXPECT_TRUE(saved == before_.at(kSavedPath) || saved == after_.at(kSavedPath)) << saved;
    EXPECT_TRUE(outcome.status != right_.status || saved == after_.at(kSavedPath)) << "said to be done: " << saved;
    for (const auto& [path, bytes] : before_) {
      EXPECT_TRUE(tree.contains(path) || !after_.contains(path)) << "gone: " << testing::PrintToString(path);
    }
    ExpectWholePages(tree, outcome);
    ExpectCanWork({"log", "--session", kSession});
    ExpectCanWork({"compare", kSnapshot, "saved", "--session", kSession});
    if (tree.contains(u"/cache/toolbox")) {
      ExpectCanWork({"cache", "verify", "--cache-file", kCache});
    }
  }

  // The old page, or a new one from beginning to end.
  void ExpectWholePages(const Tree& tree, const Outcome& outcome) const {
    const bool isWritten = arguments_.front() == "report" && outcome.status == ExitStatus::Yes;
    EXPECT_TRUE(isWritten == (tree.at(u"/kept/page.html") != kOldPage || tree.contains(u"/kept/new.html")));
    for (const auto& [path, bytes] : tree) {
      if (path.ends_with(u".html")) {
        EXPECT_TRUE(bytes.starts_with("<!DOCTYPE html>\n") && bytes.ends_with("</html>\n")) << bytes;
      }
    }
  }

  static void ExpectCanWork(const Arguments& arguments) {
    const Outcome outcome = OutcomeOfProgram(arguments);
    EXPECT_TRUE(outcome.status == ExitStatus::Yes || outcome.status == ExitStatus::No) << InWords(arguments) << '\n'
                                                                                       << outcome.err;
  }

  // What a failure left behind is in nobody's way, and beside the saved path it is tidied up.
  static void ExpectTheNextEditWorks(const MemoryStorage& storage) {
    const Outcome outcome = OutcomeOfProgram({"add", "--session", kSession, "memory:///c"});
    EXPECT_EQ(outcome.status, ExitStatus::Yes) << outcome.err;
    EXPECT_THAT(OutcomeOfProgram({"path", "--session", kSession}).out, StartsWith("present     memory:///c\n"));
    for (const auto& [path, bytes] : TreeOf(storage.GetProvider())) {
      EXPECT_FALSE(path.starts_with(u"/state/") && path.ends_with(u"draft")) << testing::PrintToString(path);
    }
  }

  Arguments arguments_;
  std::error_code error_;
  Persistence persistence_;
  Outcome right_;
  Tree before_;
  Tree after_;
};

const std::vector<Arguments> kCommands = {
    {"which", "f", "--session", kSession},
    {"which", "f", "--session", kSession, "--cache-file", kCache},
    {"which", "f", "--session", kSession, "--cache-file", kCache, "--cache", "require"},
    {"which", "f", "only", "absent", "--all", "--session", kSession, "--cache", "off"},
    {"which", "area", "--session", kSession, "--cache", "off", "--packages", "memory:///packages"},
    {"which", "hidden", "--from", "memory:///a", "--session", kSession, "--cache", "off", "--json"},
    {"why", "f", "--session", kSession, "--cache", "off"},
    {"why", "absnt", "--session", kSession, "--cache", "off", "--json"},
    {"match", "pkg", "--session", kSession, "--cache", "off"},
    {"files", ".vnx", "--session", kSession, "--cache", "off"},
    {"shadows", "--session", kSession, "--cache", "off"},
    {"doctor", "--session", kSession, "--cache-file", kCache},
    {"doctor", "--session", kSession, "--cache", "off", "--json", "--packages", "memory:///packages"},
    {"report", "--html", kPage, "--session", kSession},
    {"report", "--html", "memory:///kept/new.html", "--session", kSession, "--packages", "memory:///packages"},
    {"path", "--session", kSession},
    {"path", "--session", kSession, "--json"},
    {"packages", "memory:///packages"},
    {"snapshot", "memory:///kept/new", "--session", kSession},
    {"snapshot", kSnapshot, "--session", kSession},
    {"compare", kSnapshot, "saved", "--session", kSession},
    {"compare", kSnapshot, "saved", "--session", kSession, "--deep", "--effects"},
    {"add", "--session", kSession, "memory:///packages/geometry"},
    {"add", "--session", kSession, "--end", "memory:///packages/geometry"},
    {"remove", "--session", kSession, "memory:///a"},
    {"undo", "--session", kSession},
    {"log", "--session", kSession},
    {"cache", "write", "--session", kSession, "--cache-file", kCache},
    {"cache", "status", "--session", kSession, "--cache-file", kCache},
    {"cache", "verify", "--cache-file", kCache},
    {"cache", "clear", "--cache-file", kCache},
    {"status", "--session", kSession, "--cache-file", kCache},
    {"watch", "--session", kSession, "--poll", "0"},
};

// A signal that waits for it ends `watch` as soon as it has told what it watches, each time.
void EndEveryWatch() {
  sigset_t ending;
  sigemptyset(&ending);
  sigaddset(&ending, SIGTERM);
  ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &ending, nullptr), 0);
  ASSERT_EQ(::kill(::getpid(), SIGTERM), 0);
}

TEST(EveryCommand, AnswersRightOrTellsWhatFailedAndLosesNothingWhicheverCallOfStorageFails) {
  EndEveryWatch();
  Figures figures;
  for (const Arguments& arguments : kCommands) {
    for (const auto error : {std::errc::io_error, std::errc::permission_denied, std::errc::no_space_on_device}) {
      for (const auto persistence : {Persistence::Transient, Persistence::Persistent}) {
        Sweep(arguments, std::make_error_code(error), persistence).Run(figures);
        if (HasFailure()) return;
      }
    }
  }
  std::cout << "storage faults: " << figures.points << " points, " << figures.rightAnswers << " right answers, "
            << figures.told << " errors told, 0 losses\n";
  EXPECT_GE(figures.points, 25 * kPercent);
  EXPECT_GE(figures.told, figures.points / 4) << "the faults were hardly felt";
}

}  // namespace
}  // namespace vornixpath
