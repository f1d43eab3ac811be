#pragma once

#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <vector>

#include "folder_numbers.hpp"
#include "standpoint.hpp"

namespace vornixpath {

/// Why a file that has the name is not the one it means.
enum class HidingReason {
  LaterExtension,         ///< in the winner's folder; its extension stands later in the list
  OtherLetterCase,        ///< in the winner's folder; the winner has the exact name
  LaterByName,            ///< in the winner's folder; neither is exactly the name, and they are taken in name order
  PrivateFolderFirst,     ///< the private folder of the folder asked from comes first
  ClassFoldersFirst,      ///< a plain file, and from a folder class folders come first
  ClassFolderLater,       ///< in a class folder that stands later on the path than the plain folder
  ClassFolderNotEarlier,  ///< in a class folder in the winner's folder of the path; it would have to stand earlier
  PlainFileLater,         ///< in a plain folder that stands later on the path than the class folder
  LaterOnPath,            ///< in the same kind of place, later on the path
  LaterInTheSameFolder,   ///< in a special folder that comes later within the same folder of the path
};

struct HiddenFile {
  Quorvex::PathManagement::FoundItem file;
  HidingReason reason;
};

/// What `winner` hides from `standpoint`, each location once, in order of precedence.
[[nodiscard]] std::vector<HiddenFile> FilesHiddenBy(const Quorvex::PathManagement::FoundItem& winner,
                                                    const Standpoint& standpoint,
                                                    const Quorvex::PathManagement::detail::SearchTarget& target,
                                                    const FolderNumbers& numbers);

}  // namespace vornixpath
