#pragma once

#include <cstddef>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_environment/path_problem.hpp>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

/// The leaf path: an ordered list of real folders.
///
/// Immutable, safe from any thread, and touches no storage. A lookup costs the same on a long path as on a short one:
/// names are found through an index from base name to places on the path. The answers are those of a plain walk over
/// the entries.
class SEARCH_PATH_ENVIRONMENT_EXPORT FolderPath final : public PathManagement::IPath {
 public:
  /// An entry of this path: a FolderEntry.
  using EntryPtr = std::shared_ptr<const PathManagement::IPathEntry>;

  /// One folder of the list that a path is made from.
  struct Folder {
    std::shared_ptr<const FolderEntry> entry;  ///< not null, a main entry
    std::size_t position;                      ///< on the path as it was given
  };

  /// A path over `folders`, whose locations differ. `problems` are those of the list itself, such as repeats. Throws
  /// `std::invalid_argument`, naming the folder, for an entry that is not of the kind `Main`.
  FolderPath(const std::vector<Folder>& folders, std::vector<PathProblem> problems);
  FolderPath(const FolderPath&) = delete;
  FolderPath& operator=(const FolderPath&) = delete;
  ~FolderPath() override;

  /// A version of this path in which each of `entries` stands in the place of the main entry at its location; it shares
  /// everything else. The cost does not go with the length of the path: replacing n folders, in as many versions as one
  /// likes, indexes O(n log n) folders, and every now and then, when those replaced have grown to a sixteenth of the
  /// path, all of it, for they become part of it for good. Lookups in such a version ask O(log n) indexes.
  ///
  /// Throws `std::invalid_argument`, naming the folder, when the path has no main entry that is spelled like that,
  /// or the new entry is none.
  [[nodiscard]] std::shared_ptr<const FolderPath> WithReplaced(
      const std::vector<std::shared_ptr<const FolderEntry>>& entries) const;

  [[nodiscard]] std::shared_ptr<const std::vector<EntryPtr>> GetMainEntries() const override;

  /// Of each main entry, in their order, its position on the path as it was given, from 0; a repeat has a position of
  /// its own, but no entry. Lives as long as the path.
  [[nodiscard]] const std::vector<std::size_t>& GetPositions() const noexcept;

  [[nodiscard]] std::vector<EntryPtr> GetMethodEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntriesByName(
      PathManagement::SearchScope scope, const std::u16string& name,
      PathManagement::FilenameMatchingPolicy policy) const override;

  /// Leniently matching entries, in path order; a text that begins with a separator must be the entry's whole path
  /// text.
  [[nodiscard]] std::vector<EntryPtr> GetPartiallyMatchingEntries(
      PathManagement::SearchScope scope, const std::u16string& partialPathname,
      PathManagement::FilenameMatchingPolicy policy) const override;

  /// Null for an entry that is not on the path, as are parents of main entries.
  [[nodiscard]] EntryPtr GetMainEntryForEntry(const PathManagement::IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetParentEntryForEntry(const PathManagement::IPathEntry& entry) const override;

  /// The location as it is spelled on the path, else as it is canonically, else as `policy` compares names. A main
  /// entry comes before a method entry.
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const foundation::storage::vfs::AbsoluteIRI& location,
                                                     PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;

  /// A base name may hold separators: what stands before the last one is a partial pathname that the entry must match
  /// leniently, or, if it begins with a separator, the entry's whole path text. Empty base names, and those that end in
  /// a separator, match nothing.
  [[nodiscard]] boost::optional<PathManagement::FoundItem> FindFirstInScope(
      PathManagement::SearchScope scope, const PathManagement::detail::SearchTarget& target,
      PathManagement::FilenameMatchingPolicy policy) const override;

  /// An item once: in walk order, then in the order of the target's extensions, then by name.
  [[nodiscard]] std::vector<PathManagement::FoundItem> FindAllInScope(
      PathManagement::SearchScope scope, const PathManagement::detail::SearchTarget& target,
      PathManagement::FilenameMatchingPolicy policy) const override;

  bool ForEachEntry(PathManagement::SearchScope scope,
                    const PathManagement::PathEntryCallback& callback) const override;
  bool ConcurrentForEachEntry(PathManagement::SearchScope scope,
                              const PathManagement::PathEntryCallback& callback) const override;

  /// An entry on the path comes before one that is not; of two strangers neither does.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const PathManagement::IPathEntry& first,
                                                    const PathManagement::IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const PathManagement::IPathEntry& entry) const override;

  /// What went wrong while the path was read, in path order. Gathered on the first call.
  [[nodiscard]] const std::vector<PathProblem>& GetProblems() const;

 private:
  struct List;
  struct State;

  explicit FolderPath(std::unique_ptr<const State> state) noexcept;
  std::unique_ptr<const State> state_;
};

}  // namespace Quorvex::PathEnvironment
