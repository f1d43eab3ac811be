// A search path that is made of one map, for a program that knows its folders without a disk.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

namespace map_path {

namespace path_management = Quorvex::PathManagement;
using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;
using CanonicalAbsoluteIRI = foundation::storage::vfs::CanonicalAbsoluteIRI;
using EntryPtr = std::shared_ptr<const path_management::IPathEntry>;
using FolderEntryPtr = std::shared_ptr<const Quorvex::PathEnvironment::FolderEntry>;
using FilenameMatchingPolicy = path_management::FilenameMatchingPolicy;
using FoundItem = path_management::FoundItem;
using PathEntryCallback = path_management::PathEntryCallback;
using SearchScope = path_management::SearchScope;
using SearchTarget = path_management::detail::SearchTarget;

/// Path texts of folders ("/a/+pkg"), and the files in each. Every special subfolder has an entry of its own.
using FolderMap = std::map<std::u16string, std::vector<std::u16string>>;

/// Immutable, safe from any thread. Every question is a plain walk over the entries, O(entries) and more.
class MapPath final : public path_management::IPath {
 public:
  /// The path over `folders`, path texts that differ, with what `contents` says is in them.
  MapPath(const std::vector<std::u16string>& folders, const FolderMap& contents);

  [[nodiscard]] std::shared_ptr<const std::vector<EntryPtr>> GetMainEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                             FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<EntryPtr> GetPartiallyMatchingEntries(SearchScope scope,
                                                                  const std::u16string& partialPathname,
                                                                  FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetMainEntryForEntry(const path_management::IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetParentEntryForEntry(const path_management::IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location,
                                                     FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const override;
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                            FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const path_management::IPathEntry& first,
                                                    const path_management::IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const path_management::IPathEntry& entry) const override;

 private:
  /// An entry does not know where it stands; the path does.
  struct Place {
    FolderEntryPtr entry;
    FolderEntryPtr parent;  ///< null for a main entry
    std::size_t main;       ///< the number of its main entry
  };

  void Add(const FolderEntryPtr& entry, const FolderEntryPtr& parent, std::size_t main);
  [[nodiscard]] const Place* Find(const path_management::IPathEntry& entry) const;
  [[nodiscard]] std::vector<EntryPtr> EntriesWhere(const std::function<bool(const Place&)>& isWanted) const;
  [[nodiscard]] EntryPtr FirstMainThenMethod(const std::function<bool(const Place&)>& isWanted) const;

  std::vector<Place> places_;  // in walk order
  std::shared_ptr<const std::vector<EntryPtr>> mainEntries_;
};

}  // namespace map_path
