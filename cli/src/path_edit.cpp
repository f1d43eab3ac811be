#include "path_edit.hpp"

#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iterator>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_environment/message_catalog.hpp>

#include "comparison_report.hpp"
#include "dry_run_manager.hpp"
#include "output.hpp"
#include "path_comparison.hpp"
#include "path_troubles.hpp"
#include "read_path.hpp"
#include "session.hpp"

namespace vornixpath {

namespace {

using foundation::core::except::Notification;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::MainSearchPathManager;
using Quorvex::PathEnvironment::SavedPathFile;
using Folders = DryRunManager::Folders;

Notification Perform(const PathEdit& edit, const SavedPathFile& session) {
  MainSearchPathManager manager(session);
  Notification notification;
  manager.Edit([&] { notification = edit(manager); });
  return notification;
}

void TellConsequences(const Folders& before, const Folders& after) {
  if (before == after) return;
  // As queries read them.
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  const auto oldPath = ReadPath(DistinctFolders(before, storage));
  const auto newPath = ReadPath(DistinctFolders(after, storage), oldPath.get());
  Warn(TroublesOf(*newPath));
  PathComparison comparison = Compare(oldPath, newPath, {false, std::vector<std::u16string>{u".vnx"}});
  // The edit is one of the list, on which a second spelling counts as any other.
  comparison.changes = ChangesBetween(before, after);
  WriteAsLines(comparison, false);
}

Notification Rehearse(const PathEdit& edit, const SavedPathFile& session) {
  DryRunManager manager(session.Read().GetFolders());
  const auto before = manager.GetMainPathFolders();
  Notification notification = edit(manager);
  if (notification.IsEmpty()) TellConsequences(*before, *manager.GetMainPathFolders());
  return notification;
}

}  // namespace

ExitStatus RunEdit(const EditOptions& options, const PathEdit& edit) {
  const SavedPathFile session = SessionFile(options.session);
  const Notification notification = options.isDryRun ? Rehearse(edit, session) : Perform(edit, session);
  for (const auto& message : notification.GetMessages()) {
    WriteWarning(Quorvex::PathEnvironment::TextOf(message));
  }
  if (!notification.IsEmpty()) return ExitStatus::No;

  if (PathVariable()) WriteWarning("VORNIX_PATH is set, and queries use it instead of the session's path");
  return ExitStatus::Yes;
}

std::vector<std::u16string> FolderNames(const EditOptions& options) {
  std::vector<std::u16string> names;
  std::transform(options.folders.begin(), options.folders.end(), std::back_inserter(names), fl::filesystem::from_bytes);
  return names;
}

}  // namespace vornixpath
