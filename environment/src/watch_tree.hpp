// Which real folders are watched, and who is to hear of what happens to them.
#pragma once

#include <sys/inotify.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

#include "inotify.hpp"

namespace Quorvex::PathEnvironment {

/// The folders on the ways to those that somebody follows, in the shape of the file system, links resolved.
///
/// Every folder on a way is watched for what becomes of itself, so that it is noticed when it is moved, removed or
/// closed. Names are watched only in the folders at the end of a way and around it, and where a way passes a link or
/// ends before its goal. Each watch is placed before what stands behind it is looked at, so a change that comes between
/// raises an event. Not safe from several threads.
class WatchTree {
 public:
  class Folder;

  /// Whoever follows a way; meaningless to the tree.
  using User = void*;

  /// The way of one user, to be given up by Leave.
  struct Way {
    Folder* end = nullptr;     ///< the folder, null when there is none
    std::error_code obstacle;  ///< why there is none
    std::error_code gap;       ///< why something on the way is not watched, so that changes may go unnoticed
    std::vector<std::pair<Folder*, std::string>> awaited;  ///< names that the way depends on, each in its folder

    /// The last folder that the way reaches, null when it was not followed.
    [[nodiscard]] Folder* GetLast() const {
      if (end != nullptr || awaited.empty()) return end;
      return awaited.back().first;
    }
  };

  /// What an event means to a user.
  enum class Meaning : std::uint8_t {
    Names,  ///< something of that name has come or gone in the folder at the end of the user's way
    Way,    ///< the way may lead elsewhere now, or nowhere
  };
  using Tell = std::function<void(User user, Meaning meaning, std::string_view name)>;

  explicit WatchTree(Inotify& inotify);
  WatchTree(const WatchTree&) = delete;
  WatchTree& operator=(const WatchTree&) = delete;
  ~WatchTree();

  /// Follows the absolute path `path`.
  [[nodiscard]] Way Follow(const std::string& path, User user);
  /// Follows `name` from a folder that is the end of another user's way, who must not leave before this one.
  [[nodiscard]] Way FollowFrom(Folder& folder, const std::string& name, User user);
  void Leave(Way& way, User user);

  /// Calls `tell`, which must leave the tree alone, for everybody whom the event concerns. Overflows concern nobody in
  /// particular.
  void Interpret(const inotify_event& event, const Tell& tell);

  /// The path of a folder, links resolved.
  [[nodiscard]] static std::string PathOf(const Folder& folder);

  [[nodiscard]] std::size_t CountWatches() const noexcept { return byWatch_.size(); }

 private:
  class Walk;

  Folder* EnterChild(Folder& folder, const std::string& name, std::error_code& error);
  void Require(Folder& folder, std::uint32_t mask);
  void DropWatch(Folder& folder);
  void LoseWatch(int watch);
  void Prune(Folder* folder);
  static void TellAllBelow(const Folder& folder, const Tell& tell);

  Inotify& inotify_;
  std::unique_ptr<Folder> root_;
  std::unordered_map<int, std::vector<Folder*>> byWatch_;
};

}  // namespace Quorvex::PathEnvironment
