#include "watched_folders.hpp"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>

#include <algorithm>
#include <array>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/file_storage_provider.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <utility>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::StorageSystemReference;

namespace {

// A stamp says nothing about changes within one tick of the file system's clock, and ticks are this long at most. So a
// folder that has just changed is doubted a while longer.
constexpr std::chrono::seconds kLongestTick(2);

// The path of a folder on the local file system; nothing for any other.
std::optional<std::string> NativePathOf(const AbsoluteIRI& folder, const StorageSystemReference& storage) {
  using foundation::storage::vfs::FileStorageProvider;
  const auto provider = storage.FindProvider(folder.getScheme());
  if (dynamic_cast<const FileStorageProvider*>(provider.get()) == nullptr || folder.isRootless()) return std::nullopt;
  try {
    const auto path = foundation::storage::vfs::detail::toNativePath(folder, fl::filesystem::detail::path_style::posix);
    return fl::filesystem::to_bytes(path.u16string());
  } catch (const foundation::storage::vfs::Exception&) {
    return std::nullopt;  // no path can name it, so storage will refuse it, too
  }
}

// Whether the kernel hears of all that happens to the files there: not when other machines or programs can change them
// behind its back.
bool TellsOfChanges(const WatchTree::Way& way) {
  constexpr std::array<std::uint32_t, 16> silent = {
      AFS_SUPER_MAGIC, CEPH_SUPER_MAGIC, CIFS_SUPER_MAGIC,      CODA_SUPER_MAGIC,        FUSE_SUPER_MAGIC,
      NCP_SUPER_MAGIC, NFS_SUPER_MAGIC,  PROC_SUPER_MAGIC,      SMB2_SUPER_MAGIC,        SMB_SUPER_MAGIC,
      SYSFS_MAGIC,     V9FS_MAGIC,       0x01161970 /* GFS2 */, 0x0BD00BD0 /* Lustre */, 0x7461636F /* OCFS2 */,
      0x786F4256 /* shared by a host */};
  const WatchTree::Folder* const last = way.GetLast();
  struct statfs status {};
  if (last == nullptr || ::statfs((WatchTree::PathOf(*last) + "/").c_str(), &status) == -1) return true;
  return std::find(silent.begin(), silent.end(), static_cast<std::uint32_t>(status.f_type)) == silent.end();
}

bool IsLink(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

WatchingReason ReasonOfRefusal(const std::error_code& refusal) {
  if (refusal == std::errc::no_space_on_device) return WatchingReason::LimitReached;
  if (refusal == std::errc::permission_denied || refusal == std::errc::operation_not_permitted) {
    return WatchingReason::NoPermission;
  }
  if (refusal == std::errc::too_many_files_open || refusal == std::errc::too_many_files_open_in_system) {
    return WatchingReason::NoInstance;
  }
  return WatchingReason::Failed;
}

bool IsMissing(const std::error_code& obstacle) {
  return obstacle == std::errc::no_such_file_or_directory || obstacle == std::errc::not_a_directory ||
         obstacle == std::errc::too_many_symbolic_link_levels;
}

}  // namespace

struct WatchedFolders::Folder {
  Folder(std::uint64_t itsId, const AbsoluteIRI& itsLocation, Folder* itsParent)
      : id(itsId), location(itsLocation), parent(itsParent) {}

  [[nodiscard]] bool IsChildName(std::string_view text) const { return children.find(text) != children.end(); }

  const std::uint64_t id;
  const AbsoluteIRI location;
  Folder* const parent;             // null of a main folder
  std::optional<std::string> name;  // in bytes; of a main folder its path, nothing where there are no native names
  std::map<std::string, std::unique_ptr<Folder>, std::less<>> children;

  WatchTree::Way way;
  bool isSilent = false;    // on a file system that does not tell of changes
  bool holdsLinks = false;  // others than those that are children

  // When it was last looked at:
  SeenFolder seen;
  FolderLinks links;
  Clock::time_point changed;  // when that was new
};

WatchedFolders::WatchedFolders(StorageSystemReference storage, Inotify& inotify, bool mayPoll)
    : storage_(std::move(storage)), tree_(inotify), mayPoll_(mayPoll) {}

WatchedFolders::~WatchedFolders() = default;

void WatchedFolders::Set(const std::vector<std::shared_ptr<const PathManagement::IPathEntry>>& mainEntries) {
  std::unordered_set<AbsoluteIRI> staying;
  for (const auto& entry : mainEntries) staying.insert(entry->GetAbsoluteIRI());
  for (auto known = main_.begin(); known != main_.end();) {
    if (!staying.contains(known->first)) {
      Forget(*known->second);
      known = main_.erase(known);
    } else {
      ++known;
    }
  }
  for (const auto& each : mainEntries) {
    const auto& entry = static_cast<const FolderEntry&>(*each);
    const auto known = main_.find(entry.GetLocation());
    if (known != main_.end()) {
      Sync(*known->second, entry);
    } else {
      Look(*main_.emplace(entry.GetLocation(), NewFolder(entry, nullptr)).first->second);
    }
  }
}

void WatchedFolders::Replace(const FolderEntry& mainEntry) {
  const auto known = main_.find(mainEntry.GetLocation());
  if (known != main_.end()) Sync(*known->second, mainEntry);
}

std::unique_ptr<WatchedFolders::Folder> WatchedFolders::NewFolder(const FolderEntry& entry, Folder* parent) {
  auto folder = std::make_unique<Folder>(++lastId_, entry.GetLocation(), parent);
  if (parent == nullptr) {
    folder->name = NativePathOf(entry.GetLocation(), storage_);
  } else if (parent->name) {
    folder->name = fl::filesystem::to_bytes(entry.GetLocation().getName());
  }
  for (const auto& child : entry.GetChildren()) {
    folder->children[fl::filesystem::to_bytes(child->GetLocation().getName())] = NewFolder(*child, folder.get());
  }
  return folder;
}

void WatchedFolders::Sync(Folder& folder, const FolderEntry& entry) {
  std::set<std::string> staying;
  bool isOther = false;
  for (const auto& child : entry.GetChildren()) {
    const std::string name = fl::filesystem::to_bytes(child->GetLocation().getName());
    staying.insert(name);
    const auto known = folder.children.find(name);
    if (known != folder.children.end()) {
      Sync(*known->second, *child);
    } else {
      Look(*folder.children.emplace(name, NewFolder(*child, &folder)).first->second);
      isOther = true;
    }
  }
  for (auto known = folder.children.begin(); known != folder.children.end();) {
    if (staying.contains(known->first)) {
      ++known;
      continue;
    }
    Forget(*known->second);
    known = folder.children.erase(known);
    isOther = true;
  }
  if (!isOther) return;
  LookForLinks(folder);
  ArrangePolling(folder);
}

// Follows the way to the folder and to those below it, all of which are in doubt then.
void WatchedFolders::Look(Folder& folder) {
  const Folder* const parent = folder.parent;
  if (folder.name) {
    if (parent == nullptr) {
      folder.way = tree_.Follow(*folder.name, &folder);
    } else if (parent->way.end != nullptr) {
      folder.way = tree_.FollowFrom(*parent->way.end, *folder.name, &folder);
    } else {
      folder.way.obstacle = parent->way.obstacle;
    }
    if (parent != nullptr && parent->way.gap) folder.way.gap = parent->way.gap;
  }
  folder.isSilent = !TellsOfChanges(folder.way);
  LookForLinks(folder);
  ArrangePolling(folder);
  doubted_.insert(&folder);
  for (const auto& [name, child] : folder.children) Look(*child);
}

void WatchedFolders::LookForLinks(Folder& folder) const {
  folder.links = {};
  if (folder.way.end != nullptr) {
    folder.links = LinksIn(WatchTree::PathOf(*folder.way.end) + "/",
                           [&folder](std::string_view name) { return !folder.IsChildName(name); });
  }
  folder.holdsLinks = folder.links.count != 0;
}

void WatchedFolders::LookAnew(const Folders& lost) {
  std::vector<Folder*> highest;
  for (Folder* const folder : lost) {
    bool isBelowAnother = false;
    for (const Folder* above = folder->parent; above != nullptr; above = above->parent) {
      isBelowAnother = isBelowAnother || lost.contains(const_cast<Folder*>(above));
    }
    if (!isBelowAnother) highest.push_back(folder);
  }
  // All leave before one comes back, so that no watch stays on what has been moved away.
  for (Folder* const folder : highest) Leave(*folder);
  for (Folder* const folder : highest) Look(*folder);
}

void WatchedFolders::Leave(Folder& folder) {
  for (const auto& [name, child] : folder.children) Leave(*child);
  tree_.Leave(folder.way, &folder);
}

void WatchedFolders::Forget(Folder& folder) {
  for (const auto& [name, child] : folder.children) Forget(*child);
  tree_.Leave(folder.way, &folder);
  polled_.erase(folder.id);
  doubted_.erase(&folder);
}

void WatchedFolders::ArrangePolling(Folder& folder) {
  if (StateOf(folder).state != Watching::Polled) {
    polled_.erase(folder.id);
    return;
  }
  polled_[folder.id] = &folder;
  folder.seen = LookAt(folder.location, storage_);
  folder.changed = Clock::now();
}

void WatchedFolders::TakeEvents(std::span<const std::byte> events) {
  Folders lost;
  std::vector<std::pair<Folder*, std::string>> arrived;
  while (!events.empty()) {
    const auto& event = *reinterpret_cast<const inotify_event*>(events.data());
    events = events.subspan(sizeof(inotify_event) + event.len);
    if ((event.mask & IN_Q_OVERFLOW) != 0) return DoubtAll();

    const bool isArrival = (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0;
    tree_.Interpret(event, [&](WatchTree::User user, WatchTree::Meaning meaning, std::string_view name) {
      auto* const folder = static_cast<Folder*>(user);
      if (meaning == WatchTree::Meaning::Way) {
        lost.insert(folder);
        return;
      }
      doubted_.insert(folder);
      if (isArrival && !folder->holdsLinks && !folder->IsChildName(name)) arrived.emplace_back(folder, name);
    });
  }
  for (auto& [folder, name] : arrived) {
    if (folder->holdsLinks || !IsLink(WatchTree::PathOf(*folder->way.end) + "/" + name)) continue;
    LookForLinks(*folder);
    ArrangePolling(*folder);
  }
  LookAnew(lost);
}

void WatchedFolders::DoubtAll() {
  Folders all;
  for (const auto& [location, folder] : main_) all.insert(folder.get());
  LookAnew(all);
}

std::vector<WatchedFolders::Glance> WatchedFolders::GetGlances() const {
  std::vector<Glance> glances;
  for (const auto& [id, folder] : polled_) {
    Glance glance{.id = id, .folder = folder->location, .pathOfLinks = {}, .knownNames = {}, .seen = {}, .links = {}};
    if (folder->holdsLinks) {
      glance.pathOfLinks = WatchTree::PathOf(*folder->way.end) + "/";
      for (const auto& [name, child] : folder->children) glance.knownNames.insert(name);
    }
    glances.push_back(std::move(glance));
  }
  return glances;
}

void WatchedFolders::Look(Glance& glance, const StorageSystemReference& storage) {
  glance.seen = LookAt(glance.folder, storage);
  if (glance.pathOfLinks.empty()) return;
  glance.links = LinksIn(glance.pathOfLinks, [&glance](std::string_view name) {
    return glance.knownNames.find(name) == glance.knownNames.end();
  });
}

void WatchedFolders::TakeGlances(const std::vector<Glance>& glances, Clock::time_point now) {
  Folders lost;
  for (const Glance& glance : glances) {
    const auto known = polled_.find(glance.id);
    if (known == polled_.end()) continue;
    Folder& folder = *known->second;
    const bool isOther =
        glance.seen.stamp.identity != folder.seen.stamp.identity || glance.seen.error != folder.seen.error;
    const bool hasOtherLinks = !glance.pathOfLinks.empty() && glance.links != folder.links;
    if (isOther) {
      lost.insert(&folder);
    } else if (glance.seen != folder.seen || hasOtherLinks) {
      doubted_.insert(&folder);
      LookForLinks(folder);
      ArrangePolling(folder);
    } else if (now - folder.changed < kLongestTick) {
      doubted_.insert(&folder);
    }
  }
  LookAnew(lost);
}

std::vector<AbsoluteIRI> WatchedFolders::TakeDoubts() {
  Folders toldByOthers;
  for (const Folder* const folder : doubted_) {
    for (Folder* above = folder->parent; above != nullptr && toldByOthers.insert(above).second;) above = above->parent;
  }
  std::vector<AbsoluteIRI> doubts;
  for (Folder* const folder : doubted_) {
    if (!toldByOthers.contains(folder)) doubts.push_back(folder->location);
  }
  doubted_.clear();
  return doubts;
}

FolderWatching WatchedFolders::StateOf(const Folder& folder) const {
  const WatchTree::Way& way = folder.way;
  const auto polledFor = [&](WatchingReason reason, const std::error_code& error) {
    return FolderWatching{folder.location, mayPoll_ ? Watching::Polled : Watching::Unwatched, reason, error};
  };
  if (!folder.name) return polledFor(WatchingReason::NotLocal, {});
  if (way.gap) return polledFor(ReasonOfRefusal(way.gap), way.gap);
  if (folder.isSilent) return polledFor(WatchingReason::NotLocal, {});
  if (IsMissing(way.obstacle)) return {folder.location, Watching::Watched, WatchingReason::Missing, way.obstacle};
  if (way.obstacle) return polledFor(ReasonOfRefusal(way.obstacle), way.obstacle);
  if (folder.holdsLinks) return polledFor(WatchingReason::HoldsLinks, {});
  return {folder.location, Watching::Watched, WatchingReason::None, {}};
}

std::vector<FolderWatching> WatchedFolders::GetStates() const {
  std::vector<FolderWatching> states;
  for (const auto& [location, folder] : main_) AddStates(*folder, states);
  return states;
}

void WatchedFolders::AddStates(const Folder& folder, std::vector<FolderWatching>& states) const {
  states.push_back(StateOf(folder));
  for (const auto& [name, child] : folder.children) AddStates(*child, states);
}

std::optional<FolderWatching> WatchedFolders::Find(const AbsoluteIRI& location) const {
  const auto known = main_.find(location);
  if (known != main_.end()) return StateOf(*known->second);
  if (location.getParent() == location) return std::nullopt;

  // Below the nearest main folder.
  std::vector<std::string> names;
  AbsoluteIRI above = location;
  while (!main_.contains(above)) {
    if (above.getParent() == above) return std::nullopt;
    names.push_back(fl::filesystem::to_bytes(above.getName()));
    above = above.getParent();
  }
  const Folder* folder = main_.at(above).get();
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    const auto child = folder->children.find(*name);
    if (child == folder->children.end()) return std::nullopt;
    folder = child->second.get();
  }
  return StateOf(*folder);
}

}  // namespace Quorvex::PathEnvironment
