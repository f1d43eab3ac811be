#pragma once

// Entries that hold what a test gives them, and the comparisons that the tests make of them.

#include <gmock/gmock.h>

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <search_path_utilities/path_entry_vector_differentiator.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <support/texts_of.hpp>
#include <vector>

namespace Quorvex::PathManagement::diff_tests {

using EntryPtr = std::shared_ptr<const IPathEntry>;
using EntryPtrs = std::vector<EntryPtr>;

class MadeEntry final : public IPathEntry {
 public:
  explicit MadeEntry(std::string_view folder) : location(std::u16string(folder.begin(), folder.end())) {}

  foundation::storage::vfs::AbsoluteIRI location;
  EntryPtr privateEntry;
  EntryPtr secondSingle;
  EntryPtrs first;
  EntryPtrs second;
  EntryPtrs third;
  std::function<void()> whenAskedForLocation = [] {};
  std::function<void(std::string_view operation)> whenAskedForMethodEntries = [](std::string_view) {};

  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI GetAbsoluteIRI() const override {
    whenAskedForLocation();
    return location;
  }
  [[nodiscard]] EntryPtr GetPrivateEntry() const override {
    whenAskedForMethodEntries("GetPrivateEntry");
    return privateEntry;
  }
  [[nodiscard]] EntryPtr GetSecondSingleEntry() const override {
    whenAskedForMethodEntries("GetSecondSingleEntry");
    return secondSingle;
  }
  [[nodiscard]] std::shared_ptr<const EntryPtrs> GetFirstEntryGroup() const override {
    whenAskedForMethodEntries("GetFirstEntryGroup");
    return std::make_shared<const EntryPtrs>(first);
  }
  [[nodiscard]] std::shared_ptr<const EntryPtrs> GetSecondEntryGroup() const override {
    whenAskedForMethodEntries("GetSecondEntryGroup");
    return std::make_shared<const EntryPtrs>(second);
  }
  [[nodiscard]] std::shared_ptr<const EntryPtrs> GetThirdEntryGroup() const override {
    whenAskedForMethodEntries("GetThirdEntryGroup");
    return std::make_shared<const EntryPtrs>(third);
  }

  // No comparison asks for the rest.
  [[nodiscard]] PathEntryType GetEntryType() const override { throw std::logic_error("GetEntryType"); }
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> GetItems() const override {
    throw std::logic_error("GetItems");
  }
  [[nodiscard]] std::shared_ptr<const PathItem> FindFirst(const detail::SearchTarget& /*target*/,
                                                          FilenameMatchingPolicy /*policy*/) const override {
    throw std::logic_error("FindFirst");
  }
  bool ForEachEntryInScope(SearchScope /*scope*/, const PathEntryCallback& /*callback*/) const override {
    throw std::logic_error("ForEachEntryInScope");
  }
  [[nodiscard]] std::shared_ptr<const FilenameComparator> GetFilenameComparator(
      FilenameMatchingPolicy /*policy*/) const override {
    throw std::logic_error("GetFilenameComparator");
  }
};

/// A new object for the folder /`name`.
inline std::shared_ptr<MadeEntry> AnEntry(std::string_view name) {
  return std::make_shared<MadeEntry>("file:///" + std::string(name));
}

/// The folders of the entries, without the leading separator: "a b".
inline std::string NamesOf(const EntryPtrs& entries) {
  std::string names;
  for (const EntryPtr& entry : entries) names += (names.empty() ? "" : " ") + support::LocationOf(entry).substr(1);
  return names;
}

inline EntryPtrs ByAddress(EntryPtrs entries) {
  std::sort(entries.begin(), entries.end(),
            [](const EntryPtr& left, const EntryPtr& right) { return std::less<>()(left.get(), right.get()); });
  return entries;
}

/// The five vectors, copied.
struct Changes {
  explicit Changes(const PathEntryVectorDifferentiator& differentiator)
      : added(*differentiator.GetAdded()),
        removed(*differentiator.GetRemoved()),
        reordered(*differentiator.GetReordered()),
        refreshedAfter(*differentiator.GetRefreshedAfter()),
        refreshedBefore(*differentiator.GetRefreshedBefore()) {}

  EntryPtrs added;
  EntryPtrs removed;
  EntryPtrs reordered;
  EntryPtrs refreshedAfter;
  EntryPtrs refreshedBefore;

  [[nodiscard]] std::size_t Count() const {
    return added.size() + removed.size() + reordered.size() + refreshedAfter.size() + refreshedBefore.size();
  }
};

inline Changes ChangesOf(const EntryPtrs& oldEntries, const EntryPtrs& newEntries,
                         ComparisonFilter filter = ComparisonFilter::MainEntriesOnly) {
  PathEntryVectorDifferentiator differentiator;
  differentiator.Compare(oldEntries, newEntries, filter);
  return Changes(differentiator);
}

}  // namespace Quorvex::PathManagement::diff_tests
