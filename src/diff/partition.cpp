// Where objects repeat, addresses are sorted and merged. Where none does, as in every ordinary path, the occurrence
// index already tells what is common, and only what changed has to be sorted.

#include "partition.hpp"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

#include "longest_common_subsequence.hpp"
#include "sorted_entries.hpp"

namespace Quorvex::PathManagement::detail {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using EntryPtrs = std::vector<EntryPtr>;
using Subsequence = LongestCommonSubsequence<EntryPtr>;

bool IsBefore(const EntryPtr& left, const EntryPtr& right) { return std::less<>()(left.get(), right.get()); }

// The common entries that the subsequence lacks; all in order of addresses.
EntryPtrs WithoutSubsequence(const EntryPtrs& common, const EntryPtrs& subsequence) {
  EntryPtrs rest;
  std::set_difference(common.begin(), common.end(), subsequence.begin(), subsequence.end(), std::back_inserter(rest),
                      IsBefore);
  return rest;
}

Partition MergedByAddress(EntryPtrs oldEntries, EntryPtrs newEntries) {
  EntryPtrs subsequence = Subsequence::Find(oldEntries, newEntries);
  SortByAddress(subsequence);
  SortByAddress(oldEntries);
  SortByAddress(newEntries);

  Partition partition;
  EntryPtrs common;
  auto o = oldEntries.begin();
  auto n = newEntries.begin();
  while (o != oldEntries.end() && n != newEntries.end()) {
    if (IsBefore(*o, *n)) {
      partition.onlyOld.push_back(std::move(*o++));
    } else if (IsBefore(*n, *o)) {
      partition.onlyNew.push_back(std::move(*n++));
    } else {
      common.push_back(std::move(*o++));
      ++n;
    }
  }
  partition.onlyOld.insert(partition.onlyOld.end(), std::move_iterator(o), std::move_iterator(oldEntries.end()));
  partition.onlyNew.insert(partition.onlyNew.end(), std::move_iterator(n), std::move_iterator(newEntries.end()));
  partition.reordered = WithoutSubsequence(common, subsequence);
  return partition;
}

// Lets go of the entries. Their reference counts are scattered over the memory, so they are asked for ahead: those that
// std::make_shared makes stand beside the object. Both vectors in step, for they mostly hold the same objects at about
// the same places, and a count is still at hand when it is due again.
void Release(EntryPtrs& left, EntryPtrs& right) {
  constexpr std::size_t kAhead = 16;
  const auto releaseAt = [](EntryPtrs& entries, std::size_t position) {
    if (position + kAhead < entries.size()) __builtin_prefetch(entries[position + kAhead].get(), 1);
    if (position < entries.size()) entries[position].reset();
  };
  for (std::size_t position = 0; position < std::max(left.size(), right.size()); ++position) {
    releaseAt(left, position);
    releaseAt(right, position);
  }
  left = EntryPtrs();
  right = EntryPtrs();
}

// What becomes of each position where no object repeats.
struct Verdict {
  std::vector<bool> isOldMatched;
  std::vector<bool> isNewMatched;
  std::vector<bool> isOnSubsequence;
  std::size_t matches = 0;
  std::size_t subsequenceLength = 0;
};

// None when an object repeats in a way that counts: in the new vector, or in the old one when the new one holds it.
std::optional<Verdict> JudgeWithoutRepeats(const EntryPtrs& oldEntries, const EntryPtrs& newEntries) {
  std::optional<Subsequence::Index> index(newEntries);
  if (index->HasRepeats()) return std::nullopt;
  std::vector<SequencePosition> matchLists = index->MatchListsOf(oldEntries);
  index.reset();

  Verdict verdict{std::vector<bool>(oldEntries.size()), std::vector<bool>(newEntries.size()),
                  std::vector<bool>(oldEntries.size())};
  for (std::size_t position = 0; position < matchLists.size(); ++position) {
    if (matchLists[position] == kNowhere) continue;
    if (verdict.isNewMatched[matchLists[position]]) return std::nullopt;
    verdict.isNewMatched[matchLists[position]] = true;
    verdict.isOldMatched[position] = true;
    ++verdict.matches;
  }
  const LinksByPosition links = Subsequence::ScanUnique(std::move(matchLists));
  links.ForEachBackwards([&](SequencePosition position) { verdict.isOnSubsequence[position] = true; });
  verdict.subsequenceLength = links.LengthOfLongest();
  return verdict;
}

// Leaves in the vectors what did not change.
Partition TakeOutChanged(const Verdict& verdict, EntryPtrs& oldEntries, EntryPtrs& newEntries) {
  Partition partition;
  partition.onlyOld.reserve(oldEntries.size() - verdict.matches);
  partition.onlyNew.reserve(newEntries.size() - verdict.matches);
  partition.reordered.reserve(verdict.matches - verdict.subsequenceLength);
  for (std::size_t i = 0; i < oldEntries.size(); ++i) {
    if (verdict.isOnSubsequence[i]) continue;
    EntryPtrs& list = verdict.isOldMatched[i] ? partition.reordered : partition.onlyOld;
    list.push_back(std::move(oldEntries[i]));
  }
  for (std::size_t i = 0; i < newEntries.size(); ++i) {
    if (!verdict.isNewMatched[i]) partition.onlyNew.push_back(std::move(newEntries[i]));
  }
  return partition;
}

}  // namespace

Partition PartitionOf(EntryPtrs oldEntries, EntryPtrs newEntries) {
  const std::optional<Verdict> verdict = JudgeWithoutRepeats(oldEntries, newEntries);
  if (!verdict) return MergedByAddress(std::move(oldEntries), std::move(newEntries));

  Partition partition = TakeOutChanged(*verdict, oldEntries, newEntries);
  Release(oldEntries, newEntries);
  SortByAddress(partition.onlyOld);
  SortByAddress(partition.onlyNew);
  SortByAddress(partition.reordered);
  return partition;
}

}  // namespace Quorvex::PathManagement::detail
