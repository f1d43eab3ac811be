// The session's main search path: kept in a file that other processes edit, too, and announced to whoever listens.
#pragma once

#include <chrono>
#include <foundation/core/scoped_release.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <search_path_environment/export.hpp>
#include <search_path_environment/path_changed_exception.hpp>
#include <search_path_environment/saved_path_file.hpp>
#include <search_path_interfaces/main_search_path_manager.hpp>

namespace Quorvex::PathEnvironment {

/// Any thread may call anything at any time. Readers get immutable snapshots and never wait for an edit. Edits follow
/// one another, in this process and in all others that use the same file.
class SEARCH_PATH_ENVIRONMENT_EXPORT MainSearchPathManager final : public PathManagement::IMainSearchPathManager {
 public:
  /// In path order.
  using Folders = std::vector<foundation::storage::vfs::AbsoluteIRI>;
  /// A snapshot: never null, never changed.
  using FoldersPtr = std::shared_ptr<const Folders>;

  /// What is announced; both lists differ.
  struct Change {
    FoldersPtr before;  ///< what stood until then
    FoldersPtr after;   ///< what stands now
  };

  /// Called on whatever thread made the change, one call at a time.
  using Listener = std::function<void(const Change&)>;

  /// How long an edit waits for that of another process.
  static constexpr std::chrono::milliseconds kLockTimeout{30'000};

  /// Reads the file. Throws SavedPathError for a damaged or foreign one, and the storage layer's Exception.
  explicit MainSearchPathManager(SavedPathFile file, std::chrono::milliseconds lockTimeout = kLockTimeout);
  MainSearchPathManager(const MainSearchPathManager&) = delete;
  MainSearchPathManager& operator=(const MainSearchPathManager&) = delete;
  ~MainSearchPathManager() override;

  /// Calls `edit` while nobody else, here or in another process, can change the path. What it then reads is what stands
  /// in the file; what it installs is saved and published, all at once, when it returns, and dropped when it throws.
  /// An Edit within an Edit is part of it, and when it throws, what it installed is dropped alone.
  ///
  /// Whatever is thrown, the path is as it was: what `edit` threw; SavedPathError; the storage layer's Exception, with
  /// std::errc::timed_out when another process edits for too long; PathChangedException when a person changes the file
  /// at the same moment; RecursivePathChangeException when a listener calls this on the thread that announces a change
  /// to it. Other threads wait.
  void Edit(const std::function<void()>& edit);

  /// Goes back to before the last edit that is neither undone nor without effect on what stands there now, and returns
  /// that edit; nothing when no such one is kept. Throws as Edit does, SavedPathError when that version is damaged, and
  /// std::logic_error within an Edit.
  std::optional<PathVersion> Undo();

  /// Takes over what others have saved meanwhile; within an Edit, that is done already. Throws as the constructor does,
  /// and RecursivePathChangeException.
  void Refresh();

  /// Calls `listener` after each change, on the thread that made it, before the call that made it returns; listeners
  /// in the order in which they were added. What a listener throws is logged and changes nothing. A call that is under
  /// way on another thread when the listener is released ends on its own.
  [[nodiscard]] foundation::core::ScopedRelease AddListener(Listener listener);

  /// An Edit of its own when called outside of one: then PathChangedException is thrown when the path is no longer what
  /// GetMainPathFolders last told this thread, or was when the manager was made.
  void SetMainPathForAddition(const FolderRange& folders,
                              foundation::core::except::Notification& notification) override;
  void SetMainPathForRemoval(const FolderRange& folders, foundation::core::except::Notification& notification) override;
  [[nodiscard]] FoldersPtr GetMainPathFolders() const override;

 private:
  class Session;
  std::unique_ptr<Session> session_;
};

}  // namespace Quorvex::PathEnvironment
