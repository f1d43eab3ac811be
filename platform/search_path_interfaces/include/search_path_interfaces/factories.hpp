// Where leaf paths and their entries come from. Both factories are immutable and safe from any thread.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <iosfwd>
#include <memory>
#include <search_path_interfaces/export.hpp>
#include <search_path_interfaces/path.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <vector>

namespace Quorvex::PathManagement {

/// Makes the entries of leaf paths. Immutable, safe from any thread.
class SEARCH_PATH_INTERFACES_EXPORT IPathEntryFactory {
 public:
  virtual ~IPathEntryFactory();

  /// The entry of a folder named on a path, with its special subfolders; never null. A folder that cannot be read
  /// yields an entry without items.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> CreateMainEntry(
      const foundation::storage::vfs::AbsoluteIRI& folder) const = 0;

  /// Writes what is known of the folders below `toolboxRoot` to `out`, in the factory's own record format.
  ///
  /// Where a cache file is saved, `out` throws every error. Let it pass: one that is kept back counts as saved. The
  /// last bytes are written after the return, unchecked, unless `out` is flushed.
  virtual void WriteToolboxCache(std::ostream& out, const foundation::storage::vfs::AbsoluteIRI& toolboxRoot) const = 0;

 protected:
  IPathEntryFactory() = default;
  IPathEntryFactory(const IPathEntryFactory&) = default;
  IPathEntryFactory& operator=(const IPathEntryFactory&) = default;
};

/// Makes leaf paths of folders and a source of entries. Immutable, safe from any thread.
class SEARCH_PATH_INTERFACES_EXPORT IPathFactory {
 public:
  virtual ~IPathFactory();

  /// The path over `folders`, in that order, whose entries `entries` makes; never null.
  [[nodiscard]] virtual std::shared_ptr<const IPath> CreatePath(
      const std::vector<foundation::storage::vfs::AbsoluteIRI>& folders, const IPathEntryFactory& entries) const = 0;

 protected:
  IPathFactory() = default;
  IPathFactory(const IPathFactory&) = default;
  IPathFactory& operator=(const IPathFactory&) = default;
};

}  // namespace Quorvex::PathManagement
