// What is compared of a folder that is looked at now and then, instead of being watched.
#pragma once

#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/storage_system.hpp>
#include <functional>
#include <search_path_environment/folder_proof.hpp>
#include <string>
#include <string_view>
#include <system_error>

namespace Quorvex::PathEnvironment {

/// Differs when a folder has become another one, its names or its rights have changed, or it can be looked at no
/// longer. Two changes within one tick of the file system's clock can leave the same.
struct SeenFolder {
  FolderStamp stamp;
  std::error_code error;

  friend bool operator==(const SeenFolder&, const SeenFolder&) = default;
};

/// Asks storage for the folder's status, nothing else. Throws nothing of storage's.
[[nodiscard]] SeenFolder LookAt(const foundation::storage::vfs::AbsoluteIRI& folder,
                                const foundation::storage::vfs::StorageSystemReference& storage);

/// The links in a folder, and what they lead to at the moment.
struct FolderLinks {
  std::size_t count = 0;
  std::uint64_t targets = 0;  ///< differs when one of them leads to something of another kind

  friend bool operator==(const FolderLinks&, const FolderLinks&) = default;
};

/// Those of the local folder `path` whose names `isOfInterest`. None where it cannot be listed. O(names), and a status
/// for each link.
[[nodiscard]] FolderLinks LinksIn(const std::string& path,
                                  const std::function<bool(std::string_view name)>& isOfInterest);

}  // namespace Quorvex::PathEnvironment
