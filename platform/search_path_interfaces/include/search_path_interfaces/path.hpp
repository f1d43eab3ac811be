#pragma once

#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <memory>
#include <search_path_interfaces/export.hpp>
#include <search_path_interfaces/filename_matching_policy.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <search_path_interfaces/search_scope.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement {

/// An ordered search path.
///
/// Path order is the order of `GetMainEntries`; a method entry stands at the position of its main entry. A path is
/// immutable once handed out, held as `std::shared_ptr<const IPath>`, and every operation may be called from several
/// threads at once: an implementation that caches makes its cache safe for that. A miss is an empty result or `false`,
/// never an exception. The order of the virtual operations is part of the contract: they are called by slot.
class SEARCH_PATH_INTERFACES_EXPORT IPath {
 public:
  virtual ~IPath();

  /// The path's folders in path order. The vector is never null, shared, and never changed after it was handed out.
  [[nodiscard]] virtual std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetMainEntries()
      const = 0;

  /// The special subfolders of all main entries, in path order.
  [[nodiscard]] virtual std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntries() const = 0;

  /// The method entries that `name` selects, in path order. A leaf path gives the class folders of that name (without
  /// '@') whose parent entry's kind is in `scope`.
  [[nodiscard]] virtual std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntriesByName(
      SearchScope scope, const std::u16string& name, FilenameMatchingPolicy policy) const = 0;

  /// The entries in `scope` that a partial pathname, made of folder names only, matches.
  [[nodiscard]] virtual std::vector<std::shared_ptr<const IPathEntry>> GetPartiallyMatchingEntries(
      SearchScope scope, const std::u16string& partialPathname, FilenameMatchingPolicy policy) const = 0;

  /// The main entry that `entry` belongs to; a main entry yields itself. `entry` must be on the path.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetMainEntryForEntry(const IPathEntry& entry) const = 0;

  /// The entry that encloses `entry`; null for a main entry. `entry` must be on the path.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetParentEntryForEntry(const IPathEntry& entry) const = 0;

  /// The entry at a location, names compared under `policy`; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::AbsoluteIRI& location, FilenameMatchingPolicy policy) const = 0;

  /// The entry at a canonical location; null when there is none.
  [[nodiscard]] virtual std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const = 0;

  /// The first item that `target` matches among the entries in `scope`, in path order.
  [[nodiscard]] virtual boost::optional<FoundItem> FindFirstInScope(SearchScope scope,
                                                                    const detail::SearchTarget& target,
                                                                    FilenameMatchingPolicy policy) const = 0;

  /// Every match, in path order.
  [[nodiscard]] virtual std::vector<FoundItem> FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                              FilenameMatchingPolicy policy) const = 0;

  /// Visits the entries in `scope` in path order. `true` when `callback` stopped the walk.
  virtual bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const = 0;

  /// The same, but `callback` may be invoked from several threads at once.
  virtual bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const = 0;

  /// Whether `first` comes strictly before `second`. Entries at one position are not before one another, so this is a
  /// strict weak ordering of the entries of a path.
  [[nodiscard]] virtual bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                            const IPathEntry& second) const = 0;

  /// Whether this exact entry object is one of the path's entries.
  [[nodiscard]] virtual bool IsEntryOnPath(const IPathEntry& entry) const = 0;

 protected:
  IPath() = default;
  IPath(const IPath&) = default;
  IPath& operator=(const IPath&) = default;
};

}  // namespace Quorvex::PathManagement
