// What changed between two versions of a path.
#pragma once

#include <cstdint>
#include <memory>
#include <search_path_interfaces/path_entry.hpp>
#include <search_path_utilities/export.hpp>
#include <vector>

namespace Quorvex::PathManagement {

/// Whether method entries are compared as well. Any value but `IncludeMethodEntries` acts as `MainEntriesOnly`.
enum class ComparisonFilter : std::uint32_t { MainEntriesOnly, IncludeMethodEntries };

/// Tells what changed from an old vector of entries to a new one: which entries were added, removed, moved among the
/// others, or replaced by another object for the same folder.
///
/// Two pointers name the same entry when they point to the same object; two objects are for the same folder when
/// neither location is less than the other. Both vectors count as multisets: an object that occurs twice in the old one
/// and once in the new one is common once, and one occurrence of it is gone.
///
///     PathEntryVectorDifferentiator changes;
///     changes.Compare(*before->GetMainEntries(), *after->GetMainEntries(), ComparisonFilter::MainEntriesOnly);
///     for (const auto& entry : *changes.GetAdded()) Watch(*entry);
///
/// One object is for one thread at a time. The getters share their vectors: nobody may read one while `Compare` runs.
class SEARCH_PATH_UTILITIES_EXPORT PathEntryVectorDifferentiator {
 public:
  /// Begins with five empty vectors.
  PathEntryVectorDifferentiator() = default;

  PathEntryVectorDifferentiator(const PathEntryVectorDifferentiator&) = delete;
  PathEntryVectorDifferentiator& operator=(const PathEntryVectorDifferentiator&) = delete;
  ~PathEntryVectorDifferentiator() = default;

  /// Appends what changed from `oldEntries` to `newEntries` to the five vectors; nothing is ever cleared. No pointer
  /// may be null.
  ///
  /// With `IncludeMethodEntries`, the method entries of all entries that are not common to both vectors are then
  /// compared in the same way, and theirs, down to the last. Method entries of common entries are not: the same object
  /// has the same ones.
  ///
  /// Exceptions of entries, of allocation and of the task scheduler pass to the caller; what was appended before stays.
  /// Vectors of 2^32 - 1 elements or more throw `std::length_error`.
  ///
  /// Where no object repeats: O(n log s), s being the length of the longest common subsequence, plus sorting what
  /// changed. Otherwise O((n + r) log n), r being the number of pairs of positions that hold the same object. Large
  /// sorts run in parallel: `GetAbsoluteIRI` and the comparison of locations are called from several threads at once.
  void Compare(std::vector<std::shared_ptr<const IPathEntry>> oldEntries,
               std::vector<std::shared_ptr<const IPathEntry>> newEntries, ComparisonFilter filter);

  /// New entries whose folder had none before, or had fewer; of each `Compare` in the order of their folders.
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetAdded() const;

  /// Old entries whose folder has none any more, or has fewer; of each `Compare` in the order of their folders.
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetRemoved() const;

  /// Entries in both vectors that are not on the longest common subsequence of the two; of each `Compare` in the order
  /// of their addresses. Of several longest ones, that counts which is found when the old entries are taken in order,
  /// and each replaces an earlier one of equal rank whenever it stands further ahead in the new vector.
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetReordered() const;

  /// New objects that replace an old object for the same folder, each at the same index as that in
  /// `GetRefreshedBefore`; of each `Compare` in the order of their folders.
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetRefreshedAfter() const;

  /// The old objects that were replaced.
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const IPathEntry>>> GetRefreshedBefore() const;

 private:
  using EntryPtrs = std::vector<std::shared_ptr<const IPathEntry>>;

  void AppendByFolder(const EntryPtrs& onlyOld, const EntryPtrs& onlyNew);

  std::shared_ptr<EntryPtrs> added_ = std::make_shared<EntryPtrs>();
  std::shared_ptr<EntryPtrs> removed_ = std::make_shared<EntryPtrs>();
  std::shared_ptr<EntryPtrs> reordered_ = std::make_shared<EntryPtrs>();
  std::shared_ptr<EntryPtrs> refreshedAfter_ = std::make_shared<EntryPtrs>();
  std::shared_ptr<EntryPtrs> refreshedBefore_ = std::make_shared<EntryPtrs>();
};

}  // namespace Quorvex::PathManagement
