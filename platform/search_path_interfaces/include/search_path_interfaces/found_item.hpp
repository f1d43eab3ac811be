#pragma once

#include <memory>
#include <search_path_interfaces/export.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <search_path_interfaces/path_item.hpp>
#include <utility>

namespace Quorvex::PathManagement {

/// A file together with the entry in which it was found.
class FoundItem {
 public:
  /// `item` was found in `entry`; neither is null.
  FoundItem(std::shared_ptr<const PathItem> item, std::shared_ptr<const IPathEntry> entry) noexcept
      : item_(std::move(item)), entry_(std::move(entry)) {}

  /// The file: its name and its folder. Lives on when the path has gone.
  [[nodiscard]] std::shared_ptr<const PathItem> GetPathItem() const noexcept { return item_; }
  /// The entry that answered: an object of the path, by which the path tells where it stands.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntry() const noexcept { return entry_; }

 private:
  std::shared_ptr<const PathItem> item_;
  std::shared_ptr<const IPathEntry> entry_;
};

/// Equal when found in the same entry object, with items equal in base name, extension and folder. Items are made on
/// demand, so their addresses say nothing.
[[nodiscard]] SEARCH_PATH_INTERFACES_EXPORT bool operator==(const FoundItem& left, const FoundItem& right);

}  // namespace Quorvex::PathManagement
