#include <malloc.h>

#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>

#include "cases.hpp"
#include "compared.hpp"
#include "real_tree.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPathFactory;

constexpr double kLimit = 64.0;

std::size_t BytesInUse() {
  const struct mallinfo2 info = ::mallinfo2();
  return info.uordblks + info.hblkhd;
}

void BytesAFile(benchmark::State& state) {
  const auto locations = RealLocations();
  for (auto unused : state) {
    static_cast<void>(unused);
    const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
    const std::size_t before = BytesInUse();
    const auto path = FolderPathFactory().CreateFolderPath(locations, entries);
    const std::size_t after = BytesInUse();
    state.counters["value"] = static_cast<double>(after - before) / static_cast<double>(kRealFolders * kRealFiles);
  }
}

}  // namespace

void RegisterMemory() { Measure("memory/a file, index included", kLimit, "bytes", BytesAFile); }

}  // namespace bench
