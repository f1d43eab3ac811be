// One session of the path. Two locks: `editing_` for a whole edit and its announcement, `publishing_` for the moment in
// which readers' snapshot is looked at or replaced.

#include <atomic>
#include <boost/signals2/signal.hpp>
#include <exception>
#include <foundation/log/diagnostic_logger.hpp>
#include <limits>
#include <mutex>
#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "seen_revisions.hpp"

namespace Quorvex::PathEnvironment {

using foundation::core::ScopedRelease;
using foundation::core::except::Notification;
using foundation::storage::vfs::AbsoluteIRI;
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

class MainSearchPathManager::Session {
 public:
  Session(SavedPathFile file, std::chrono::milliseconds lockTimeout)
      : file_(std::move(file)), lockTimeout_(lockTimeout), published_(Read()) {}

  void Edit(const std::function<void()>& edit) {
    if (IsEditing()) return EditWithin(edit);
    Transact([&](const SavedPathFile& /*file*/) {
      const Scoped<std::thread::id> editing(editor_, std::this_thread::get_id());
      edit();
    });
  }

  std::optional<PathVersion> Undo() {
    if (IsEditing()) throw std::logic_error("an edit cannot be undone within another one");
    std::optional<PathVersion> undone;
    Transact([&](const SavedPathFile& file) {
      const std::vector<PathVersion> versions = file.GetVersions();
      const PathVersion* const version = SavedPathFile::VersionToUndo(versions, *Published().folders);
      if (version == nullptr) return;
      if (version->damage) throw SavedPathError(*version->damage);
      pending_ = Pending{version->before, EditKind::Undo, version->number};
      undone = *version;
    });
    return undone;
  }

  void Refresh() {
    if (IsEditing()) return;
    const auto lock = Editing();
    const State before = Published();
    TakeOver(file_);
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
    const bool isWithinEdit = IsEditing();
    const std::uint64_t seen = seen_.OfThisThread();
    Edit([&] {
      if (!isWithinEdit && Published().revision != seen) throw PathChangedException();
      Folders list;
      list.reserve(Published().folders->size());
      for (const AbsoluteIRI& folder : folders) list.push_back(folder);
      pending_ = Pending{Published().text->WithFolders(std::move(list)), kind, 0};
      isPendingTold_ = false;
    });
  }

  FoldersPtr GetFolders() {
    if (IsEditing() && pending_) {
      isPendingTold_ = true;
      seen_.Note(kNeverPublished);
      return std::make_shared<const Folders>(pending_->text.GetFolders());
    }
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
    SavedPathText text;
    EditKind kind;
    std::uint64_t undone;
  };
  static constexpr std::uint64_t kNeverPublished = std::numeric_limits<std::uint64_t>::max();

  bool IsEditing() const { return editor_.load() == std::this_thread::get_id(); }

  void EditWithin(const std::function<void()>& edit) {
    auto before = pending_;
    try {
      edit();
    } catch (...) {
      pending_ = std::move(before);
      isPendingTold_ = false;
      throw;
    }
  }

  // Waits for other threads' edits; refuses one that is begun by a listener on the thread that announces.
  std::unique_lock<std::mutex> Editing() {
    if (announcer_.load() == std::this_thread::get_id()) throw RecursivePathChangeException();
    return std::unique_lock(editing_);
  }

  void Transact(const std::function<void(const SavedPathFile&)>& edit) {
    const auto lock = Editing();
    const State before = Published();
    isPendingTold_ = false;
    const ScopedRelease dropPending([this] { pending_.reset(); });
    std::exception_ptr failure;
    try {
      const SavedPathFile file = file_.WithLinksFollowed();
      const auto processLock = file.Lock(lockTimeout_);
      TakeOver(file);
      edit(file);
      Save(file);
    } catch (...) {
      failure = std::current_exception();
    }
    Announce(before);  // of a failed edit, too: what others saved before it is news
    if (failure) std::rethrow_exception(failure);
  }

  void TakeOver(const SavedPathFile& file) {
    auto bytes = file.ReadBytes();
    if (bytes == *Published().bytes) return;
    Publish(Understood(std::move(bytes)));
  }

  void Save(const SavedPathFile& file) {
    const State old = Published();
    if (!pending_ || pending_->text.GetFolders() == *old.folders) return;

    std::string bytes = pending_->text.ToBytes();
    file.Replace(*old.bytes, bytes, pending_->kind, pending_->undone);
    Publish(StateOf(std::move(bytes), std::move(pending_->text)));
    if (isPendingTold_) seen_.Note(Published().revision);
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
    const bool isOther = *state.folders != *published_.folders;
    state.revision = published_.revision + (isOther ? 1 : 0);
    published_ = std::move(state);
  }

  void Announce(const State& before) {
    const State after = Published();
    if (*before.folders == *after.folders) return;
    const Scoped<std::thread::id> announcing(announcer_, std::this_thread::get_id());
    announcement_({before.folders, after.folders});
  }

  // The change is made; a sink that fails as well cannot take that back.
  void Log(const char* failure) const noexcept {
    try {
      log_.Write(foundation::log::Level::Error,
                 "a listener failed on a change of the search path: " + std::string(failure));
    } catch (...) {  // NOLINT(bugprone-empty-catch): see above
    }
  }

  const SavedPathFile file_;
  const std::chrono::milliseconds lockTimeout_;

  std::mutex editing_;
  std::atomic<std::thread::id> editor_;     // the thread within an edit, if any
  std::atomic<std::thread::id> announcer_;  // the thread within an announcement, if any
  std::optional<Pending> pending_;          // what it is to install
  bool isPendingTold_ = false;              // whether that is what this thread was last told
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

std::optional<PathVersion> MainSearchPathManager::Undo() { return session_->Undo(); }

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
