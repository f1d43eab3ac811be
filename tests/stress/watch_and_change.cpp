// Folders change at random while a path over them is watched. Says what came of it.
//
//     watch_and_change CHANGES [SECONDS_AT_REST]
//
// The changes come in bouts. After each the path must come to hold what a fresh scan finds, however many announcements
// that takes; one bout is a flood that no queue of notifications holds, while nobody reads. In the end nothing changes
// any more, and the processor time that watching takes then is measured. Exit status 0 when no bout was lost.

#include <sys/resource.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <memory>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/watched_path.hpp>
#include <support/random_disk.hpp>
#include <support/random_source.hpp>
#include <thread>
#include <unit/environment/watched_disk.hpp>

namespace {

using Quorvex::PathEnvironment::DispatchSessionEvents;
using Quorvex::PathEnvironment::WatchedDisk;
using Quorvex::PathEnvironment::Watching;
using Quorvex::PathManagement::support::RandomDisk;
using Quorvex::PathManagement::support::RandomSource;

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

long long MicrosecondsOfProcessorTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto of = [](const timeval& time) { return time.tv_sec * 1'000'000LL + time.tv_usec; };
  return of(usage.ru_utime) + of(usage.ru_stime);
}

struct Figures {
  std::size_t bouts = 0;
  std::size_t lost = 0;  ///< bouts after which the path did not come to hold what a fresh scan finds
  double slowest = 0;    ///< in milliseconds, from the end of a bout until the path is right
};

void Compare(WatchedDisk& watched, Figures& figures) {
  const auto start = Clock::now();
  ++figures.bouts;
  if (!watched.AwaitFreshness()) ++figures.lost;
  figures.slowest = std::max(figures.slowest, MillisecondsSince(start));
}

void Change(RandomDisk& disk, WatchedDisk& watched, RandomSource& random, std::size_t changes, Figures& figures) {
  for (std::size_t change = 0; change < changes;) {
    for (std::size_t bout = 1 + random.Below(200); bout > 0 && change < changes; --bout, ++change) {
      disk.Change();
      if (!random.OneIn(10)) continue;
      DispatchSessionEvents();
      static_cast<void>(watched.watched->Refresh());
    }
    Compare(watched, figures);
  }
}

void Flood(RandomDisk& disk, WatchedDisk& watched, Figures& figures) {
  watched.trouble->Pause();
  disk.Flood(12'000);
  for (int change = 0; change < 500; ++change) disk.Change();
  watched.trouble->Resume();
  Compare(watched, figures);
}

// Of watching some folders none of which needs to be polled.
long long ProcessorTimeAtRest(std::chrono::seconds duration) {
  const Quorvex::PathManagement::support::TemporaryFolder root;
  std::vector<std::filesystem::path> folders;
  for (int number = 0; number < 1'000; ++number) {
    folders.push_back(root.GetPath() / std::to_string(number));
    std::filesystem::create_directories(folders.back() / "+p");
  }
  WatchedDisk watched(folders);
  while (DispatchSessionEvents() != 0) static_cast<void>(watched.watched->Refresh());
  for (const auto& state : watched.watched->GetWatcher().GetFolders()) {
    if (state.state != Watching::Watched) std::printf("a folder is not watched: %s\n", ReasonOf(state).c_str());
  }
  const long long before = MicrosecondsOfProcessorTime();
  std::this_thread::sleep_for(duration);
  return MicrosecondsOfProcessorTime() - before;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    static_cast<void>(std::fprintf(stderr, "usage: watch_and_change CHANGES [SECONDS_AT_REST]\n"));
    return 2;
  }
  const std::size_t changes = std::strtoull(argv[1], nullptr, 10);
  const std::chrono::seconds atRest(argc > 2 ? std::strtoll(argv[2], nullptr, 10) : 3);
  RandomSource random = RandomSource::OfThisRun(20'280);
  RandomDisk disk(random);
  Figures figures;
  const auto start = Clock::now();
  {
    WatchedDisk watched(disk.GetMainFolders());
    Change(disk, watched, random, changes, figures);
    Flood(disk, watched, figures);
  }
  const double seconds = MillisecondsSince(start) / 1000;
  const long long idle = ProcessorTimeAtRest(atRest);

  std::printf(
      "%s: %zu changes and a flood in %.1f s; bouts compared with a fresh scan: %zu, lost: %zu, slowest: %.0f ms\n",
      random.Describe().c_str(), changes, seconds, figures.bouts, figures.lost, figures.slowest);
  std::printf("processor time at rest, 2000 folders watched, in %lld s: %lld us\n",
              static_cast<long long>(atRest.count()), idle);
  return figures.lost == 0 ? 0 : 1;
}
