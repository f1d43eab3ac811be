#pragma once

// A path in memory that answers every question by a plain walk over its entries: the oracle for every other path.

#include <memory>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <string_view>
#include <support/call_log.hpp>
#include <support/fake_entry.hpp>
#include <support/folder.hpp>
#include <vector>

namespace Quorvex::PathManagement::support {

/// Immutable and safe from any thread.
class FakePath final : public IPath {
 public:
  FakePath(std::string name, const std::vector<std::shared_ptr<const FakeEntry>>& mainEntries,
           std::shared_ptr<CallLog> log);

  [[nodiscard]] std::shared_ptr<const std::vector<EntryPtr>> GetMainEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntriesByName(SearchScope scope, const std::u16string& name,
                                                             FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<EntryPtr> GetPartiallyMatchingEntries(SearchScope scope,
                                                                  const std::u16string& partialPathname,
                                                                  FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetMainEntryForEntry(const IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetParentEntryForEntry(const IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const foundation::storage::vfs::AbsoluteIRI& location,
                                                     FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(SearchScope scope, const detail::SearchTarget& target,
                                                            FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope, const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryCallback& callback) const override;
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first, const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

  /// The entry at a path text, "/a/@Cls"; throws std::out_of_range when there is none. Not told to the log.
  [[nodiscard]] std::shared_ptr<const FakeEntry> EntryAt(std::string_view path) const;

 private:
  /// An entry in its place, in walk order.
  struct Place {
    std::shared_ptr<const FakeEntry> entry;
    EntryPtr parent;
    EntryPtr main;
    std::size_t position;
  };

  void Add(const std::shared_ptr<const FakeEntry>& entry, const EntryPtr& parent, const EntryPtr& main,
           std::size_t position);
  void Note(Call call) const;
  [[nodiscard]] const Place* FindPlace(const IPathEntry& entry) const;
  template <class IsWanted>
  [[nodiscard]] EntryPtr FirstMainThenMethod(const IsWanted& isWanted) const;
  [[nodiscard]] std::vector<FoundItem> Walk(SearchScope scope, const detail::SearchTarget& target,
                                            FilenameMatchingPolicy policy) const;

  std::string name_;
  std::vector<Place> places_;
  std::shared_ptr<CallLog> log_;
};

/// Builds a FakePath: `APath().With(Folder("/a").WithFile("foo.vnx")).Build()`.
class APath {
 public:
  APath& With(const Folder& folder);
  /// An entry of another path as a main entry: one object on two paths.
  APath& With(const std::shared_ptr<const FakeEntry>& entry);

  /// The scheme of the folders that follow; "file" at first.
  APath& Under(const std::u16string& scheme);
  /// Folders that follow tell letter cases apart only when asked to.
  APath& IgnoringCase();
  /// The comparator that entries of folders that follow hand out.
  APath& Comparing(std::shared_ptr<const FilenameComparator> comparator);
  /// The path, under that name, and the entries of folders that follow tell `log` what they are asked.
  APath& Recording(std::string name, const std::shared_ptr<CallLog>& log);

  [[nodiscard]] std::shared_ptr<const FakePath> Build() const;

 private:
  std::u16string scheme_ = u"file";
  std::string name_;
  FakeBehaviour behaviour_;
  std::vector<std::shared_ptr<const FakeEntry>> entries_;
};

}  // namespace Quorvex::PathManagement::support
