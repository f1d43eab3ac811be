// A path that is there without a folder being listed: a toolbox cache in the place of its folders.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_path.hpp>
#include <search_path_environment/path_problem.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_interfaces/factories.hpp>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

/// The path whose list a cache holds, or the first folders of it. Answers as the `FolderPath` over the same folders
/// would: what is asked of a plain name, letter cases told apart, is found in the cache and makes the one entry it
/// finds; for all else that path is made, of the same entries.
///
/// Immutable, safe from any thread.
class SEARCH_PATH_ENVIRONMENT_EXPORT CachedPath final : public PathManagement::IPath {
 public:
  /// An entry of this path: a FolderEntry, made when it is asked for.
  using EntryPtr = std::shared_ptr<const PathManagement::IPathEntry>;

  /// Makes the path, or its first folders, of what stands on disk. Called, at most once, when a record turns out to be
  /// damaged; `entries` keeps the entries that callers have already seen, where their folders hold the same.
  using ReadAnew = std::function<std::shared_ptr<const FolderPath>(const PathManagement::IPathEntryFactory& entries)>;

  /// A path over the first `count` of the cache's folders, at most all. Unless the cache is trusted blindly, storage is
  /// asked about each of them, and about further spellings between them, by several threads for long paths; a folder
  /// that is not proven to be as it was is read. Later changes on disk do not show.
  ///
  /// Null when the cache holds no list, or some folder is not the one it was: then another folder of the list may be
  /// the same one, and the list must be looked through again. Throws ToolboxCacheError for a damaged file.
  [[nodiscard]] static std::shared_ptr<const CachedPath> Make(const ToolboxCache& cache, std::size_t count,
                                                              ReadAnew readAnew);

  /// How many of the cache's folders decide which file among the main folders a plain name means, as far as the cache
  /// can tell: those up to the first that holds one, or all.
  [[nodiscard]] static std::size_t CountDeciding(const ToolboxCache& cache,
                                                 const PathManagement::detail::SearchTarget& target);

  CachedPath(const CachedPath&) = delete;
  CachedPath& operator=(const CachedPath&) = delete;
  ~CachedPath() override;

  /// The same as a leaf path. Made by the first call. O(files) then.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetWhole() const;

  /// As FolderPath::GetProblems; makes no entry.
  [[nodiscard]] std::vector<PathProblem> GetProblems() const;

  /// Whether it is over all of the cache's folders.
  [[nodiscard]] bool IsWhole() const noexcept;

  /// How many folders were not proven, and so were read.
  [[nodiscard]] std::size_t CountRead() const noexcept;

  [[nodiscard]] std::shared_ptr<const std::vector<EntryPtr>> GetMainEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntriesByName(
      PathManagement::SearchScope scope, const std::u16string& name,
      PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<EntryPtr> GetPartiallyMatchingEntries(
      PathManagement::SearchScope scope, const std::u16string& partialPathname,
      PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetMainEntryForEntry(const PathManagement::IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetParentEntryForEntry(const PathManagement::IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const foundation::storage::vfs::AbsoluteIRI& location,
                                                     PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;
  [[nodiscard]] boost::optional<PathManagement::FoundItem> FindFirstInScope(
      PathManagement::SearchScope scope, const PathManagement::detail::SearchTarget& target,
      PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<PathManagement::FoundItem> FindAllInScope(
      PathManagement::SearchScope scope, const PathManagement::detail::SearchTarget& target,
      PathManagement::FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(PathManagement::SearchScope scope,
                    const PathManagement::PathEntryCallback& callback) const override;
  bool ConcurrentForEachEntry(PathManagement::SearchScope scope,
                              const PathManagement::PathEntryCallback& callback) const override;
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const PathManagement::IPathEntry& first,
                                                    const PathManagement::IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const PathManagement::IPathEntry& entry) const override;

 private:
  struct State;
  explicit CachedPath(std::unique_ptr<const State> state) noexcept;

  std::unique_ptr<const State> state_;
};

}  // namespace Quorvex::PathEnvironment
