// One session of the path. Two locks: `editing_` for a whole edit and its announcement, `publishing_` for the moment in
// which readers' snapshot is looked at or replaced.

#include <atomic>
#include <boost/signals2/signal.hpp>
#include <exception>
#include <foundation/log/diagnostic_logger.hpp>
#include <mutex>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <string>
#include <thread>
#include <utility>

#include "seen_revisions.hpp"

namespace Quorvex::PathEnvironment {

using foundation::core::ScopedRelease;
using foundation::core::except::Notification;
using PathManagement::RecursivePathChangeException;

namespace {

// Sets a value for as long as it lives.
template <class T>
class Scoped {
 public:
  Scoped(std::atomic<T>& place, T value) : place_(place) { place_.store(value); }
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;
  ~Scoped() { place_.store(T()); }

 private:
  std::atomic<T>& place_;
};

}  // namespace

PathChangedException::PathChangedException()
    : std::runtime_error("the search path has changed since it was read: read it again, and edit what it is now") {}

PathChangedException::~PathChangedException() = default;

class MainSearchPathManager::Session {
 public:
  Session(SavedPathFile file, std::chrono::milliseconds lockTimeout)
      : file_(std::move(file)), lockTimeout_(lockTimeout), published_(Read()) {}

  void Edit(const std::function<void()>& edit) {
    if (editor_.load() == std::this_thread::get_id()) return edit();
    Transact([&] {
      const Scoped<std::thread::id> editing(editor_, std::this_thread::get_id());
      edit();
    });
  }

  bool Undo() {
    bool isUndone = false;
    Edit([&] {
      const std::vector<PathVersion> versions = file_.GetVersions();
      const PathVersion* const version = SavedPathFile::VersionToUndo(versions);
      if (version == nullptr) return;
      Install(std::make_shared<const Folders>(version->before.GetFolders()), EditKind::Undo, version->number);
      isUndone = true;
    });
    return isUndone;
  }

  void Refresh() {
    const auto lock = Editing();
    const State before = Published();
    TakeOver();
    Announce(before);
  }

  ScopedRelease AddListener(Listener listener) {
    const auto guarded = [this, listener = std::move(listener)](const Change& change) {
      try {
        listener(change);
      } catch (const std::exception& failure) {
        Log(failure.what());
      } catch (...) {
        Log("it threw what is no std::exception");
      }
    };
    const auto connection = std::make_shared<const boost::signals2::connection>(announcement_.connect(guarded));
    return ScopedRelease([connection] { connection->disconnect(); });
  }

  void Set(const FolderRange& folders, EditKind kind) {
    const bool isWithinEdit = editor_.load() == std::this_thread::get_id();
    const std::uint64_t seen = seen_.OfThisThread();
    Edit([&] {
      if (!isWithinEdit && Published().revision != seen) throw PathChangedException();
      Install(std::make_shared<const Folders>(folders.begin(), folders.end()), kind, 0);
    });
  }

  FoldersPtr GetFolders() {
    if (editor_.load() == std::this_thread::get_id() && pending_) return pending_->folders;
    const State state = Published();
    seen_.Note(state.revision);
    return state.folders;
  }

 private:
  // What stands in the file, as it was last read or written.
  struct State {
    std::shared_ptr<const std::optional<std::string>> bytes;
    std::shared_ptr<const SavedPathText> text;
    FoldersPtr folders;  // of the text
    std::uint64_t revision = 0;
  };
  struct Pending {
    FoldersPtr folders;
    EditKind kind;
    std::uint64_t undone;
  };

  // Waits for other threads' edits; refuses one that is begun by a listener on the thread that announces.
  std::unique_lock<std::mutex> Editing() {
    if (announcer_.load() == std::this_thread::get_id()) throw RecursivePathChangeException();
    return std::unique_lock(editing_);
  }

  void Transact(const std::function<void()>& edit) {
    const auto lock = Editing();
    const State before = Published();
    const ScopedRelease dropPending([this] { pending_.reset(); });
    std::exception_ptr failure;
    try {
      const auto processLock = file_.Lock(lockTimeout_);
      TakeOver();
      edit();
      Save();
    } catch (...) {
      failure = std::current_exception();
    }
    Announce(before);  // of a failed edit, too: what others saved before it is news
    if (failure) std::rethrow_exception(failure);
  }

  void TakeOver() {
    auto bytes = file_.ReadBytes();
    if (bytes == *Published().bytes) return;
    Publish(Understood(std::move(bytes)));
  }

  void Install(FoldersPtr folders, EditKind kind, std::uint64_t undone) {
    pending_ = Pending{std::move(folders), kind, undone};
  }

  void Save() {
    const State old = Published();
    if (!pending_ || *pending_->folders == *old.folders) return;

    const SavedPathText text = old.text->WithFolders(*pending_->folders);
    file_.Replace(*old.bytes, text, pending_->kind, pending_->undone);
    Publish(StateOf(text.ToBytes(), text));
  }

  State Read() const { return Understood(file_.ReadBytes()); }
  State Understood(std::optional<std::string> bytes) const {
    SavedPathText text = file_.Understand(bytes);
    return StateOf(std::move(bytes), std::move(text));
  }
  static State StateOf(std::optional<std::string> bytes, SavedPathText text) {
    State state;
    state.bytes = std::make_shared<const std::optional<std::string>>(std::move(bytes));
    state.text = std::make_shared<const SavedPathText>(std::move(text));
    state.folders = FoldersPtr(state.text, &state.text->GetFolders());
    return state;
  }

  State Published() const {
    const std::scoped_lock lock(publishing_);
    return published_;
  }
  void Publish(State state) {
    const std::scoped_lock lock(publishing_);
    state.revision = published_.revision + 1;
    published_ = std::move(state);
  }

  void Announce(const State& before) {
    const State after = Published();
    if (*before.folders == *after.folders) return;
    const Scoped<std::thread::id> announcing(announcer_, std::this_thread::get_id());
    announcement_({before.folders, after.folders});
  }

  // The change is made; a sink that fails as well cannot take that back.
  void Log(const std::string& failure) const noexcept {
    try {
      log_.Write(foundation::log::Level::Error, "a listener failed on a change of the search path: " + failure);
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): see above
    }
  }

  const SavedPathFile file_;
  const std::chrono::milliseconds lockTimeout_;

  std::mutex editing_;
  std::atomic<std::thread::id> editor_;     // the thread within an edit, if any
  std::atomic<std::thread::id> announcer_;  // the thread within an announcement, if any
  std::optional<Pending> pending_;          // of the edit under way
  boost::signals2::signal<void(const Change&)> announcement_;

  mutable std::mutex publishing_;
  State published_;
  SeenRevisions seen_;

  const foundation::log::basic_diagnostic_logger<char> log_{"search_path.main_path"};
};

MainSearchPathManager::MainSearchPathManager(SavedPathFile file, std::chrono::milliseconds lockTimeout)
    : session_(std::make_unique<Session>(std::move(file), lockTimeout)) {}

MainSearchPathManager::~MainSearchPathManager() = default;

void MainSearchPathManager::Edit(const std::function<void()>& edit) { session_->Edit(edit); }

bool MainSearchPathManager::Undo() { return session_->Undo(); }

void MainSearchPathManager::Refresh() { session_->Refresh(); }

ScopedRelease MainSearchPathManager::AddListener(Listener listener) {
  return session_->AddListener(std::move(listener));
}

void MainSearchPathManager::SetMainPathForAddition(const FolderRange& folders, Notification& /*notification*/) {
  session_->Set(folders, EditKind::Addition);
}

void MainSearchPathManager::SetMainPathForRemoval(const FolderRange& folders, Notification& /*notification*/) {
  session_->Set(folders, EditKind::Removal);
}

MainSearchPathManager::FoldersPtr MainSearchPathManager::GetMainPathFolders() const { return session_->GetFolders(); }

}  // namespace Quorvex::PathEnvironment
