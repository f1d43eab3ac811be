#include <chrono>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/snapshot_file.hpp>

#include "commands.hpp"
#include "location_argument.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"

namespace vornixpath {

ExitStatus RunSnapshot(const SnapshotOptions& options) {
  const auto file = LocationFromArgument(options.file);
  const LoadedPath path = LoadPath(options.path);
  const auto troubles = TroublesOf(path);
  Warn(troubles);

  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  Quorvex::PathEnvironment::WriteSnapshotFile(
      foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(), file, {path.GetSharedLeaf(), now});
  return options.strict && !troubles.empty() ? ExitStatus::Incomplete : ExitStatus::Yes;
}

}  // namespace vornixpath
