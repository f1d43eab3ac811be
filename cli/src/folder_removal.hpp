#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <string>

#include "finding.hpp"
#include "path_origin.hpp"

namespace vornixpath {

/// Tells how folders are taken off a path: that goes by where the path comes from. A value.
class FolderRemoval {
 public:
  /// A path from `origin`, whose default session needs no option. Folders from position `packagesBegin` on are those of
  /// packages in the folder `packages`, safe for a terminal.
  FolderRemoval(PathOrigin origin, bool isDefaultSession, std::size_t packagesBegin, std::string packages);

  /// How to do without the folder at `position`, counted from 0. `otherwise` is what else can be done, said before:
  /// "make it, or ".
  [[nodiscard]] Fix Of(const foundation::storage::vfs::AbsoluteIRI& folder, std::size_t position,
                       const std::string& otherwise = "") const;

  /// How to do without a later spelling of a folder that stays.
  [[nodiscard]] Fix Of(const Quorvex::PathEnvironment::DroppedFolder& repeat) const;

 private:
  [[nodiscard]] bool IsOfPackage(std::size_t position) const { return position >= packagesBegin_; }

  PathOrigin origin_;
  bool isDefaultSession_;
  std::size_t packagesBegin_;
  std::string packages_;
};

}  // namespace vornixpath
