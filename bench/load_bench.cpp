#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <thread>
#include <vector>

#include "cases.hpp"
#include "compared.hpp"
#include "real_tree.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPathFactory;

constexpr double kLimit = 3.0;

// The bytes that the system lists for `folder`.
long List(const std::string& folder) {
  static thread_local std::array<char, 32768> buffer;
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  long bytes = 0;
  for (long count = 1; count > 0; bytes += count) {
    count = ::syscall(SYS_getdents64, descriptor, buffer.data(), buffer.size());
  }
  ::close(descriptor);
  return bytes;
}

void BareWalk(benchmark::State& state) {
  const auto& folders = RealFolders();
  for (auto unused : state) {
    static_cast<void>(unused);
    std::atomic<std::size_t> next = 0;
    std::atomic<long> bytes = 0;
    const auto work = [&] {
      for (std::size_t i = next++; i < folders.size(); i = next++) bytes += List(folders[i]);
    };
    std::vector<std::jthread> helpers;
    for (unsigned helper = 1; helper < std::thread::hardware_concurrency(); ++helper) helpers.emplace_back(work);
    work();
    helpers.clear();
    benchmark::DoNotOptimize(bytes.load());
  }
}

void Load(benchmark::State& state) {
  const auto locations = RealLocations();
  const auto storage = VornixStorageSystem::GetStorageSystemReference();
  for (auto unused : state) {
    static_cast<void>(unused);
    const FolderEntryFactory entries(storage);
    auto path = FolderPathFactory().CreateFolderPath(DistinctFolders(locations, storage), entries);
    benchmark::DoNotOptimize(path);
    state.PauseTiming();
    path.reset();
    state.ResumeTiming();
  }
}

}  // namespace

void RegisterLoading() { Compare("load/10000 folders of 100 files", kLimit, BareWalk, Load); }

}  // namespace bench
