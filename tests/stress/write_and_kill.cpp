// Processes that write one cache are killed in the middle of it, while readers look. Says what came of it.
//
//     write_and_kill TOOL SECONDS [WRITERS]
//
// Each writer keeps a path of its own in the cache, one process of TOOL at a time. Whatever a reader opens must be a
// whole cache of one of these paths: it is checked byte by byte, and its answer must be that path's. Exit status 0 when
// it always was.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <foundation/storage/vfs/storage_system.hpp>
#include <fstream>
#include <iostream>
#include <optional>
#include <random>
#include <search_path_environment/toolbox_cache.hpp>
#include <string>
#include <support/temporary_folder.hpp>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::CacheRefusal;
using Quorvex::PathEnvironment::CacheTrust;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;
using Quorvex::PathManagement::support::TemporaryFolder;

struct Figures {
  std::atomic<std::size_t> written = 0;
  std::atomic<std::size_t> failed = 0;
  std::atomic<std::size_t> killed = 0;
  std::atomic<std::size_t> draftsLeft = 0;  ///< which the next writer sweeps
  std::atomic<std::size_t> reads = 0;
  std::atomic<std::size_t> torn = 0;  ///< the cache was not whole
};

class Trial {
 public:
  Trial(std::string tool, std::chrono::seconds duration, std::size_t writers)
      : tool_(std::move(tool)), end_(std::chrono::steady_clock::now() + duration), writers_(writers) {
    for (std::size_t writer = 0; writer < writers_; ++writer) MakeFolders(writer);
  }

  void Run() {
    RunTool(0, std::nullopt);  // so that there is a cache to look at
    std::vector<std::jthread> threads;
    threads.reserve(writers_ + 2);
    for (int reader = 0; reader < 2; ++reader) {
      threads.emplace_back([this] {
        while (IsToGoOn()) Read();
      });
    }
    for (std::size_t writer = 0; writer < writers_; ++writer) {
      threads.emplace_back([this, writer] { RunWriter(writer); });
    }
  }

  // Whether the next writer is not held up by what was left behind, and sweeps it.
  [[nodiscard]] bool GoesOn() {
    const std::size_t written = figures.written;
    RunTool(0, std::nullopt);
    Read();
    return figures.written == written + 1 && !fs::exists(Place("cache.draft"));
  }

  Figures figures;

 private:
  // On a machine that is busy with other things, longer than asked for: something has to have happened.
  [[nodiscard]] bool IsToGoOn() const {
    const auto over = std::chrono::steady_clock::now() - end_;
    if (over < std::chrono::seconds(0)) return true;
    return (figures.written == 0 || figures.killed == 0) && over < std::chrono::seconds(60);
  }
  [[nodiscard]] fs::path Place(const std::string& name) const { return folder_.GetPath() / name; }

  static std::string FolderOf(std::size_t writer, int number) {
    return std::to_string(writer) + "-" + std::to_string(number);
  }

  // As many folders as its number tells, so that no two caches have one size.
  void MakeFolders(std::size_t writer) const {
    for (int i = 0; i < 20 + static_cast<int>(writer); ++i) {
      fs::create_directory(Place(FolderOf(writer, i)));
      for (int file = 0; file < 50; ++file) {
        std::ofstream(Place(FolderOf(writer, i)) / ("file" + std::to_string(file) + ".vnx"));
      }
    }
  }

  void Read() {
    ++figures.reads;
    try {
      const auto cache = ToolboxCache::Open(VornixStorageSystem::GetStorageSystemReference(),
                                            AbsoluteIRI(u"file://" + Place("cache").u16string()), CacheTrust::Blind);
      cache.Check();
      const auto entries = cache.GetMainEntries();
      const std::size_t writer = entries.size() - 20;
      const std::string last = FolderOf(writer, static_cast<int>(entries.size()) - 1);
      const bool isOfThatWriter = writer < writers_ &&
                                  entries.back()->GetLocation().getName() == fs::path(last).u16string() &&
                                  cache.CountNames() == 50 * entries.size();
      if (!isOfThatWriter) throw ToolboxCacheError(CacheRefusal::Damaged, "it is of no path that was written");
    } catch (const std::exception& failure) {
      ++figures.torn;
      std::cerr << "not whole: " << failure.what() << '\n';
    }
  }

  void RunWriter(std::size_t writer) {
    std::mt19937_64 random(writer);
    while (IsToGoOn()) {
      // At any moment of the writing, its end included.
      const std::size_t moment = random() % (usualMicroseconds_ * 5 / 4);
      RunTool(writer, random() % 3 == 0 ? std::nullopt : std::optional(std::chrono::microseconds(moment)));
    }
  }

  // Killed after `life`, if there is one.
  void RunTool(std::size_t writer, const std::optional<std::chrono::microseconds>& life) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t process = Start(writer);
    if (life) {
      std::this_thread::sleep_for(*life);
      kill(process, SIGKILL);
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFSIGNALED(status)) {
      ++figures.killed;
      if (fs::exists(Place("cache.draft"))) ++figures.draftsLeft;
      return;
    }
    usualMicroseconds_ = static_cast<std::size_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start).count());
    ++(WEXITSTATUS(status) == 0 ? figures.written : figures.failed);
  }

  pid_t Start(std::size_t writer) {
    std::string path;
    for (int i = 0; i < 20 + static_cast<int>(writer); ++i) path += Place(FolderOf(writer, i)).string() + ":";
    path.pop_back();

    const std::string cache = Place("cache").string();
    std::vector<std::string> words = {
        tool_, "cache", "write", "--path", path, "--cache-file", cache, "--root", folder_.GetPath().string()};
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addclose(&actions, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = posix_spawn(&process, tool_.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error == 0) return process;
    std::cerr << "cannot start " << tool_ << '\n';
    std::exit(2);
  }

  const std::string tool_;
  const std::chrono::steady_clock::time_point end_;
  const std::size_t writers_;
  const TemporaryFolder folder_;
  std::atomic<std::size_t> usualMicroseconds_ = 20'000;  // what the last writer took that was not killed
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: write_and_kill TOOL SECONDS [WRITERS]\n";
    return 2;
  }
  const std::size_t writers = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 4;
  Trial trial(argv[1], std::chrono::seconds(std::strtoull(argv[2], nullptr, 10)), writers);
  trial.Run();

  const bool goesOn = trial.GoesOn();
  const Figures& figures = trial.figures;
  std::printf(
      "%zu writers for %s s: %zu caches written, %zu failed, %zu writers killed (a draft was there after %zu of them), "
      "%zu reads; caches that were not whole: %zu; the next writer %s\n",
      writers, argv[2], figures.written.load(), figures.failed.load(), figures.killed.load(), figures.draftsLeft.load(),
      figures.reads.load(), figures.torn.load(), goesOn ? "works" : "DOES NOT WORK");
  const bool isFine = figures.torn == 0 && figures.failed == 0 && figures.written > 0 && figures.killed > 0 && goesOn;
  return isFine ? 0 : 1;
}
