#include "alive_entries.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <support/run_together.hpp>
#include <vector>

#include "made_entry.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::support::RunTogether;

FolderEntryPtr EntryWith(std::size_t number, const std::u16string& file) {
  const std::string digits = std::to_string(number);
  return MadeEntry(u"memory:///" + std::u16string(digits.begin(), digits.end())).WithFiles({file}).Create();
}

TEST(AliveEntries, KeepTheKnownEntryWhenItHoldsTheSame) {
  AliveEntries alive;
  const auto first = alive.Settle(EntryWith(1, u"f"));

  EXPECT_EQ(alive.Settle(EntryWith(1, u"f")), first);
  EXPECT_EQ(alive.Find(first->GetLocation()), first);
  EXPECT_EQ(alive.Find(AbsoluteIRI(u"memory:///2")), nullptr);
}

TEST(AliveEntries, GoOnWithTheNewEntryWhenItHoldsSomethingElse) {
  AliveEntries alive;
  const auto first = alive.Settle(EntryWith(1, u"f"));
  const auto second = alive.Settle(EntryWith(1, u"g"));

  EXPECT_NE(second, first);
  EXPECT_EQ(alive.Find(first->GetLocation()), second);
}

TEST(AliveEntries, DoNotKeepAnEntryAlive) {
  AliveEntries alive;
  const auto location = alive.Settle(EntryWith(1, u"f"))->GetLocation();

  EXPECT_EQ(alive.Find(location), nullptr);
}

TEST(AliveEntries, AreSweptSoThatTheDeadDoNotPileUp) {
  AliveEntries alive;
  std::vector<FolderEntryPtr> held;
  for (std::size_t number = 0; number < 10'000; ++number) {
    const auto entry = alive.Settle(EntryWith(number, u"f"));
    if (number % 100 == 0) held.push_back(entry);
  }

  EXPECT_LT(alive.GetSize(), 1'000U);
  for (const auto& entry : held) EXPECT_EQ(alive.Find(entry->GetLocation()), entry);
}

TEST(AliveEntries, AgreeOnAnEntryHoweverManyThreadsSettleIt) {
  AliveEntries alive;
  constexpr std::size_t kThreads = 4;
  for (std::size_t round = 0; round < 100; ++round) {
    const auto known = alive.Settle(EntryWith(round, u"f"));
    std::vector<FolderEntryPtr> settled(kThreads);
    RunTogether(kThreads, [&](std::size_t thread) { settled[thread] = alive.Settle(EntryWith(round, u"f")); });
    EXPECT_EQ(std::set<FolderEntryPtr>(settled.begin(), settled.end()), std::set<FolderEntryPtr>{known});
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
