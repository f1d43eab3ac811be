// Search paths made from other paths.
//
// Such a path holds what it is made of for its whole life and asks it anew on every call; only the list of main entries
// is built once and kept. All operations are const and may run on many threads at once, as far as the components allow
// it. No storage is touched beyond what the components touch.
#pragma once

#include <boost/thread/once.hpp>
#include <memory>
#include <search_path_interfaces/path.hpp>
#include <search_path_utilities/export.hpp>
#include <string>
#include <unordered_set>
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

  /// Of two paths; null throws `std::invalid_argument`.
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

/// Several paths, one after another, each folder listed once: the first in path order stays, later ones are dropped
/// without a word.
///
/// A folder is its location, as `AbsoluteIRI` compares it: links and other spellings are different folders here. A
/// found file is its folder's location together with its full name, in which letter case counts whatever the policy.
///
/// What is inherited answers from the first component that has an answer and needs no such care. `IsEntryOnPath` and
/// `FirstEntryIsBeforeSecondOnPath` thus know entries that are dropped from the lists, too.
///
/// Each list costs O(n) on average and one set of what was seen, which lives as long as the call.
class SEARCH_PATH_UTILITIES_EXPORT DeduplicatedPath : public ConcatenatedPath {
 public:
  /// As for ConcatenatedPath.
  explicit DeduplicatedPath(std::vector<std::shared_ptr<const IPath>>&& paths);
  ~DeduplicatedPath() override;

  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetMainEntries() const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntries() const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntriesByName(
      SearchScope scope, const std::u16string& name, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetPartiallyMatchingEntries(
      SearchScope scope, const std::u16string& partialPathname, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;

  /// Visits no location twice. Once `GetMainEntries` has given a list with entries, though, it visits each of those
  /// with what belongs to it: method entries at one location are then visited as often as they occur there, and what
  /// belongs to a dropped main entry is not visited at all.
  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;

  /// The same walk: `callback` is never called from two threads at once, for only one pass in order can tell which
  /// appearance is the first.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;
};

/// Another path with some of its main entries hidden, and with them their method entries and the files in all of those.
///
/// Entries are told apart as objects, not by location. Each is expected to be a main entry of the path. A stranger
/// hides nothing where the path puts strangers behind its entries. A method entry among them is not masked itself, and
/// yet its whole position is taken out of the lists. `GetMainEntryForEntry`, `GetParentEntryForEntry` and
/// `FirstEntryIsBeforeSecondOnPath` answer for hidden entries as well.
///
/// Lists that the path gives in its order lose what is hidden by two binary searches for each masked entry. Exceptions
/// of the path pass to the caller unchanged.
class SEARCH_PATH_UTILITIES_EXPORT MultiMaskedPath : public IPath {
 public:
  /// Throws `std::invalid_argument` when `path` or one of `maskedEntries` is null.
  MultiMaskedPath(std::shared_ptr<const IPath> path, std::vector<std::shared_ptr<const IPathEntry>> maskedEntries);
  MultiMaskedPath(const MultiMaskedPath&) = delete;
  MultiMaskedPath& operator=(const MultiMaskedPath&) = delete;
  ~MultiMaskedPath() override;

  /// Whether `entry` is on the path and the main entry that it belongs to is masked.
  [[nodiscard]] bool IsMasked(const IPathEntry& entry) const;

  /// `entries`, which are in path order, without those at the position of a masked entry.
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> RemoveMaskedEntries(
      std::vector<std::shared_ptr<const IPathEntry>> entries) const;

  /// Built once, on the first call that succeeds. Throws `std::length_error` when more entries were given to be masked
  /// than the path has main entries.
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetMainEntries() const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntries() const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetMethodEntriesByName(
      SearchScope scope, const std::u16string& name, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<std::shared_ptr<const IPathEntry>> GetPartiallyMatchingEntries(
      SearchScope scope, const std::u16string& partialPathname, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetMainEntryForEntry(const IPathEntry& entry) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetParentEntryForEntry(const IPathEntry& entry) const override;

  /// Null when the path's own answer is masked, even if another entry would have matched.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::AbsoluteIRI& location, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;

  /// The path's own first item unless that is hidden. Then, for each masked entry in the order in which they were
  /// given, the first item after its position is looked at, and the first of these that is not hidden is the answer.
  /// With entries masked out of path order this may be a later item than the first one that is not hidden.
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(SearchScope scope, const detail::SearchTarget& target,
                                                            FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;

  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;

  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 private:
  std::shared_ptr<const IPath> UnderlyingPath;
  std::vector<std::shared_ptr<const IPathEntry>> MaskedEntries;
  std::unordered_set<const IPathEntry*> MaskedEntrySet;
  mutable boost::once_flag MainEntriesOnce = BOOST_ONCE_INIT;
  mutable std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> MainEntriesCache;
};

}  // namespace Quorvex::PathManagement
