#pragma once

#include <boost/container/small_vector.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_interfaces/filename_matching_policy.hpp>
#include <string>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// Folder names; few in most pathnames, so that the list costs no allocation.
using Components = boost::container::small_vector<std::u16string, 4>;

/// The names between the separators of `text`.
[[nodiscard]] Components SplitIntoComponents(std::u16string_view text);

/// Which folders a partial pathname, folder names only, means under a policy. A text that begins with a separator means
/// the one folder with that whole path.
class FolderMatcher {
 public:
  FolderMatcher(std::u16string_view folders, PathManagement::FilenameMatchingPolicy policy);

  /// A location that is no path of its storage, such as file://host/x, is named by its whole path alone.
  [[nodiscard]] bool Matches(const std::shared_ptr<const FolderEntry>& entry) const;

  /// The name that the folder itself must bear, perhaps behind a mark; empty when any name will do.
  [[nodiscard]] const std::u16string& GetLastName() const noexcept;

 private:
  PathManagement::FilenameMatchingPolicy policy_;
  std::u16string wholePath_;
  Components components_;
};

}  // namespace Quorvex::PathEnvironment
