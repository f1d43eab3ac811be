#include "memory_tree.hpp"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <fl/filesystem/case_folding.hpp>
#include <utility>

#include "identifier_text.hpp"

namespace foundation::storage::vfs::detail {

namespace {

constexpr int kMostLinks = 40;  // as many as the local file system follows before it calls them a loop

std::uint64_t NextDevice() noexcept {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

/// The components of a link's target, the last one first.
std::vector<std::u16string> ReversedComponents(std::u16string_view path) {
  std::vector<std::u16string> components = Split(path, u'/');
  std::reverse(components.begin(), components.end());
  return components;
}

void RequireNames(const Operation& operation, const std::vector<std::u16string>& names) {
  constexpr std::u16string_view forbidden(u"/\0", 2);
  const bool areNames = std::none_of(names.begin(), names.end(), [forbidden](const std::u16string& name) {
    return name.find_first_of(forbidden) != std::u16string::npos;
  });
  if (!areNames) operation.Fail(Operation::Invalid(), "a name in it holds '/' or NUL");
}

bool IsEmptyFolder(MemoryNode& node) noexcept {
  const MemoryFolder* folder = node.AsFolder();
  return folder != nullptr && folder->children.empty();
}

bool IsWithin(const std::vector<std::u16string>& names, const std::vector<std::u16string>& folder) {
  return names.size() > folder.size() && std::equal(folder.begin(), folder.end(), names.begin());
}

}  // namespace

/// Goes along a path, component by component, as a system does: links are replaced by their targets where they stand.
class MemoryTree::Walk {
 public:
  Walk(const MemoryTree& tree, std::vector<std::u16string> names, LastLink lastLink)
      : tree_(tree), pending_(std::move(names)), lastLink_(lastLink) {
    std::reverse(pending_.begin(), pending_.end());
  }

  Place Go() && {
    while (!pending_.empty()) {
      const std::u16string name = std::move(pending_.back());
      pending_.pop_back();
      if (name.empty() || name == u".") continue;

      MemoryFolder* folder = Current()->AsFolder();
      if (folder == nullptr) return Failed(std::errc::not_a_directory);
      if (name == u"..") {
        if (!trail_.empty()) trail_.pop_back();
        continue;
      }
      const auto child = folder->children.find(tree_.KeyOf(name));
      if (child == folder->children.end()) return Missing(name);
      if (!Enter(child->second)) return Failed(std::errc::too_many_symbolic_link_levels);
    }
    return Arrived();
  }

 private:
  [[nodiscard]] const MemoryNodePtr& Current() const { return trail_.empty() ? tree_.root_ : trail_.back().node; }

  /// False when there were too many links on the way.
  bool Enter(const MemoryFolder::Child& child) {
    const MemoryLink* link = child.node->AsLink();
    const bool isFollowed = link != nullptr && (!pending_.empty() || lastLink_ == LastLink::Followed);
    if (!isFollowed) {
      trail_.push_back(child);
      return true;
    }
    if (++links_ > kMostLinks) return false;
    if (link->target.starts_with(u'/')) trail_.clear();
    for (std::u16string& component : ReversedComponents(link->target)) pending_.push_back(std::move(component));
    return true;
  }

  [[nodiscard]] std::vector<std::u16string> Names() const {
    std::vector<std::u16string> names;
    names.reserve(trail_.size() + 1);
    for (const MemoryFolder::Child& step : trail_) names.push_back(step.name);
    return names;
  }

  [[nodiscard]] Place Arrived() const {
    Place place;
    place.node = Current();
    place.names = Names();
    if (!trail_.empty()) place.folder = trail_.size() == 1 ? tree_.root_ : trail_[trail_.size() - 2].node;
    return place;
  }

  [[nodiscard]] Place Missing(const std::u16string& name) const {
    Place place = Failed(std::errc::no_such_file_or_directory);
    if (!pending_.empty()) return place;
    place.folder = Current();
    place.names = Names();
    place.names.push_back(name);
    return place;
  }

  [[nodiscard]] static Place Failed(std::errc error) {
    Place place;
    place.error = error;
    return place;
  }

  const MemoryTree& tree_;
  std::vector<std::u16string> pending_;  // the next one last
  LastLink lastLink_;
  std::vector<MemoryFolder::Child> trail_;
  int links_ = 0;
};

MemoryTree::MemoryTree(NameComparison comparison)
    : comparison_(comparison), device_(NextDevice()), root_(std::make_shared<MemoryNode>()) {
  root_->content = MemoryFolder();
  root_->inode = ++lastInode_;
  root_->modificationTime = Now();
}

MemoryTree::~MemoryTree() {
  // Level by level: a deep tree must not exhaust the stack.
  std::vector<MemoryNodePtr> nodes{std::move(root_)};
  while (!nodes.empty()) {
    const MemoryNodePtr node = std::move(nodes.back());
    nodes.pop_back();
    MemoryFolder* folder = node->AsFolder();
    if (folder == nullptr) continue;
    for (auto& [key, child] : folder->children) nodes.push_back(std::move(child.node));
    folder->children.clear();
  }
}

void MemoryTree::AddFile(const Operation& operation, std::span<const std::byte> bytes) {
  MemoryFile file;
  file.bytes->assign(bytes.begin(), bytes.end());
  Replace(operation, std::move(file));
}

void MemoryTree::AddFolder(const Operation& operation) {
  const std::lock_guard lock(mutex_);
  MakeFolders(operation, operation.GetLocation().getSegments());
}

void MemoryTree::AddLink(const Operation& operation, std::u16string_view target) {
  Replace(operation, MemoryLink{std::u16string(target)});
}

FolderListing MemoryTree::List(const Operation& operation) const {
  const std::lock_guard lock(mutex_);
  const Place place = Find(operation, LastLink::Followed);
  const MemoryFolder* folder = place.node->AsFolder();
  if (folder == nullptr) operation.Fail(std::errc::not_a_directory);

  FolderListing listing;
  listing.identity = {device_, place.node->inode};
  listing.modificationTime = place.node->modificationTime;
  listing.changeTime = place.node->modificationTime;
  listing.readAt = Now();
  for (const auto& [key, child] : folder->children) {
    listing.entries.push_back({child.name, KindOf(place, child)});
    if (child.node->AsLink() != nullptr) listing.links.push_back(child.name);
  }
  return listing;
}

FileStatus MemoryTree::Stat(const Operation& operation) const {
  const std::lock_guard lock(mutex_);
  MemoryNode& node = *Find(operation, LastLink::Followed).node;
  const MemoryFile* file = node.AsFile();
  return {node.GetKind(),
          file == nullptr ? 0 : file->bytes->size(),
          node.modificationTime,
          node.modificationTime,
          {device_, node.inode}};
}

AbsoluteIRI MemoryTree::CanonicalLocation(const Operation& operation) const {
  const std::lock_guard lock(mutex_);
  const auto canonicalOf = [&](const AbsoluteIRI& existing) -> std::optional<AbsoluteIRI> {
    const Place place = Look(Operation("resolve", existing), LastLink::Followed);
    if (place.error == std::errc::no_such_file_or_directory) return std::nullopt;
    if (!place.node) operation.Fail(place.error);
    AbsoluteIRI canonical(existing.getScheme() + u":///");
    for (const std::u16string& name : place.names) canonical = canonical.getChild(name);
    return canonical;
  };
  return CanonicalOfDeepestExisting(operation.GetLocation(), canonicalOf);
}

FileIdentity MemoryTree::RequireFolder(const Operation& operation) const {
  const std::lock_guard lock(mutex_);
  const Place place = Find(operation, LastLink::Followed);
  if (place.node->AsFolder() == nullptr) operation.Fail(std::errc::not_a_directory);
  return {device_, place.node->inode};
}

void MemoryTree::Rename(const Operation& operation, const Operation& destination) {
  const std::lock_guard lock(mutex_);
  const Place from = Find(operation, LastLink::Kept);
  Place to = Look(destination, LastLink::Kept);
  RequireReplaceable(operation, from, to);
  // A name may change in its letter case alone.
  if (to.node != nullptr) to.names.back() = destination.GetLocation().getName();

  const MemoryNodePtr moved = from.node;
  Take(from);
  to.folder->AsFolder()->children[KeyOf(to.names.back())] = {to.names.back(), moved};
  to.folder->modificationTime = Now();
}

void MemoryTree::RequireReplaceable(const Operation& operation, const Place& from, const Place& to) const {
  if (!from.folder || to.node == root_) operation.Fail(std::errc::device_or_resource_busy);
  if (!to.folder) operation.Fail(to.error);
  if (to.node == from.node) return;
  const bool isFolder = from.node->AsFolder() != nullptr;
  if (isFolder && IsWithin(to.names, from.names)) operation.Fail(std::errc::invalid_argument);
  if (!to.node) return;

  const bool replacesFolder = to.node->AsFolder() != nullptr;
  if (isFolder && !replacesFolder) operation.Fail(std::errc::not_a_directory);
  if (!isFolder && replacesFolder) operation.Fail(std::errc::is_a_directory);
  if (replacesFolder && !IsEmptyFolder(*to.node)) operation.Fail(std::errc::directory_not_empty);
}

void MemoryTree::Remove(const Operation& operation) {
  const std::lock_guard lock(mutex_);
  const Place place = Find(operation, LastLink::Kept);
  if (!place.folder) operation.Fail(std::errc::device_or_resource_busy);
  if (place.node->AsFolder() != nullptr && !IsEmptyFolder(*place.node)) operation.Fail(std::errc::directory_not_empty);
  Take(place);
}

void MemoryTree::CreateFolder(const Operation& operation) {
  const std::lock_guard lock(mutex_);
  const Place place = Look(operation, LastLink::Kept);
  if (place.node) operation.Fail(std::errc::file_exists);
  if (!place.IsVacant()) operation.Fail(place.error);
  Put(place, MemoryFolder());
}

MemoryNodePtr MemoryTree::OpenForReading(const Operation& operation) const {
  const std::lock_guard lock(mutex_);
  return FindFile(operation);
}

MemoryNodePtr MemoryTree::OpenForWriting(const Operation& operation, WriteMode mode) {
  const std::lock_guard lock(mutex_);
  const bool isNew = mode == WriteMode::CreateNew;
  const Place place = Look(operation, isNew ? LastLink::Kept : LastLink::Followed);
  if (place.IsVacant()) return Put(place, MemoryFile());
  if (isNew && place.node) operation.Fail(std::errc::file_exists);

  const MemoryNodePtr node = FindFile(operation);
  if (mode == WriteMode::Truncate) {
    node->AsFile()->bytes = std::make_shared<std::vector<std::byte>>();
    node->modificationTime = Now();
  }
  return node;
}

std::size_t MemoryTree::Read(MemoryNode& node, std::size_t position, std::span<std::byte> buffer) const {
  const std::lock_guard lock(mutex_);
  const std::vector<std::byte>& bytes = *node.AsFile()->bytes;
  if (position >= bytes.size()) return 0;
  const std::size_t count = std::min(buffer.size(), bytes.size() - position);
  std::copy_n(bytes.data() + position, count, buffer.data());
  return count;
}

std::size_t MemoryTree::Write(MemoryNode& node, std::optional<std::size_t> position, std::span<const std::byte> bytes) {
  const std::lock_guard lock(mutex_);
  MemoryFile& file = *node.AsFile();
  if (std::exchange(file.isMapped, false)) file.bytes = std::make_shared<std::vector<std::byte>>(*file.bytes);

  const std::size_t start = position.value_or(file.bytes->size());
  const std::size_t end = start + bytes.size();
  if (end > file.bytes->size()) file.bytes->resize(end);
  std::copy(bytes.begin(), bytes.end(), file.bytes->begin() + static_cast<std::ptrdiff_t>(start));
  node.modificationTime = Now();
  return end;
}

std::shared_ptr<const std::vector<std::byte>> MemoryTree::Map(MemoryNode& node) const {
  const std::lock_guard lock(mutex_);
  MemoryFile& file = *node.AsFile();
  file.isMapped = true;
  return file.bytes;
}

bool MemoryTree::TryLock(MemoryNode& node, std::chrono::milliseconds timeout) {
  constexpr std::chrono::milliseconds longest = std::chrono::hours(24 * 365);  // what a clock can still add
  std::unique_lock lock(mutex_);
  bool& isLocked = node.AsFile()->isLocked;
  if (!unlocked_.wait_for(lock, std::min(timeout, longest), [&isLocked] { return !isLocked; })) return false;
  isLocked = true;
  return true;
}

void MemoryTree::Unlock(MemoryNode& node) {
  {
    const std::lock_guard lock(mutex_);
    node.AsFile()->isLocked = false;
  }
  unlocked_.notify_all();
}

std::u16string MemoryTree::KeyOf(const std::u16string& name) const {
  return ComparesNamesExactly() ? name : fl::filesystem::fold_case(name);
}

MemoryTree::Place MemoryTree::Look(std::vector<std::u16string> names, LastLink lastLink) const {
  return Walk(*this, std::move(names), lastLink).Go();
}

MemoryTree::Place MemoryTree::Look(const Operation& operation, LastLink lastLink) const {
  const AbsoluteIRI& location = operation.GetLocation();
  if (!location.getHost().empty()) operation.Fail(Operation::Invalid(), "a tree in memory is on no host");
  std::vector<std::u16string> names = location.getSegments();
  RequireNames(operation, names);
  return Look(std::move(names), lastLink);
}

MemoryTree::Place MemoryTree::Find(const Operation& operation, LastLink lastLink) const {
  Place place = Look(operation, lastLink);
  if (!place.node) operation.Fail(place.error);
  return place;
}

MemoryNodePtr MemoryTree::FindFile(const Operation& operation) const {
  MemoryNodePtr node = Find(operation, LastLink::Followed).node;
  if (node->AsFile() == nullptr) operation.Fail(std::errc::is_a_directory);
  return node;
}

FileKind MemoryTree::KindOf(const Place& folder, const MemoryFolder::Child& child) const {
  if (child.node->AsLink() == nullptr) return child.node->GetKind();
  std::vector<std::u16string> names = folder.names;
  names.push_back(child.name);
  const Place target = Look(std::move(names), LastLink::Followed);
  return target.node ? target.node->GetKind() : FileKind::Other;
}

FileTime MemoryTree::Now() const {
  // Two changes never have the same time, however coarse the clock.
  lastTime_ = std::max(lastTime_ + std::chrono::nanoseconds(1), FileTime(std::chrono::system_clock::now()));
  return lastTime_;
}

MemoryNodePtr MemoryTree::Put(const Place& place, decltype(MemoryNode::content) content) {
  const auto node = std::make_shared<MemoryNode>();
  node->content = std::move(content);
  node->inode = ++lastInode_;
  node->modificationTime = Now();
  place.folder->AsFolder()->children[KeyOf(place.names.back())] = {place.names.back(), node};
  place.folder->modificationTime = node->modificationTime;
  return node;
}

void MemoryTree::Take(const Place& place) {
  place.folder->AsFolder()->children.erase(KeyOf(place.names.back()));
  place.folder->modificationTime = Now();
}

void MemoryTree::MakeFolders(const Operation& operation, const std::vector<std::u16string>& names) {
  RequireNames(operation, names);
  for (std::size_t count = 1; count <= names.size(); ++count) {
    const Place place = Look({names.begin(), names.begin() + static_cast<std::ptrdiff_t>(count)}, LastLink::Followed);
    if (place.IsVacant()) {
      Put(place, MemoryFolder());
    } else if (!place.node) {
      operation.Fail(place.error);
    } else if (place.node->AsFolder() == nullptr) {
      operation.Fail(std::errc::not_a_directory);
    }
  }
}

void MemoryTree::Replace(const Operation& operation, decltype(MemoryNode::content) content) {
  const std::lock_guard lock(mutex_);
  MakeFolders(operation, operation.GetLocation().getParent().getSegments());
  const Place place = Look(operation, LastLink::Kept);
  const bool isFolder = place.node && place.node->AsFolder() != nullptr;
  if (isFolder) operation.Fail(std::errc::is_a_directory);
  Put(place, std::move(content));
}

}  // namespace foundation::storage::vfs::detail
