#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <map>
#include <mutex>
#include <search_path_environment/path_refresher.hpp>
#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <unordered_set>
#include <utility>

#include "entry_places.hpp"
#include "folder_reader.hpp"
#include "main_entries.hpp"
#include "parallel.hpp"

namespace Quorvex::PathEnvironment {

using foundation::msg_svc::eventmgr::Event;
using foundation::msg_svc::eventmgr::EventConnection;
using foundation::msg_svc::eventmgr::EventMgr;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::StorageSystemReference;

namespace {

using FolderEntryPtr = std::shared_ptr<const FolderEntry>;
using Places = std::unordered_set<AbsoluteIRI>;

// What was announced and not yet looked at. Outlives whoever gathers, for a call of its slot may still be under way.
class Announcements {
 public:
  using Texts = std::unordered_set<std::u16string>;

  void Add(const Event& event) {
    const auto* const change = dynamic_cast<const storage::filefolderobserver::FileFolderChangedEvent*>(&event);
    if (change == nullptr) return;
    const std::scoped_lock lock(mutex_);
    texts_.insert(change->getPath());
  }
  [[nodiscard]] Texts Take() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(texts_, {});
  }
  void PutBack(Texts& texts) noexcept {
    const std::scoped_lock lock(mutex_);
    texts_.swap(texts);
    texts_.merge(texts);  // moves nodes, so it needs no memory but for the table
  }

 private:
  std::mutex mutex_;
  Texts texts_;
};

// Nothing for a text that is no identifier, which can name no entry.
std::optional<AbsoluteIRI> LocationFrom(const std::u16string& text) {
  try {
    return AbsoluteIRI(text).getResolvedIRI();
  } catch (const foundation::storage::vfs::Exception&) {
    return std::nullopt;
  }
}

// The entries of `entry` that stand at one of `places`; counts them.
std::size_t AddDoubts(const FolderEntry& entry, const Places& places, EntriesInDoubt& doubt) {
  std::size_t count = 0;
  for (const AbsoluteIRI& place : PlacesOf(entry)) {
    if (count != 0 || !places.contains(place)) continue;
    doubt.Add(entry);
    count = 1;
  }
  for (const auto& child : entry.GetChildren()) count += AddDoubts(*child, places, doubt);
  return count;
}

}  // namespace

class PathRefresher::Impl {
 public:
  Impl(std::shared_ptr<const FolderPath> path, StorageSystemReference storage)
      : storage_(std::move(storage)), path_(std::move(path)), main_(MainEntriesOf(*path_)) {
    for (std::size_t main = 0; main < main_.size(); ++main) places_.Add(*main_[main], main);
    connection_ = manager_->connect(
        [announcements = announcements_](const boost::shared_ptr<const Event>& event) { announcements->Add(*event); });
  }

  std::shared_ptr<const FolderPath> GetPath() const {
    const std::scoped_lock lock(pathMutex_);
    return path_;
  }

  PathRefresh Refresh() {
    const std::scoped_lock lock(refreshMutex_);
    auto announced = announcements_->Take();
    try {
      return Refresh(announced);
    } catch (...) {
      announcements_->PutBack(announced);
      throw;
    }
  }

 private:
  // A main folder some of whose entries are in doubt.
  struct Doubted {
    EntryPlaces::Number number;
    Places places;
    std::size_t count = 0;
    FolderEntryPtr after;
  };

  PathRefresh Refresh(const Announcements::Texts& announced) {
    std::vector<Doubted> doubted = DoubtedBy(announced);
    InParallel(doubted.size(), [&](std::size_t i) { ReadAgain(doubted[i]); });

    PathRefresh refresh;
    std::vector<FolderEntryPtr> replacing;
    for (const Doubted& each : doubted) {
      refresh.doubted += each.count;
      if (each.after == main_[each.number]) continue;
      refresh.changed.push_back({main_[each.number], each.after});
      replacing.push_back(each.after);
    }
    refresh.path = replacing.empty() ? path_ : path_->WithReplaced(replacing);
    TakeIn(doubted, refresh.path);
    return refresh;
  }

  [[nodiscard]] std::vector<Doubted> DoubtedBy(const Announcements::Texts& announced) const {
    std::map<EntryPlaces::Number, Places> places;
    for (const std::u16string& text : announced) {
      const auto location = LocationFrom(text);
      const auto found = location ? places_.FindAtOrAbove(*location) : std::nullopt;
      if (!found) continue;
      for (const EntryPlaces::Number number : found->numbers) places[number].insert(found->place);
    }
    std::vector<Doubted> doubted;
    doubted.reserve(places.size());
    for (auto& [number, itsPlaces] : places) doubted.push_back({number, std::move(itsPlaces), 0, nullptr});
    return doubted;
  }

  void ReadAgain(Doubted& doubted) const {
    const FolderEntryPtr& former = main_[doubted.number];
    EntriesInDoubt doubt;
    doubted.count = AddDoubts(*former, doubted.places, doubt);
    doubted.after = ReadMainFolderAgain(former, doubt, storage_);
  }

  // First what needs memory, then what cannot fail. Should memory end in between, some places too many are known, which
  // does no harm.
  void TakeIn(const std::vector<Doubted>& doubted, const std::shared_ptr<const FolderPath>& path) {
    std::vector<std::vector<AbsoluteIRI>> left(doubted.size());
    for (std::size_t i = 0; i < doubted.size(); ++i) {
      const Doubted& each = doubted[i];
      if (each.after == main_[each.number]) continue;
      places_.Add(*each.after, each.number);
      left[i] = PlacesLeft(*main_[each.number], *each.after);
    }
    for (std::size_t i = 0; i < doubted.size(); ++i) {
      for (const AbsoluteIRI& place : left[i]) places_.Remove(place, doubted[i].number);
      main_[doubted[i].number] = doubted[i].after;
    }
    const std::scoped_lock lock(pathMutex_);
    path_ = path;
  }

  const StorageSystemReference storage_;
  std::mutex refreshMutex_;       // of places_ and main_, and of writing path_
  mutable std::mutex pathMutex_;  // of path_
  std::shared_ptr<const FolderPath> path_;
  std::vector<FolderEntryPtr> main_;  // of path_, in path order
  EntryPlaces places_;
  const std::shared_ptr<Announcements> announcements_ = std::make_shared<Announcements>();
  const std::shared_ptr<EventMgr> manager_ =
      foundation::msg_svc::eventmgr::createLocalEventMgr(foundation::msg_svc::eventmgr::SessionEmId);
  EventConnection connection_;
};

PathRefresher::PathRefresher(std::shared_ptr<const FolderPath> path, StorageSystemReference storage)
    : impl_(std::make_unique<Impl>(std::move(path), std::move(storage))) {}

PathRefresher::~PathRefresher() = default;

std::shared_ptr<const FolderPath> PathRefresher::GetPath() const { return impl_->GetPath(); }

PathRefresh PathRefresher::Refresh() { return impl_->Refresh(); }

}  // namespace Quorvex::PathEnvironment
