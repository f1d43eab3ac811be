// A path in a program, from its folders to its cache: what docs/embedding.md tells, in its order. Works in a folder of
// its own and leaves nothing behind.

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <fstream>
#include <iostream>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_environment/message_catalog.hpp>
#include <search_path_environment/toolbox_cache_file.hpp>
#include <search_path_environment/watched_path.hpp>
#include <search_path_environment/working_folder.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/path_editing.hpp>

using fl::filesystem::from_bytes;
using fl::filesystem::to_displayed_text;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::StorageSystemReference;
using foundation::storage::vfs::VornixStorageSystem;
using namespace Quorvex::PathEnvironment;
using namespace Quorvex::PathManagement;

namespace {

using Folders = std::vector<AbsoluteIRI>;

const StorageSystemReference& Storage() {
  static const StorageSystemReference storage = VornixStorageSystem::GetStorageSystemReference();
  return storage;
}

std::string Shown(const AbsoluteIRI& location) { return to_displayed_text(GetStringFromIRI(location)); }

std::shared_ptr<const FolderPath> MakePath(const Folders& folders, const FolderEntryFactory& entries) {
  const auto path = FolderPathFactory().CreateFolderPath(DistinctFolders(folders, Storage()), entries);
  for (const PathProblem& problem : path->GetProblems()) {
    std::cout << "note: " << Shown(problem.location) << ": " << ReasonOf(problem) << '\n';
  }
  return path;
}

std::string WhatItMeans(const IPath& path, const std::u16string& name) {
  const std::vector<std::u16string> extensions = {u".vnx"};
  const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
  const auto found = FindFirstFileVisibleOnPath(path, target, FilenameMatchingPolicy::Native);
  if (!found) return "nothing";

  const auto item = found->GetPathItem();
  const auto main = path.GetMainEntryForEntry(*found->GetPathEntry());
  return Shown(item->folderIRI.getChild(item->baseName + item->extension)) + ", by way of " +
         Shown(main->GetAbsoluteIRI());
}

// Returns the path as it is once `change` shows.
template <class Change>
std::shared_ptr<const FolderPath> Follow(const std::shared_ptr<const FolderPath>& path, const Change& change) {
  std::atomic_flag isAnnounced;
  const auto announce = [&isAnnounced] {
    isAnnounced.test_and_set();
    isAnnounced.notify_one();
  };
  WatchedPath watched(path, Storage(), {.whenAnnounced = announce});

  change();
  while (watched.GetPath() == path) {
    isAnnounced.wait(false);
    isAnnounced.clear();
    foundation::msg_svc::eventmgr::createLocalEventMgr(foundation::msg_svc::eventmgr::SessionEmId)->dispatch();
    for (const RefreshedFolder& folder : watched.Refresh().changed) {
      std::cout << "changed: " << Shown(folder.after->GetLocation()) << '\n';
    }
  }
  return watched.GetPath();
}

bool Add(const std::vector<std::u16string>& names, const WorkingFolder& workingFolder, MainSearchPathManager& manager) {
  foundation::core::except::Notification warnings;
  manager.Edit([&] {
    warnings = AddFoldersToVornixPath(names, workingFolder, manager, FolderPathFactory(), FolderEntryFactory(Storage()),
                                      Position::Beginning);
  });
  for (const auto& message : warnings.GetMessages()) std::cout << "warning: " << TextOf(message) << '\n';
  return warnings.IsEmpty();
}

std::shared_ptr<const IPath> PathAtStart(const Folders& folders, const AbsoluteIRI& cacheFile) {
  const auto read = [folders](const IPathEntryFactory& entries) {
    return FolderPathFactory().CreateFolderPath(DistinctFolders(folders, Storage()), entries);
  };
  try {
    const auto cache = ToolboxCache::Open(Storage(), cacheFile, CacheTrust::Proven);
    if (cache.HoldsList(folders)) {
      if (auto path = CachedPath::Make(cache, cache.CountFolders(), read)) return path;
    }
    return read(FolderEntryFactory(Storage(), cache));
  } catch (const ToolboxCacheError& error) {
    std::cout << "no cache: " << error.what() << '\n';
    return read(FolderEntryFactory(Storage()));
  }
}

class WorkFolder {
 public:
  WorkFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "embedding.XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder to work in");
    path_ = name;
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] AbsoluteIRI At(const std::string& name) const {
    return GetIRIFromString(from_bytes((path_ / name).string()));
  }
  void AddFile(const std::string& name) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name) << "\n";
  }

 private:
  std::filesystem::path path_;
};

void GoThroughAll() {
  const WorkFolder work;
  work.AddFile("base/report.vnx");
  work.AddFile("extras/greet.vnx");
  const Folders folders = {work.At("base"), work.At("extras"), work.At("gone")};

  const FolderEntryFactory entries(Storage());
  const auto path = MakePath(folders, entries);
  std::cout << "greet: " << WhatItMeans(*path, u"greet") << '\n';

  const auto later = Follow(path, [&] { work.AddFile("base/greet.vnx"); });
  std::cout << "greet: " << WhatItMeans(*later, u"greet") << '\n';

  const WorkingFolder workingFolder(GetStringFromIRI(work.At(".")), Storage());
  MainSearchPathManager manager(SavedPathFile(work.At("saved_path"), Storage()));
  const auto connection = manager.AddListener([](const MainSearchPathManager::Change& change) {
    std::cout << "the main path has " << change.after->size() << " folders now\n";
  });
  Add({u"base", u"nowhere"}, workingFolder, manager);
  Add({u"base", u"extras"}, workingFolder, manager);

  const Folders saved = *manager.GetMainPathFolders();
  const AbsoluteIRI cacheFile = work.At("toolbox.cache");
  const auto uncached = PathAtStart(saved, cacheFile);
  std::cout << "greet: " << WhatItMeans(*uncached, u"greet") << '\n';
  const auto kept = MakePath(saved, entries);
  WriteToolboxCacheFile(cacheFile, work.At("."), entries);
  const auto cached = PathAtStart(saved, cacheFile);
  std::cout << "greet: " << WhatItMeans(*cached, u"greet") << '\n';
}

}  // namespace

int main() {
  try {
    GoThroughAll();
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
