#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vornixpath {

/// The folders of a path, in order and as they are given. What was typed or saved is read at once, but what it means is
/// only found out when somebody asks: a cache of the path may know it already. Cheap to copy.
class FolderList {
 public:
  using Folders = std::vector<foundation::storage::vfs::AbsoluteIRI>;

  /// What `understand(origin)` gives follows from `origin` alone.
  FolderList(std::string origin, std::function<Folders(std::string_view)> understand)
      : state_(std::make_shared<State>(State{std::move(origin), std::move(understand), std::nullopt})) {}

  /// The bytes that tell the list, and where relative names in it begin. Empty when other things decide, too.
  [[nodiscard]] const std::string& GetOrigin() const noexcept { return state_->origin; }

  /// Throws what keeps the bytes from being understood.
  [[nodiscard]] const Folders& GetFolders() const {
    std::optional<Folders>& folders = state_->folders;
    if (folders) return *folders;
    return folders.emplace(state_->understand(state_->origin));
  }

 private:
  struct State {
    std::string origin;
    std::function<Folders(std::string_view)> understand;
    std::optional<Folders> folders;
  };
  std::shared_ptr<State> state_;
};

}  // namespace vornixpath
