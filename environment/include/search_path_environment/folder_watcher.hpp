// Real file-system notifications, turned into the session's events: a folder that may no longer be what a path has read
// is announced.
//
// Announcements only say "doubt this folder": what has become of it, whoever hears of them finds out by reading.
#pragma once

#include <chrono>
#include <cstdint>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_path.hpp>
#include <string>
#include <system_error>
#include <vector>

namespace Quorvex::PathEnvironment {

class Inotify;

/// How soon a change in a folder is noticed.
enum class Watching : std::uint8_t {
  Watched,   ///< every change is announced as it happens
  Polled,    ///< changes are found when the folder is looked at, every now and then; some may be announced at once
  Unwatched  ///< changes may go unnoticed: it would have to be polled, and is not
};

/// Why a folder is watched no better than it is.
enum class WatchingReason : std::uint8_t {
  None,          ///< the folder is watched as it should be
  Missing,       ///< there is no such folder; that it comes is noticed
  LimitReached,  ///< the system grants no further watch
  NoInstance,    ///< the system grants no watches at all
  NoPermission,  ///< the folder, or one above it, may not be watched
  NotLocal,      ///< the storage, or the file system, does not tell of changes
  HoldsLinks,    ///< what links in it lead to can change unnoticed
  Failed         ///< something else; the error tells what
};

/// What is done about one folder. A value: how it was when it was asked for.
struct FolderWatching {
  foundation::storage::vfs::AbsoluteIRI folder;  ///< as the path spells it
  Watching state;                                ///< how soon a change in it shows
  WatchingReason reason;                         ///< None where nothing is to be said
  std::error_code error;                         ///< the system's, where there is one
};

/// The reason in words, for people: "the system grants no further watch". Empty for None.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::string ReasonOf(const FolderWatching& watching);

/// What a watcher does beside watching.
struct WatcherOptions {
  /// How often folders are looked at that cannot be watched, once a day at least; zero is never.
  std::chrono::milliseconds pollInterval = std::chrono::seconds(2);

  /// Called after folders were announced, on the thread that did; must be safe from any thread, call nothing of the
  /// watcher, and not throw.
  std::function<void()> whenAnnounced;
};

/// Watches the folders of a path, method entries included, and what they depend on: the folders above them as far as
/// needed, and links on the way. Safe from any thread.
///
/// Folders are announced through `NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges`, so that the session's
/// event manager gets an event for each special folder up to the main one. One thread waits for the system's
/// notifications; as long as every folder is watched it needs no processor time when nothing happens. Reading a folder
/// raises no event.
///
/// - When names come or go in a folder, it is announced.
/// - When it may have become another one (it, a folder above it or a link on the way was moved, removed, made or closed
///   to us), it is looked for anew, and announced with all entries below it.
/// - When the system lost events, everything is looked for anew and announced.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderWatcher {
 public:
  /// Watches nothing yet. Throws `std::system_error` when no thread can be had, or nothing to wake it with.
  explicit FolderWatcher(foundation::storage::vfs::StorageSystemReference storage, WatcherOptions options = {});
  /// The same with somebody else's notifications, for tests.
  FolderWatcher(foundation::storage::vfs::StorageSystemReference storage, WatcherOptions options,
                std::unique_ptr<Inotify> inotify);
  FolderWatcher(const FolderWatcher&) = delete;
  FolderWatcher& operator=(const FolderWatcher&) = delete;
  /// Nothing is announced once it has returned.
  ~FolderWatcher();

  /// Watches the folders of `path` from now on, and no other ones. Those that were not watched before are announced
  /// when their watches stand: what changed since they were read was not noticed. O(entries), with a few system calls
  /// for each that is new.
  void Watch(const FolderPath& path);

  /// The same of single main folders: watches what is on `entries`, in depth, in place of what was on earlier entries
  /// of the same main folders. Entries of other folders than those last given to Watch change nothing.
  void WatchInstead(const std::vector<std::shared_ptr<const FolderEntry>>& entries);

  /// Of every folder: each main one, in no particular order, followed by those below it.
  [[nodiscard]] std::vector<FolderWatching> GetFolders() const;

  /// Nothing for a folder that is none of the path's.
  [[nodiscard]] std::optional<FolderWatching> Find(const foundation::storage::vfs::AbsoluteIRI& folder) const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace Quorvex::PathEnvironment
