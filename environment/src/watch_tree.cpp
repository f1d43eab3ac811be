#include "watch_tree.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <optional>

namespace Quorvex::PathEnvironment {

namespace {

// Of the folder itself. IN_ATTRIB comes for what is in it as well, and then bears a name.
constexpr std::uint32_t kOwnEvents = IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;
constexpr std::uint32_t kNameEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr std::uint32_t kOnlyThisFolder = IN_ONLYDIR | IN_DONT_FOLLOW | IN_EXCL_UNLINK;
constexpr int kMostLinks = 40;  // as many as the kernel follows

std::error_code SystemError() { return {errno, std::generic_category()}; }

bool IsGone(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

template <class T>
void EraseOne(std::vector<T>& values, const T& value) {
  const auto found = std::find(values.begin(), values.end(), value);
  if (found == values.end()) return;
  *found = values.back();
  values.pop_back();
}

}  // namespace

class WatchTree::Folder {
 public:
  Folder(Folder* itsParent, std::string itsName) : parent(itsParent), name(std::move(itsName)) {}

  [[nodiscard]] bool IsUsed() const { return pins != 0 || !children.empty() || !users.empty() || !awaiting.empty(); }

  Folder* const parent;  // null of the root
  const std::string name;
  std::map<std::string, std::unique_ptr<Folder>, std::less<>> children;
  std::vector<User> users;                                         // whose ways end here
  std::map<std::string, std::vector<User>, std::less<>> awaiting;  // whose ways depend on a name here

  int pins = 0;  // held for the moment
  int watch = -1;
  std::uint32_t mask = 0;
  std::error_code refusal;  // why it is not watched
};

// One way, followed step by step as the kernel would.
class WatchTree::Walk {
 public:
  Walk(WatchTree& tree, Folder& start, User user) : tree_(tree), at_(&start), user_(user) { ++at_->pins; }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;
  ~Walk() {
    tree_.Leave(way_, user_);  // what an exception has cut short
    --at_->pins;
    tree_.Prune(at_);
  }

  Way Follow(std::string_view path) && {
    Push(path);
    while (!rest_.empty() && !way_.obstacle) {
      const std::string name = std::move(rest_.back());
      rest_.pop_back();
      Step(name);
    }
    if (!way_.obstacle) {
      tree_.Require(*at_, kOwnEvents | kNameEvents);
      NoteGap(*at_);
      at_->users.push_back(user_);
      way_.end = at_;
    }
    return std::exchange(way_, {});
  }

 private:
  void Push(std::string_view path) {
    if (path.starts_with('/')) MoveTo(*tree_.root_);
    while (!path.empty()) {
      const std::size_t slash = path.find_last_of('/');
      const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
      if (!name.empty() && name != ".") rest_.emplace_back(name);
      path = path.substr(0, slash == std::string_view::npos ? 0 : slash);
    }
  }

  void Step(const std::string& name) {
    if (name == "..") {
      NoteDependence(name);
      if (at_->parent != nullptr) MoveTo(*at_->parent);
      return;
    }
    // As long as anybody is in a folder, the kernel says of its removal to nobody but those who watch the one around
    // it.
    const bool isGoal = rest_.empty();
    if (isGoal) Await(name);
    if (Enter(name)) return;
    // No folder. Whatever stands there: what comes next must be noticed, so look once more with the watch in place.
    if (!isGoal) {
      Await(name);
      if (Enter(name)) return;
    }
    const std::string path = PathOf(*at_) + "/" + name;
    if (const auto target = TargetOf(path)) Push(*target);
  }

  bool Enter(const std::string& name) {
    std::error_code error;
    Folder* const child = tree_.EnterChild(*at_, name, error);
    if (child == nullptr) return false;
    MoveTo(*child);
    NoteGap(*at_);
    return true;
  }

  void MoveTo(Folder& folder) {
    ++folder.pins;
    Folder* const left = std::exchange(at_, &folder);
    --left->pins;
    tree_.Prune(left);
  }

  void Await(const std::string& name) {
    tree_.Require(*at_, (at_->parent == nullptr ? 0 : kOwnEvents) | kNameEvents);
    NoteGap(*at_);
    NoteDependence(name);
  }

  void NoteDependence(const std::string& name) {
    way_.awaited.emplace_back(at_, name);
    at_->awaiting[name].push_back(user_);
  }

  // Where the link at `path` leads; nothing, with an obstacle noted, when there is none to follow.
  std::optional<std::string> TargetOf(const std::string& path) {
    std::string target(4096, '\0');
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length == -1) {
      way_.obstacle = errno == EINVAL ? std::make_error_code(std::errc::not_a_directory) : SystemError();
      return std::nullopt;
    }
    if (++links_ > kMostLinks) {
      way_.obstacle = std::make_error_code(std::errc::too_many_symbolic_link_levels);
      return std::nullopt;
    }
    target.resize(static_cast<std::size_t>(length));
    return target;
  }

  void NoteGap(const Folder& folder) {
    if (folder.refusal && !way_.gap) way_.gap = folder.refusal;
  }

  WatchTree& tree_;
  Folder* at_;
  User user_;
  Way way_;
  std::vector<std::string> rest_;  // what is still to be gone, the next step at the end
  int links_ = 0;
};

WatchTree::WatchTree(Inotify& inotify) : inotify_(inotify), root_(std::make_unique<Folder>(nullptr, "")) {}

WatchTree::~WatchTree() {
  for (const auto& [watch, folders] : byWatch_) inotify_.Remove(watch);
}

WatchTree::Way WatchTree::Follow(const std::string& path, User user) { return Walk(*this, *root_, user).Follow(path); }

WatchTree::Way WatchTree::FollowFrom(Folder& folder, const std::string& name, User user) {
  return Walk(*this, folder, user).Follow(name);
}

void WatchTree::Leave(Way& way, User user) {
  // Taking one off takes off what is above it, too, which may stand on the way itself.
  for (const auto& [folder, name] : way.awaited) ++folder->pins;
  if (way.end != nullptr) {
    EraseOne(way.end->users, user);
    Prune(way.end);
  }
  for (const auto& [folder, name] : way.awaited) {
    const auto users = folder->awaiting.find(name);
    if (users != folder->awaiting.end()) {
      EraseOne(users->second, user);
      if (users->second.empty()) folder->awaiting.erase(users);
    }
    --folder->pins;
    Prune(folder);
  }
  way = Way();
}

std::string WatchTree::PathOf(const Folder& folder) {
  if (folder.parent == nullptr) return "";
  return PathOf(*folder.parent) + "/" + folder.name;
}

// The folder `name` in `folder`, watched if that is granted; null, with the reason, when there is none.
WatchTree::Folder* WatchTree::EnterChild(Folder& folder, const std::string& name, std::error_code& error) {
  const std::string path = PathOf(folder) + "/" + name;
  struct stat status {};
  if (::lstat(path.c_str(), &status) == -1) {
    error = SystemError();
    return nullptr;
  }
  if (!S_ISDIR(status.st_mode)) {
    error = std::make_error_code(std::errc::not_a_directory);
    return nullptr;
  }
  auto& child = folder.children[name];
  if (!child) child = std::make_unique<Folder>(&folder, name);
  Folder* const entered = child.get();
  Require(*entered, kOwnEvents);
  if (!IsGone(entered->refusal)) return entered;
  error = entered->refusal;  // it has just vanished
  Prune(entered);
  return nullptr;
}

void WatchTree::Require(Folder& folder, std::uint32_t mask) {
  if (folder.watch != -1 && (folder.mask & mask) == mask) return;
  const std::string path = folder.parent == nullptr ? "/" : PathOf(folder);
  const int watch = inotify_.Add(path.c_str(), mask | kOnlyThisFolder);
  if (watch == -1) {
    folder.refusal = SystemError();
    return;
  }
  folder.refusal.clear();
  folder.mask |= mask;
  if (watch == folder.watch) return;
  DropWatch(folder);  // what stands there is no longer what stood there
  folder.watch = watch;
  byWatch_[watch].push_back(&folder);
}

void WatchTree::DropWatch(Folder& folder) {
  if (folder.watch == -1) return;
  const auto folders = byWatch_.find(folder.watch);
  EraseOne(folders->second, &folder);
  if (folders->second.empty()) {
    inotify_.Remove(folder.watch);
    byWatch_.erase(folders);
  }
  folder.watch = -1;
}

// The kernel has taken the watch away.
void WatchTree::LoseWatch(int watch) {
  const auto folders = byWatch_.find(watch);
  for (Folder* const folder : folders->second) {
    folder->watch = -1;
    folder->mask = 0;
  }
  byWatch_.erase(folders);
}

// Takes the folder off, and those above it, as far as nobody uses them.
void WatchTree::Prune(Folder* folder) {
  while (folder->parent != nullptr && !folder->IsUsed()) {
    Folder* const parent = folder->parent;
    DropWatch(*folder);
    parent->children.erase(parent->children.find(folder->name));
    folder = parent;
  }
}

// Depth is that of paths, which is bounded.
void WatchTree::TellAllBelow(const Folder& folder, const Tell& tell) {
  for (const User user : folder.users) tell(user, Meaning::Way, {});
  for (const auto& [name, users] : folder.awaiting) {
    for (const User user : users) tell(user, Meaning::Way, {});
  }
  for (const auto& [name, child] : folder.children) TellAllBelow(*child, tell);
}

void WatchTree::Interpret(const inotify_event& event, const Tell& tell) {
  const auto known = byWatch_.find(event.wd);
  if (known == byWatch_.end()) return;  // of a watch that has been taken away
  const std::string_view name = event.len == 0 ? std::string_view() : std::string_view(event.name);
  const std::vector<Folder*> folders = known->second;

  if (name.empty()) {
    for (const Folder* const folder : folders) TellAllBelow(*folder, tell);
    if ((event.mask & IN_IGNORED) != 0) LoseWatch(event.wd);
    return;
  }
  if ((event.mask & kNameEvents) == 0) return;
  for (const Folder* const folder : folders) {
    for (const User user : folder->users) tell(user, Meaning::Names, name);
    const auto awaiting = folder->awaiting.find(name);
    if (awaiting == folder->awaiting.end()) continue;
    for (const User user : awaiting->second) tell(user, Meaning::Way, name);
  }
}

}  // namespace Quorvex::PathEnvironment
