#pragma once

#include <boost/optional/optional.hpp>
#include <cstddef>
#include <search_path_interfaces/found_item.hpp>
#include <vector>

#include "folder_numbers.hpp"
#include "hidden_file.hpp"
#include "loaded_path.hpp"
#include "lookup_step.hpp"
#include "near_name.hpp"
#include "question.hpp"
#include "standpoint.hpp"
#include "unread_folder.hpp"

namespace vornixpath {

/// Why a name means what it means. Refers to entries of the path, which must outlive it.
struct Explanation {
  Question question;
  Quorvex::PathManagement::FilenameMatchingPolicy policy;
  LookupSteps steps;                                            ///< what the lookup asked, in order
  boost::optional<Quorvex::PathManagement::FoundItem> winner;   ///< none on a miss
  std::vector<HiddenFile> hidden;                               ///< what the winner hides
  std::vector<NearName> near;                                   ///< on a miss, the likeliest ones
  std::size_t furtherNear = 0;                                  ///< how many more there are
  std::vector<UnreadFolder> unread;                             ///< where files may stand that are missing here
  std::vector<EntryPtr> maskedFolders;                          ///< of the path, in path order
  std::vector<Quorvex::PathManagement::FoundItem> maskedFiles;  ///< what the name could mean but for the masks
};

/// The answer is that of `FindVisibleFile`, which it comes from. `standpoint` asks on the view of `path`. Storage is
/// touched only on a miss, as `FindNearNames` says.
[[nodiscard]] Explanation Explain(const LoadedPath& path, const Standpoint& standpoint, Question question,
                                  const FolderNumbers& numbers);

}  // namespace vornixpath
