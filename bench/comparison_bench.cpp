// What it costs to tell how two vectors of a million entries differ, beside sorting both by address and merging them.

#include <algorithm>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <random>
#include <search_path_interfaces/path_entry.hpp>
#include <search_path_utilities/path_entry_vector_differentiator.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "cases.hpp"
#include "compared.hpp"
#include "counted_allocations.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::ComparisonFilter;
using Quorvex::PathManagement::FilenameComparator;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::PathEntryCallback;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::PathEntryVectorDifferentiator;
using Quorvex::PathManagement::PathItem;
using Quorvex::PathManagement::SearchScope;
using Quorvex::PathManagement::detail::SearchTarget;

using EntryPtr = std::shared_ptr<const IPathEntry>;
using EntryPtrs = std::vector<EntryPtr>;

constexpr std::size_t kEntries = 1'000'000;
constexpr std::size_t kChanges = kEntries / 100;
constexpr double kLimitOfFewChanges = 1.0;
constexpr double kLimitOfShuffled = 4.0;
constexpr double kLimitOfBytes = 64.0;

// A folder in which there is nothing.
class EmptyEntry final : public IPathEntry {
 public:
  explicit EmptyEntry(AbsoluteIRI location) : location_(std::move(location)) {}

  [[nodiscard]] PathEntryType GetEntryType() const override { return PathEntryType::Main; }
  [[nodiscard]] std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> GetItems() const override {
    return std::make_shared<const std::vector<std::shared_ptr<const PathItem>>>();
  }
  [[nodiscard]] AbsoluteIRI GetAbsoluteIRI() const override { return location_; }
  [[nodiscard]] EntryPtr GetPrivateEntry() const override { return nullptr; }
  [[nodiscard]] EntryPtr GetSecondSingleEntry() const override { return nullptr; }
  [[nodiscard]] std::shared_ptr<const EntryPtrs> GetFirstEntryGroup() const override { return NoEntries(); }
  [[nodiscard]] std::shared_ptr<const EntryPtrs> GetSecondEntryGroup() const override { return NoEntries(); }
  [[nodiscard]] std::shared_ptr<const EntryPtrs> GetThirdEntryGroup() const override { return NoEntries(); }
  [[nodiscard]] std::shared_ptr<const PathItem> FindFirst(const SearchTarget&, FilenameMatchingPolicy) const override {
    return nullptr;
  }
  bool ForEachEntryInScope(SearchScope, const PathEntryCallback&) const override { return false; }
  [[nodiscard]] std::shared_ptr<const FilenameComparator> GetFilenameComparator(FilenameMatchingPolicy) const override {
    return nullptr;
  }

 private:
  static std::shared_ptr<const EntryPtrs> NoEntries() { return std::make_shared<const EntryPtrs>(); }

  AbsoluteIRI location_;
};

std::mt19937_64& Chance() {
  static std::mt19937_64 chance(20261121);
  return chance;
}

EntryPtr EntryAt(std::size_t number) {
  const std::string name = std::to_string(number);
  return std::make_shared<EmptyEntry>(AbsoluteIRI(u"file:///folders/" + std::u16string(name.begin(), name.end())));
}

// In an order that is not that of their addresses.
const EntryPtrs& OldEntries() {
  static const EntryPtrs entries = [] {
    EntryPtrs made;
    made.reserve(kEntries);
    for (std::size_t number = 0; number < kEntries; ++number) made.push_back(EntryAt(number));
    std::shuffle(made.begin(), made.end(), Chance());
    return made;
  }();
  return entries;
}

std::vector<std::size_t> PositionsToChange() {
  std::vector<std::size_t> positions;
  while (positions.size() < kChanges) positions.push_back(Chance()() % kEntries);
  return positions;
}

EntryPtrs SomeReplaced() {
  EntryPtrs entries = OldEntries();
  for (const std::size_t position : PositionsToChange()) {
    entries[position] = std::make_shared<EmptyEntry>(entries[position]->GetAbsoluteIRI());
  }
  return entries;
}

// Each of the chosen comes to stand before the entry at another random place.
EntryPtrs SomeMoved() {
  EntryPtrs moved;
  std::vector<EntryPtrs> before(kEntries);
  EntryPtrs entries = OldEntries();
  for (const std::size_t position : PositionsToChange()) {
    if (entries[position]) before[Chance()() % kEntries].push_back(std::move(entries[position]));
  }
  for (std::size_t position = 0; position < kEntries; ++position) {
    moved.insert(moved.end(), before[position].begin(), before[position].end());
    if (entries[position]) moved.push_back(std::move(entries[position]));
  }
  return moved;
}

EntryPtrs Shuffled() {
  EntryPtrs entries = OldEntries();
  std::shuffle(entries.begin(), entries.end(), Chance());
  return entries;
}

struct ComparisonCase {
  std::string name;
  double limit;
  std::function<EntryPtrs()> newEntries;
};

void SortByAddress(EntryPtrs& entries) {
  std::sort(entries.begin(), entries.end(),
            [](const EntryPtr& left, const EntryPtr& right) { return std::less<>()(left.get(), right.get()); });
}

// How many objects both hold.
std::size_t CountCommon(const EntryPtrs& left, const EntryPtrs& right) {
  std::size_t common = 0;
  for (auto l = left.begin(), r = right.begin(); l != left.end() && r != right.end();) {
    const IPathEntry* const leftEntry = l->get();
    const IPathEntry* const rightEntry = r->get();
    if (leftEntry == rightEntry) ++common;
    if (!std::less<>()(rightEntry, leftEntry)) ++l;
    if (!std::less<>()(leftEntry, rightEntry)) ++r;
  }
  return common;
}

// Both work on vectors of their own, made while the clock stands. The floor keeps them; the comparison has to let go of
// every entry while the clock runs.
std::function<void(benchmark::State&)> SortingBoth(const ComparisonCase& comparison) {
  return [comparison](benchmark::State& state) {
    const EntryPtrs newEntries = comparison.newEntries();
    for (auto unused : state) {
      static_cast<void>(unused);
      state.PauseTiming();
      auto left = std::make_unique<EntryPtrs>(OldEntries());
      auto right = std::make_unique<EntryPtrs>(newEntries);
      state.ResumeTiming();
      SortByAddress(*left);
      SortByAddress(*right);
      benchmark::DoNotOptimize(CountCommon(*left, *right));
      state.PauseTiming();
      left.reset();
      right.reset();
      state.ResumeTiming();
    }
  };
}

std::function<void(benchmark::State&)> Comparing(const ComparisonCase& comparison) {
  return [comparison](benchmark::State& state) {
    const EntryPtrs newEntries = comparison.newEntries();
    for (auto unused : state) {
      static_cast<void>(unused);
      state.PauseTiming();
      auto changes = std::make_unique<PathEntryVectorDifferentiator>();
      EntryPtrs left = OldEntries();
      EntryPtrs right = newEntries;
      state.ResumeTiming();
      changes->Compare(std::move(left), std::move(right), ComparisonFilter::MainEntriesOnly);
      state.PauseTiming();
      changes.reset();
      state.ResumeTiming();
    }
  };
}

// All that is allocated from the call to its end, the copies of both vectors included.
std::function<void(benchmark::State&)> CountingBytes(const ComparisonCase& comparison) {
  return [comparison](benchmark::State& state) {
    const EntryPtrs newEntries = comparison.newEntries();
    for (auto unused : state) {
      static_cast<void>(unused);
      PathEntryVectorDifferentiator changes;
      const CountedAllocations allocations;
      changes.Compare(OldEntries(), newEntries, ComparisonFilter::MainEntriesOnly);
      state.counters["value"] = static_cast<double>(allocations.GetBytes()) / static_cast<double>(kEntries);
    }
  };
}

}  // namespace

void RegisterComparisons() {
  for (const ComparisonCase& comparison : {ComparisonCase{"1 % replaced", kLimitOfFewChanges, SomeReplaced},
                                           ComparisonCase{"1 % moved", kLimitOfFewChanges, SomeMoved},
                                           ComparisonCase{"shuffled", kLimitOfShuffled, Shuffled}}) {
    const std::string name = "comparison/1000000 entries, " + comparison.name;
    Compare(name, comparison.limit, SortingBoth(comparison), Comparing(comparison));
    Measure(name + ", allocated an entry", kLimitOfBytes, "bytes", CountingBytes(comparison));
  }
}

}  // namespace bench
