#pragma once

// An entry in memory that answers by walking its items. Slow and obvious: what a real entry has to agree with.

#include <memory>
#include <optional>
#include <search_path_interfaces/path_entry.hpp>
#include <support/call_log.hpp>
#include <support/folder.hpp>
#include <vector>

namespace Quorvex::PathManagement::support {

using EntryPtr = std::shared_ptr<const IPathEntry>;

/// How fakes behave beside what they hold.
struct FakeBehaviour {
  bool ignoresCaseNatively = false;
  /// Hears each question; null when nobody wants to know.
  std::shared_ptr<CallLog> log = nullptr;
  /// Handed out instead of the entry's own comparator when set, even if it is null.
  std::optional<std::shared_ptr<const FilenameComparator>> comparator = std::nullopt;
};

/// Immutable and safe from any thread. Letter case is that of ASCII.
class FakeEntry final : public IPathEntry, public std::enable_shared_from_this<FakeEntry> {
 public:
  using EntryGroup = std::shared_ptr<const std::vector<EntryPtr>>;
  using Items = std::vector<std::shared_ptr<const PathItem>>;

  /// The entry of the folder at `location` and, in depth, those of its special subfolders. Which kind may hold which is
  /// not asked: what the description names is there.
  [[nodiscard]] static std::shared_ptr<const FakeEntry> Create(const foundation::storage::vfs::AbsoluteIRI& location,
                                                               PathEntryType kind, const Folder& folder,
                                                               const FakeBehaviour& behaviour);

  [[nodiscard]] PathEntryType GetEntryType() const override;
  [[nodiscard]] std::shared_ptr<const Items> GetItems() const override;
  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI GetAbsoluteIRI() const override;
  [[nodiscard]] EntryPtr GetPrivateEntry() const override;
  [[nodiscard]] EntryPtr GetSecondSingleEntry() const override;
  [[nodiscard]] EntryGroup GetFirstEntryGroup() const override;
  [[nodiscard]] EntryGroup GetSecondEntryGroup() const override;
  [[nodiscard]] EntryGroup GetThirdEntryGroup() const override;
  [[nodiscard]] std::shared_ptr<const PathItem> FindFirst(const detail::SearchTarget& target,
                                                          FilenameMatchingPolicy policy) const override;
  bool ForEachEntryInScope(SearchScope scope, const PathEntryCallback& callback) const override;
  [[nodiscard]] std::shared_ptr<const FilenameComparator> GetFilenameComparator(
      FilenameMatchingPolicy policy) const override;

  /// Every matching item once: by extension in the target's order, then by name.
  [[nodiscard]] Items FindAll(const detail::SearchTarget& target, FilenameMatchingPolicy policy) const;

  /// What the entry's own comparator says, without telling the log.
  [[nodiscard]] bool AreSame(const std::u16string& wanted, const std::u16string& name,
                             FilenameMatchingPolicy policy) const;

  /// The entries directly below, in walk order.
  [[nodiscard]] std::vector<std::shared_ptr<const FakeEntry>> GetChildren() const;

 private:
  FakeEntry(const foundation::storage::vfs::AbsoluteIRI& location, PathEntryType kind, const Folder& folder,
            FakeBehaviour behaviour);
  void AddSubfolder(PathEntryType kind, const Folder& folder);
  template <class IsWanted>
  [[nodiscard]] Items ItemsWhere(const IsWanted& isWanted) const;
  void Note(Call call) const;

  using Children = std::vector<std::shared_ptr<const FakeEntry>>;

  foundation::storage::vfs::AbsoluteIRI location_;
  PathEntryType kind_;
  FakeBehaviour behaviour_;
  Items items_;
  Children private_;
  Children resources_;
  Children classes_;
  Children packages_;
  Children auxiliary_;
};

}  // namespace Quorvex::PathManagement::support
