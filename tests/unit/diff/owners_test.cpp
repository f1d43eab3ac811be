// Whose pointers a comparison hands out, where both vectors hold the same objects by pointers of different owners.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using testing::ElementsAre;

using Owner = std::shared_ptr<const int>;

EntryPtrs OwnedBy(const Owner& owner, const EntryPtrs& entries) {
  EntryPtrs owned;
  for (const EntryPtr& entry : entries) owned.emplace_back(owner, entry.get());
  return owned;
}

bool AreAllOwnedBy(const Owner& owner, const EntryPtrs& entries) {
  return std::all_of(entries.begin(), entries.end(),
                     [&](const EntryPtr& entry) { return !entry.owner_before(owner) && !owner.owner_before(entry); });
}

class OwnersOfWhatChanged : public testing::Test {
 protected:
  Changes ChangesOfOwned(const EntryPtrs& oldEntries, const EntryPtrs& newEntries) const {
    return ChangesOf(OwnedBy(oldOwner, oldEntries), OwnedBy(newOwner, newEntries));
  }

  void ExpectOldBesideNew(const Changes& changes) const {
    EXPECT_TRUE(AreAllOwnedBy(oldOwner, changes.reordered));
    EXPECT_TRUE(AreAllOwnedBy(oldOwner, changes.removed));
    EXPECT_TRUE(AreAllOwnedBy(oldOwner, changes.refreshedBefore));
    EXPECT_TRUE(AreAllOwnedBy(newOwner, changes.added));
    EXPECT_TRUE(AreAllOwnedBy(newOwner, changes.refreshedAfter));
  }

  const Owner oldOwner = std::make_shared<const int>();
  const Owner newOwner = std::make_shared<const int>();
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");
  const EntryPtr before = AnEntry("a");
  const EntryPtr after = AnEntry("a");
};

TEST_F(OwnersOfWhatChanged, AreThoseOfTheVectorItStandsFor) {
  const EntryPtr removed = AnEntry("removed");
  const EntryPtr added = AnEntry("added");

  const Changes changes = ChangesOfOwned({x, y, before, removed}, {y, x, after, added});

  EXPECT_THAT(changes.reordered, ElementsAre(x));
  EXPECT_THAT(changes.removed, ElementsAre(removed));
  EXPECT_THAT(changes.added, ElementsAre(added));
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
  ExpectOldBesideNew(changes);
}

TEST_F(OwnersOfWhatChanged, AreTheSameWhereTheOldVectorRepeatsObjects) {
  const Changes changes = ChangesOfOwned({y, x, x, before, before, x}, {x, x, y, before, after});

  EXPECT_THAT(changes.reordered, ElementsAre(y));
  EXPECT_THAT(changes.removed, ElementsAre(x));
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
  EXPECT_EQ(changes.Count(), 4U);
  ExpectOldBesideNew(changes);
}

TEST_F(OwnersOfWhatChanged, AreTheSameWhereTheNewVectorRepeatsObjects) {
  const Changes changes = ChangesOfOwned({y, x, x, before, after}, {x, x, y, after, after, x});

  EXPECT_THAT(changes.reordered, ElementsAre(y));
  EXPECT_THAT(changes.added, ElementsAre(x));
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
  EXPECT_EQ(changes.Count(), 4U);
  ExpectOldBesideNew(changes);
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
