#pragma once

#include <search_path_environment/folder_path.hpp>
#include <unordered_map>

namespace vornixpath {

/// Where on a path folders stand, counted from 1 as the path was given, repeats included. The path must outlive this
/// object.
class FolderNumbers {
 public:
  explicit FolderNumbers(const Quorvex::PathEnvironment::FolderPath& path);

  /// The number of the folder of the path that `entry`, one of the path's own, belongs to.
  [[nodiscard]] std::size_t NumberOf(const Quorvex::PathManagement::IPathEntry& entry) const;

 private:
  const Quorvex::PathEnvironment::FolderPath& path_;
  std::unordered_map<const Quorvex::PathManagement::IPathEntry*, std::size_t> numbers_;  // of main entries
};

}  // namespace vornixpath
