// The folders of a path as somebody sees them who waits for them to change.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/folder_watcher.hpp>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "seen_folder.hpp"
#include "watch_tree.hpp"

namespace Quorvex::PathEnvironment {

/// Which folders there are, how each is watched, and which are in doubt. Not safe from several threads, but for Look.
class WatchedFolders {
 public:
  using Clock = std::chrono::steady_clock;

  /// A folder to be looked at, and what was seen.
  struct Glance {
    std::uint64_t id;
    foundation::storage::vfs::AbsoluteIRI folder;
    std::string pathOfLinks;  ///< empty when there are no links to look after
    std::set<std::string, std::less<>> knownNames;
    SeenFolder seen;
    FolderLinks links;
  };

  WatchedFolders(foundation::storage::vfs::StorageSystemReference storage, Inotify& inotify, bool mayPoll);
  WatchedFolders(const WatchedFolders&) = delete;
  WatchedFolders& operator=(const WatchedFolders&) = delete;
  ~WatchedFolders();

  /// What is new is in doubt.
  void Set(const std::vector<std::shared_ptr<const PathManagement::IPathEntry>>& mainEntries);
  /// Nothing for an entry that is no main one of those given to Set.
  void Replace(const FolderEntry& mainEntry);

  /// Takes in what was read from inotify.
  void TakeEvents(std::span<const std::byte> events);
  /// Looks for every folder anew and doubts it.
  void DoubtAll();

  [[nodiscard]] bool NeedGlances() const noexcept { return !polled_.empty(); }
  [[nodiscard]] std::vector<Glance> GetGlances() const;
  /// Looks; from any thread, without any other part of this object.
  static void Look(Glance& glance, const foundation::storage::vfs::StorageSystemReference& storage);
  void TakeGlances(const std::vector<Glance>& glances, Clock::time_point now);

  /// The folders in doubt, of which there are none afterwards; those left out whose subfolders say it for them.
  [[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> TakeDoubts();

  [[nodiscard]] std::vector<FolderWatching> GetStates() const;
  [[nodiscard]] std::optional<FolderWatching> Find(const foundation::storage::vfs::AbsoluteIRI& location) const;

 private:
  struct Folder;
  using Folders = std::unordered_set<Folder*>;

  [[nodiscard]] std::unique_ptr<Folder> NewFolder(const FolderEntry& entry, Folder* parent);
  void Sync(Folder& folder, const FolderEntry& entry);
  void Look(Folder& folder);
  void LookForLinks(Folder& folder) const;
  void LookAnew(const Folders& lost);
  void Leave(Folder& folder);
  void Forget(Folder& folder);
  void ArrangePolling(Folder& folder);
  [[nodiscard]] FolderWatching StateOf(const Folder& folder) const;
  void AddStates(const Folder& folder, std::vector<FolderWatching>& states) const;

  foundation::storage::vfs::StorageSystemReference storage_;
  WatchTree tree_;
  bool mayPoll_;
  std::uint64_t lastId_ = 0;
  std::unordered_map<foundation::storage::vfs::AbsoluteIRI, std::unique_ptr<Folder>> main_;
  std::map<std::uint64_t, Folder*> polled_;
  Folders doubted_;
};

}  // namespace Quorvex::PathEnvironment
