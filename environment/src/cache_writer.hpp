// What goes into a toolbox cache, and the bytes of it.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

struct CacheContents {
  /// The list that the main entries are the kept folders of, and what it was read from.
  struct List {
    DistinctFolders folders;
    std::string origin;
  };

  foundation::storage::vfs::AbsoluteIRI root;  ///< all main entries stand at or below it
  std::vector<std::shared_ptr<const FolderEntry>> mainEntries;
  std::optional<List> list;
};

/// The whole file. Throws `std::length_error` for more than its numbers can count, `std::invalid_argument` for an entry
/// outside the root. O(n).
[[nodiscard]] std::string MakeCacheFile(const CacheContents& contents);

/// `location` relative to `root`; empty for the root itself, nothing for what is not below it.
[[nodiscard]] std::optional<std::u16string> RelativeTo(const foundation::storage::vfs::AbsoluteIRI& root,
                                                       const foundation::storage::vfs::AbsoluteIRI& location);

}  // namespace Quorvex::PathEnvironment
