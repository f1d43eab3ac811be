// Many processes edit one saved path at once, and some are killed in the middle of it. Says what came of it.
//
//     edit_and_kill TOOL SECONDS [EDITORS]
//
// Each editor adds and removes folders of its own, one process of TOOL an edit, so that it knows what must stand in the
// file: all the folders of an edit that reported success, none of one that reported failure, and of one that was killed
// all or none. Beside them a reader sees to it that the file is whole at every moment. Exit status 0 when nothing was
// lost.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <foundation/storage/vfs/storage_system.hpp>
#include <mutex>
#include <random>
#include <search_path_environment/saved_path_file.hpp>
#include <set>
#include <string>
#include <support/temporary_folder.hpp>
#include <thread>
#include <vector>

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::SavedPathFile;
using Quorvex::PathManagement::support::TemporaryFolder;

struct Figures {
  std::atomic<std::size_t> made = 0;
  std::atomic<std::size_t> failed = 0;
  std::atomic<std::size_t> killed = 0;
  std::atomic<std::size_t> killedButMade = 0;
  std::atomic<std::size_t> reads = 0;
  std::atomic<std::size_t> lost = 0;  ///< an edit is not there as reported
  std::atomic<std::size_t> half = 0;  ///< an edit is there in part
  std::atomic<std::size_t> torn = 0;  ///< the file could not be read
};

class Trial {
 public:
  Trial(std::string tool, std::chrono::seconds duration)
      : tool_(std::move(tool)), end_(std::chrono::steady_clock::now() + duration) {}

  void Run(std::size_t editors) {
    std::jthread reader([this](const std::stop_token& stop) {
      while (!stop.stop_requested()) static_cast<void>(ReadFolders());
    });
    std::vector<std::jthread> threads;
    for (std::size_t editor = 0; editor < editors; ++editor) {
      threads.emplace_back([this, editor] { RunEditor(editor); });
    }
  }

  // Whether the file, its versions and the lock still serve the next edit, which sweeps what was left behind.
  [[nodiscard]] bool GoesOn() const {
    const auto lock = File().Lock(std::chrono::seconds(5));
    const auto bytes = File().ReadBytes();
    File().Replace(bytes, File().Understand(bytes).WithFolders({}).ToBytes(),
                   Quorvex::PathEnvironment::EditKind::Removal);
    return !File().GetVersions().empty() && !std::filesystem::exists(folder_.GetPath() / "path.draft");
  }

  Figures figures;

 private:
  using Folders = std::set<std::u16string>;

  [[nodiscard]] SavedPathFile File() const {
    return {AbsoluteIRI(u"file://" + (folder_.GetPath() / "path").u16string()),
            VornixStorageSystem::GetStorageSystemReference()};
  }

  // What the file names; nothing when it is not whole.
  std::optional<Folders> ReadFolders() {
    ++figures.reads;
    try {
      Folders names;
      for (const AbsoluteIRI& folder : File().Read().GetFolders()) names.insert(folder.getName());
      return names;
    } catch (const std::exception& failure) {
      ++figures.torn;
      std::fprintf(stderr, "not whole: %s\n", failure.what());
      return std::nullopt;
    }
  }

  void RunEditor(std::size_t editor) {
    std::mt19937_64 random(editor);
    std::vector<std::string> folders;
    for (int i = 0; i < 3; ++i) {
      folders.push_back((folder_.GetPath() / (std::to_string(editor) + "-" + std::to_string(i))).string());
      std::filesystem::create_directory(folders.back());
    }
    bool isThere = false;
    while (std::chrono::steady_clock::now() < end_) {
      const auto outcome = Edit(isThere ? "remove" : "add", folders, random() % 3 == 0, random());
      const auto found = CountOnPath(folders);
      if (!found) continue;
      if (*found != 0 && *found != folders.size()) {
        ++figures.half;
        std::fprintf(stderr, "editor %zu: %zu of %zu folders are there\n", editor, *found, folders.size());
      }
      const bool isThereNow = *found != 0;
      const bool isMade = isThereNow != isThere;
      if ((outcome == Outcome::Made) != isMade && outcome != Outcome::Killed) {
        ++figures.lost;
        std::fprintf(stderr, "editor %zu: an edit is not there as reported\n", editor);
      }
      if (outcome == Outcome::Killed && isMade) ++figures.killedButMade;
      isThere = isThereNow;
    }
  }

  std::optional<std::size_t> CountOnPath(const std::vector<std::string>& folders) {
    const auto names = ReadFolders();
    if (!names) return std::nullopt;
    return static_cast<std::size_t>(std::count_if(folders.begin(), folders.end(), [&](const std::string& folder) {
      return names->contains(std::filesystem::path(folder).filename().u16string());
    }));
  }

  enum class Outcome { Made, Failed, Killed };

  Outcome Edit(const std::string& command, const std::vector<std::string>& folders, bool shallBeKilled,
               std::size_t random) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t process = Start(command, folders);
    if (shallBeKilled) {
      // At any moment of an edit, its end included.
      std::this_thread::sleep_for(std::chrono::microseconds(random % (usualMicroseconds_ * 5 / 4)));
      kill(process, SIGKILL);
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFSIGNALED(status)) {
      ++figures.killed;
      return Outcome::Killed;
    }
    usualMicroseconds_ = static_cast<std::size_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start).count());
    const bool isMade = WEXITSTATUS(status) == 0;
    ++(isMade ? figures.made : figures.failed);
    return isMade ? Outcome::Made : Outcome::Failed;
  }

  pid_t Start(const std::string& command, const std::vector<std::string>& folders) {
    std::vector<std::string> words = {tool_, command, "--session", (folder_.GetPath() / "path").string()};
    words.insert(words.end(), folders.begin(), folders.end());
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = 0;
    const int error = posix_spawn(&process, tool_.c_str(), nullptr, nullptr, arguments.data(), environ);
    if (error == 0) return process;
    std::fprintf(stderr, "cannot start %s\n", tool_.c_str());
    std::exit(2);
  }

  const std::string tool_;
  const std::chrono::steady_clock::time_point end_;
  const TemporaryFolder folder_;
  std::atomic<std::size_t> usualMicroseconds_ = 20'000;  // what the last edit took that was not killed
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: edit_and_kill TOOL SECONDS [EDITORS]\n");
    return 2;
  }
  const std::size_t editors = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 16;
  Trial trial(argv[1], std::chrono::seconds(std::strtoull(argv[2], nullptr, 10)));
  trial.Run(editors);

  const Figures& figures = trial.figures;
  const bool goesOn = trial.GoesOn();
  std::printf(
      "%zu editors for %s s: %zu edits made, %zu failed, %zu killed (%zu of them after they were made), %zu reads\n"
      "lost edits: %zu, half edits: %zu, files that were not whole: %zu; the next edit %s\n",
      editors, argv[2], figures.made.load(), figures.failed.load(), figures.killed.load(), figures.killedButMade.load(),
      figures.reads.load(), figures.lost.load(), figures.half.load(), figures.torn.load(),
      goesOn ? "works" : "DOES NOT WORK");
  const bool isFine = figures.lost == 0 && figures.half == 0 && figures.torn == 0 && figures.made > 0 && goesOn;
  return isFine ? 0 : 1;
}
