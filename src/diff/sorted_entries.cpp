// The only file that sees the parallel sort, which is slow to compile.

#include "sorted_entries.hpp"

#include <tbb/parallel_sort.h>

#include <functional>

namespace Quorvex::PathManagement::detail {

namespace {

using EntryPtr = std::shared_ptr<const IPathEntry>;

}  // namespace

void SortByAddress(std::span<EntryPtr> entries) {
  tbb::parallel_sort(entries.begin(), entries.end(), [](const EntryPtr& left, const EntryPtr& right) {
    return std::less<>()(left.get(), right.get());
  });
}

void SortByFolder(std::span<EntryPtr> entries) {
  tbb::parallel_sort(entries.begin(), entries.end(), [](const EntryPtr& left, const EntryPtr& right) {
    return left->GetAbsoluteIRI() < right->GetAbsoluteIRI();
  });
}

}  // namespace Quorvex::PathManagement::detail
