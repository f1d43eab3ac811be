#pragma once

// Real folders, a path over them that is watched, and waiting until it has noticed.

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <fstream>
#include <memory>
#include <mutex>
#include <search_path_environment/watched_path.hpp>
#include <string>
#include <support/temporary_folder.hpp>
#include <vector>

#include "memory_storage.hpp"
#include "troubled_inotify.hpp"

namespace Quorvex::PathEnvironment {

inline AbsoluteIRI OnDisk(const std::filesystem::path& path) {
  return foundation::storage::vfs::toAbsoluteIRI(u"file",
                                                 fl::filesystem::path(fl::filesystem::from_bytes(path.string())));
}

inline std::size_t DispatchSessionEvents() {
  using namespace foundation::msg_svc::eventmgr;
  return createLocalEventMgr(SessionEmId)->dispatch();
}

/// Generous: a machine may have much else to do. Nothing waits this long that goes well.
inline constexpr std::chrono::seconds kLongEnough(60);

/// Rings when folders were announced. Shared with the watcher.
class Bell {
 public:
  void Ring() {
    {
      const std::scoped_lock lock(mutex_);
      ++rings_;
    }
    rung_.notify_all();
  }
  /// Returns when it has rung since the last call, or some time has passed.
  void Wait(std::chrono::milliseconds atMost) {
    std::unique_lock lock(mutex_);
    rung_.wait_for(lock, atMost, [this] { return rings_ != heard_; });
    heard_ = rings_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable rung_;
  std::uint64_t rings_ = 0;
  std::uint64_t heard_ = 0;
};

/// A path over folders on disk, watched.
class WatchedDisk {
 public:
  explicit WatchedDisk(const std::vector<std::filesystem::path>& folders,
                       std::chrono::milliseconds pollInterval = std::chrono::milliseconds(20),
                       std::shared_ptr<WatchTrouble> itsTrouble = std::make_shared<WatchTrouble>())
      : trouble(std::move(itsTrouble)) {
    DispatchSessionEvents();  // what others have left
    std::vector<AbsoluteIRI> locations;
    locations.reserve(folders.size());
    for (const auto& folder : folders) locations.push_back(OnDisk(folder));
    watched = std::make_unique<WatchedPath>(
        ReadPath(locations), foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(),
        WatcherOptions{pollInterval, [bell = bell_] { bell->Ring(); }}, std::make_unique<TroubledInotify>(trouble));
  }

  /// Refreshes as announcements come, until `isReached(path)`; false when that takes too long.
  template <class IsReached>
  [[nodiscard]] bool Await(const IsReached& isReached) {
    const auto end = std::chrono::steady_clock::now() + kLongEnough;
    while (true) {
      DispatchSessionEvents();
      if (isReached(*watched->Refresh().path)) return true;
      if (std::chrono::steady_clock::now() > end) return false;
      bell_->Wait(std::chrono::milliseconds(100));
    }
  }
  /// Until the path holds what a fresh scan finds.
  [[nodiscard]] bool AwaitFreshness() {
    return Await([](const FolderPath& path) { return IsFresh(path); });
  }

  [[nodiscard]] static bool IsFresh(const FolderPath& path) {
    for (const auto& entry : *path.GetMainEntries()) {
      const auto fresh = ReadEntry(entry->GetAbsoluteIRI());
      if (!fresh->HoldsTheSameAs(static_cast<const FolderEntry&>(*entry))) return false;
    }
    return true;
  }

  [[nodiscard]] std::shared_ptr<const FolderPath> GetPath() const { return watched->GetPath(); }
  [[nodiscard]] FolderWatching StateOf(const std::filesystem::path& folder) const {
    const auto state = watched->GetWatcher().Find(OnDisk(folder));
    if (!state) throw std::out_of_range(folder.string());
    return *state;
  }

  std::shared_ptr<WatchTrouble> trouble;
  std::unique_ptr<WatchedPath> watched;

 private:
  std::shared_ptr<Bell> bell_ = std::make_shared<Bell>();
};

}  // namespace Quorvex::PathEnvironment
