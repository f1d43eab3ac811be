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

#include "bare_path.hpp"
#include "cases.hpp"
#include "compared.hpp"
#include "counted_allocations.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::ComparisonFilter;
using Quorvex::PathManagement::PathEntryVectorDifferentiator;

constexpr std::size_t kEntries = 1'000'000;
constexpr std::size_t kChanges = kEntries / 100;
constexpr double kLimitOfFewChanges = 1.0;
constexpr double kLimitOfShuffled = 4.0;
constexpr double kLimitOfBytes = 64.0;

std::mt19937_64& Chance() {
  static std::mt19937_64 chance(20261121);
  return chance;
}

EntryPtr EntryAt(std::size_t number) {
  const std::string name = std::to_string(number);
  return BareEntryAt(AbsoluteIRI(u"file:///folders/" + std::u16string(name.begin(), name.end())));
}

// In an order that is not that of their addresses.
const Entries& OldEntries() {
  static const Entries entries = [] {
    Entries made;
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

Entries SomeReplaced() {
  Entries entries = OldEntries();
  for (const std::size_t position : PositionsToChange()) {
    entries[position] = BareEntryAt(entries[position]->GetAbsoluteIRI());
  }
  return entries;
}

// Each of the chosen comes to stand before the entry at another random place.
Entries SomeMoved() {
  Entries moved;
  std::vector<Entries> before(kEntries);
  Entries entries = OldEntries();
  for (const std::size_t position : PositionsToChange()) {
    if (entries[position]) before[Chance()() % kEntries].push_back(std::move(entries[position]));
  }
  for (std::size_t position = 0; position < kEntries; ++position) {
    moved.insert(moved.end(), before[position].begin(), before[position].end());
    if (entries[position]) moved.push_back(std::move(entries[position]));
  }
  return moved;
}

Entries Shuffled() {
  Entries entries = OldEntries();
  std::shuffle(entries.begin(), entries.end(), Chance());
  return entries;
}

struct ComparisonCase {
  std::string name;
  double limit;
  std::function<Entries()> newEntries;
};

void SortByAddress(Entries& entries) {
  std::sort(entries.begin(), entries.end(),
            [](const EntryPtr& left, const EntryPtr& right) { return std::less<>()(left.get(), right.get()); });
}

// How many objects both hold.
std::size_t CountCommon(const Entries& left, const Entries& right) {
  std::size_t common = 0;
  for (auto l = left.begin(), r = right.begin(); l != left.end() && r != right.end();) {
    const auto* const leftEntry = l->get();
    const auto* const rightEntry = r->get();
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
    const Entries newEntries = comparison.newEntries();
    for (auto unused : state) {
      static_cast<void>(unused);
      state.PauseTiming();
      auto left = std::make_unique<Entries>(OldEntries());
      auto right = std::make_unique<Entries>(newEntries);
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
    const Entries newEntries = comparison.newEntries();
    for (auto unused : state) {
      static_cast<void>(unused);
      state.PauseTiming();
      auto changes = std::make_unique<PathEntryVectorDifferentiator>();
      Entries left = OldEntries();
      Entries right = newEntries;
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
    const Entries newEntries = comparison.newEntries();
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
