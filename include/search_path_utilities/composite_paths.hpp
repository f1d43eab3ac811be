// Search paths made from other paths.
//
// A composite holds its components for its whole life and asks them anew on every call; only the list of main entries
// is built once and kept. All operations are const and may run on many threads at once, as far as the components allow
// it. No storage is touched beyond what the components touch.
#pragma once

#include <boost/thread/once.hpp>
#include <memory>
#include <search_path_interfaces/path.hpp>
#include <search_path_utilities/export.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement {

/// Several paths, one after another: the entries of the first component in its order, then those of the second, and so
/// on.
///
/// `GetMainEntries` builds its list on the first call and hands out the same vector ever after, even if a component's
/// list has changed since; concurrent first callers wait for one builder, and a build that throws leaves no trace: the
/// next call builds again. No other answer is cached. Exceptions of components pass to the caller unchanged.
class SEARCH_PATH_UTILITIES_EXPORT ConcatenatedPath : public IPath {
 public:
  /// Takes `paths` over and leaves it empty. No components make a path without entries; a null one throws
  /// `std::invalid_argument` and leaves `paths` as it was.
  explicit ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>&& paths);

  ConcatenatedPath(const std::shared_ptr<const IPath>& first, const std::shared_ptr<const IPath>& second);

  ConcatenatedPath(const ConcatenatedPath&) = delete;
  ConcatenatedPath& operator=(const ConcatenatedPath&) = delete;
  ~ConcatenatedPath() override;

  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetMainEntries() const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntries() const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntriesByName(
      SearchScope scope, const std::u16string& name, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetPartiallyMatchingEntries(
      SearchScope scope, const std::u16string& partialPathname, FilenameMatchingPolicy policy) const override;

  /// Answered by the first component that holds `entry`. If none does, the result is undefined.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetMainEntryForEntry(const IPathEntry& entry) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetParentEntryForEntry(const IPathEntry& entry) const override;

  /// An exact location anywhere on the path comes before a match under the policy in an earlier component.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::AbsoluteIRI& location, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;

  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(SearchScope scope, const detail::SearchTarget& target,
                                                            FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;

  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;

  /// Components are visited one after another; concurrency exists only inside a component.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;

  /// An entry is placed by the first component that holds it, even if a later one holds it too.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 protected:
  /// In path order; none is null; fixed after construction.
  std::vector<std::shared_ptr<const IPath>> ComponentPaths;

  /// Guards the single build of `MainEntriesCache`.
  mutable boost::once_flag MainEntriesOnce = BOOST_ONCE_INIT;

  /// Null until the first `GetMainEntries` completes, then never changed. Who has not passed the once region reads it
  /// with `std::atomic_load`.
  mutable std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> MainEntriesCache;
};

}  // namespace Quorvex::PathManagement
