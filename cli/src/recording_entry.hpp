#pragma once

#include <memory>
#include <search_path_interfaces/path_entry.hpp>

#include "lookup_step.hpp"

namespace vornixpath {

/// An entry that notes what a lookup asks it, and passes every question on. For one lookup on one thread; shares the
/// notes and the entry behind it.
class RecordingEntry final : public Quorvex::PathManagement::IPathEntry {
 public:
  using EntryGroup = std::shared_ptr<const std::vector<EntryPtr>>;

  /// Null for a null `entry`.
  [[nodiscard]] static EntryPtr Around(EntryPtr entry, std::shared_ptr<LookupSteps> steps);
  RecordingEntry(EntryPtr entry, std::shared_ptr<LookupSteps> steps);

  [[nodiscard]] const EntryPtr& GetOriginal() const noexcept { return entry_; }

  [[nodiscard]] Quorvex::PathManagement::PathEntryType GetEntryType() const override;
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const Quorvex::PathManagement::PathItem>>> GetItems()
      const override;
  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI GetAbsoluteIRI() const override;

  /// Noted, and records in its turn.
  [[nodiscard]] EntryPtr GetPrivateEntry() const override;
  [[nodiscard]] EntryPtr GetSecondSingleEntry() const override;
  [[nodiscard]] EntryGroup GetFirstEntryGroup() const override;
  [[nodiscard]] EntryGroup GetSecondEntryGroup() const override;
  [[nodiscard]] EntryGroup GetThirdEntryGroup() const override;

  /// Noted.
  [[nodiscard]] std::shared_ptr<const Quorvex::PathManagement::PathItem> FindFirst(
      const Quorvex::PathManagement::detail::SearchTarget& target,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  bool ForEachEntryInScope(Quorvex::PathManagement::SearchScope scope,
                           const Quorvex::PathManagement::PathEntryCallback& callback) const override;
  [[nodiscard]] std::shared_ptr<const Quorvex::PathManagement::FilenameComparator> GetFilenameComparator(
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;

 private:
  EntryPtr entry_;
  std::shared_ptr<LookupSteps> steps_;
};

/// The path's own entry: what stands behind a recording one, else the entry itself.
[[nodiscard]] EntryPtr OriginalOf(const EntryPtr& entry);
[[nodiscard]] const Quorvex::PathManagement::IPathEntry& OriginalOf(const Quorvex::PathManagement::IPathEntry& entry);

}  // namespace vornixpath
