#include <algorithm>
#include <iterator>
#include <search_path_utilities/path_entry_vector_differentiator.hpp>
#include <utility>

#include "partition.hpp"
#include "sorted_entries.hpp"

namespace Quorvex::PathManagement {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using EntryPtrs = std::vector<EntryPtr>;

// One by one: where memory ends, what fitted stays.
template <class Iterator>
void Append(EntryPtrs& all, Iterator begin, Iterator end) {
  std::copy(begin, end, std::back_inserter(all));
}

// The same with what nobody needs any more. Without a copy where there is nothing yet.
void Append(EntryPtrs& all, EntryPtrs&& part) {
  if (all.empty()) {
    all = std::move(part);
  } else {
    Append(all, part.begin(), part.end());
  }
  part = EntryPtrs();
}

// So that the next append cannot fail.
void MakeRoomForOne(EntryPtrs& entries) {
  if (entries.size() == entries.capacity()) entries.reserve(std::max<std::size_t>(2 * entries.size(), 4));
}

// Those directly below `entries`, in order.
EntryPtrs MethodEntriesOf(const EntryPtrs& entries) {
  EntryPtrs methodEntries;
  for (const EntryPtr& entry : entries) {
    if (EntryPtr single = entry->GetPrivateEntry()) methodEntries.push_back(std::move(single));
    if (EntryPtr single = entry->GetSecondSingleEntry()) methodEntries.push_back(std::move(single));
    const auto first = entry->GetFirstEntryGroup();
    Append(methodEntries, first->begin(), first->end());
    const auto second = entry->GetSecondEntryGroup();
    Append(methodEntries, second->begin(), second->end());
    const auto third = entry->GetThirdEntryGroup();
    Append(methodEntries, third->begin(), third->end());
  }
  return methodEntries;
}

}  // namespace

void PathEntryVectorDifferentiator::Compare(EntryPtrs oldEntries, EntryPtrs newEntries, ComparisonFilter filter) {
  while (!oldEntries.empty() || !newEntries.empty()) {
    detail::Partition partition = detail::PartitionOf(std::move(oldEntries), std::move(newEntries));
    Append(*reordered_, std::move(partition.reordered));

    detail::SortByFolder(partition.onlyOld);
    detail::SortByFolder(partition.onlyNew);
    AppendByFolder(partition.onlyOld, partition.onlyNew);

    if (filter != ComparisonFilter::IncludeMethodEntries) return;
    oldEntries = MethodEntriesOf(partition.onlyOld);
    newEntries = MethodEntriesOf(partition.onlyNew);
  }
}

// Merges two lists in the order of folders.
void PathEntryVectorDifferentiator::AppendByFolder(const EntryPtrs& onlyOld, const EntryPtrs& onlyNew) {
  auto o = onlyOld.begin();
  auto n = onlyNew.begin();
  while (o != onlyOld.end() && n != onlyNew.end()) {
    if ((*o)->GetAbsoluteIRI() < (*n)->GetAbsoluteIRI()) {
      removed_->push_back(*o++);
    } else if ((*n)->GetAbsoluteIRI() < (*o)->GetAbsoluteIRI()) {
      added_->push_back(*n++);
    } else {
      MakeRoomForOne(*refreshedAfter_);
      refreshedBefore_->push_back(*o++);
      refreshedAfter_->push_back(*n++);
    }
  }
  Append(*removed_, o, onlyOld.end());
  Append(*added_, n, onlyNew.end());
}

std::shared_ptr<const EntryPtrs> PathEntryVectorDifferentiator::GetAdded() const { return added_; }
std::shared_ptr<const EntryPtrs> PathEntryVectorDifferentiator::GetRemoved() const { return removed_; }
std::shared_ptr<const EntryPtrs> PathEntryVectorDifferentiator::GetReordered() const { return reordered_; }
std::shared_ptr<const EntryPtrs> PathEntryVectorDifferentiator::GetRefreshedAfter() const { return refreshedAfter_; }
std::shared_ptr<const EntryPtrs> PathEntryVectorDifferentiator::GetRefreshedBefore() const { return refreshedBefore_; }

}  // namespace Quorvex::PathManagement
