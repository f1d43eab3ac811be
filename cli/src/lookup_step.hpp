#pragma once

#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path_item.hpp>
#include <string>
#include <variant>
#include <vector>

#include "entry_ptr.hpp"

namespace vornixpath {

// What a lookup asks a path, and what it is told. The entries are the path's own.

/// Whether a folder is on the path: its entry, or null.
struct AskedForEntry {
  foundation::storage::vfs::AbsoluteIRI folder;
  EntryPtr answer;
};

/// The private folder of a folder, or null.
struct AskedForPrivateFolder {
  EntryPtr folder;
  EntryPtr answer;
};

/// The class folders of a name.
struct AskedForClassFolders {
  std::u16string name;
  std::vector<EntryPtr> answer;
};

/// The file in one folder, or null.
struct AskedInFolder {
  EntryPtr folder;
  std::shared_ptr<const Quorvex::PathManagement::PathItem> answer;
};

/// The first file in all folders of some kinds.
struct AskedInScope {
  bool onlyPlainFolders;           ///< else every visible kind
  std::vector<EntryPtr> searched;  ///< the folders that the file might have stood in
  boost::optional<Quorvex::PathManagement::FoundItem> answer;
};

/// Whether the first folder stands before the second on the path, which both belong to.
struct AskedForOrder {
  EntryPtr first;
  EntryPtr second;
  bool answer;
};

using LookupStep = std::variant<AskedForEntry, AskedForPrivateFolder, AskedForClassFolders, AskedInFolder, AskedInScope,
                                AskedForOrder>;
using LookupSteps = std::vector<LookupStep>;

}  // namespace vornixpath
