// Comparisons and threads: those that a comparison uses, and several comparisons at once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <support/run_together.hpp>
#include <thread>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::RunTogether;

EntryPtrs ManyEntries(std::size_t count) {
  EntryPtrs entries;
  for (std::size_t number = 0; number < count; ++number)
    entries.push_back(AnEntry(std::to_string(number * 7919 % count)));
  return entries;
}

bool AreInOrderOfFolders(const EntryPtrs& entries) {
  return std::is_sorted(entries.begin(), entries.end(), [](const EntryPtr& left, const EntryPtr& right) {
    return left->GetAbsoluteIRI() < right->GetAbsoluteIRI();
  });
}

// Notes who comes. When it has been called so often that a sort has long handed out work, it holds one caller up until
// a second thread comes.
class Meeting {
 public:
  explicit Meeting(std::size_t callsBefore) : callsBefore_(callsBefore) {}

  void Attend() {
    std::unique_lock lock(mutex_);
    guests_.insert(std::this_thread::get_id());
    arrival_.notify_all();
    if (++calls_ != callsBefore_) return;
    static_cast<void>(arrival_.wait_for(lock, std::chrono::seconds(60), [&] { return guests_.size() > 1; }));
  }
  [[nodiscard]] std::size_t CountGuests() const { return guests_.size(); }

 private:
  std::size_t callsBefore_;
  std::size_t calls_ = 0;
  std::mutex mutex_;
  std::condition_variable arrival_;
  std::set<std::thread::id> guests_;
};

TEST(Comparison, AsksForLocationsFromSeveralThreadsWhenThereAreMany) {
  const auto threads = tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism);
  if (threads < 2) GTEST_SKIP() << "oneTBB has one thread only";
  Meeting meeting(100'000);
  EntryPtrs entries;
  for (const EntryPtr& plain : ManyEntries(20'000)) {
    const auto entry = std::make_shared<MadeEntry>(*std::static_pointer_cast<const MadeEntry>(plain));
    entry->whenAskedForLocation = [&meeting] { meeting.Attend(); };
    entries.push_back(entry);
  }

  const Changes changes = ChangesOf({}, entries);

  EXPECT_EQ(changes.added.size(), entries.size());
  EXPECT_TRUE(AreInOrderOfFolders(changes.added));
  EXPECT_GT(meeting.CountGuests(), 1U);
}

TEST(Comparison, OfTheSameEntriesMayRunOnSeveralThreadsWithAnObjectEach) {
  const EntryPtrs oldEntries = ManyEntries(3'000);
  EntryPtrs newEntries(oldEntries.rbegin(), oldEntries.rend());
  for (std::size_t place = 0; place < 1'000; ++place) newEntries[place] = AnEntry(std::to_string(place));
  const Changes expected = ChangesOf(oldEntries, newEntries);
  std::vector<int> agreements(4);

  RunTogether(agreements.size(), [&](std::size_t thread) {
    const Changes changes = ChangesOf(oldEntries, newEntries);
    agreements[thread] =
        static_cast<int>(changes.reordered == expected.reordered && changes.added.size() == expected.added.size() &&
                         changes.removed.size() == expected.removed.size() &&
                         changes.refreshedAfter.size() == expected.refreshedAfter.size());
  });

  EXPECT_THAT(agreements, testing::Each(1));
  EXPECT_EQ(expected.reordered.size(), 1'999U);
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
