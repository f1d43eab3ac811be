// Which of two entries comes first. Small enough to try all pairs and all triples.

#include <algorithm>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

class IsBefore {
 public:
  explicit IsBefore(const IPath& path) : path_(path) {}
  bool operator()(const EntryPtr& first, const EntryPtr& second) const {
    return path_.FirstEntryIsBeforeSecondOnPath(*first, *second);
  }
  [[nodiscard]] bool AreAlike(const EntryPtr& left, const EntryPtr& right) const {
    return !(*this)(left, right) && !(*this)(right, left);
  }

 private:
  const IPath& path_;
};

TEST_P(PathContract, PutsNoEntryBeforeItself) {
  const IsBefore isBefore(Path());

  for (const EntryPtr& entry : Entries()) EXPECT_FALSE(isBefore(entry, entry)) << Shown(entry);
}

TEST_P(PathContract, OrdersEntriesAsTheirMainEntriesAreListed) {
  const IsBefore isBefore(Path());
  const auto mainEntries = Path().GetMainEntries();
  const auto positionOf = [&](const EntryPtr& entry) {
    return std::find(mainEntries->begin(), mainEntries->end(), Path().GetMainEntryForEntry(*entry));
  };

  for (const EntryPtr& first : Entries()) {
    for (const EntryPtr& second : Entries()) {
      EXPECT_EQ(isBefore(first, second), positionOf(first) < positionOf(second))
          << Shown(first) << " and " << Shown(second);
    }
  }
}

TEST_P(PathContract, NeverPutsTwoEntriesBeforeEachOther) {
  const IsBefore isBefore(Path());

  for (const EntryPtr& first : Entries()) {
    for (const EntryPtr& second : Entries()) {
      EXPECT_FALSE(isBefore(first, second) && isBefore(second, first)) << Shown(first) << " and " << Shown(second);
    }
  }
}

TEST_P(PathContract, OrdersEntriesStrictlyAndWeakly) {
  const IsBefore isBefore(Path());
  const std::vector<EntryPtr> entries = Entries();

  for (const EntryPtr& a : entries) {
    for (const EntryPtr& b : entries) {
      for (const EntryPtr& c : entries) {
        const bool areInOrder = isBefore(a, b) && isBefore(b, c);
        const bool areAlike = isBefore.AreAlike(a, b) && isBefore.AreAlike(b, c);
        EXPECT_TRUE(!areInOrder || isBefore(a, c)) << Shown(a) << ", " << Shown(b) << ", " << Shown(c);
        EXPECT_TRUE(!areAlike || isBefore.AreAlike(a, c)) << Shown(a) << ", " << Shown(b) << ", " << Shown(c);
      }
    }
  }
}

TEST_P(PathContract, OrdersAsABinarySearchNeedsIt) {
  const std::vector<EntryPtr> entries = Entries();

  for (const EntryPtr& wanted : entries) {
    const auto [first, last] = std::equal_range(entries.begin(), entries.end(), wanted, IsBefore(Path()));

    ASSERT_NE(first, last) << Shown(wanted);
    EXPECT_EQ(*first, Path().GetMainEntryForEntry(*wanted));
    EXPECT_NE(std::find(first, last, wanted), last) << Shown(wanted);
  }
}

TEST_P(PathContract, PutsItsEntriesBeforeStrangersAndStrangersBeforeNothing) {
  const IsBefore isBefore(Path());
  const PathPtr other = Make(SampleContent());
  const EntryPtr stranger = other->GetMainEntries()->front();
  const EntryPtr strangeMethod = other->GetMethodEntries().front();

  for (const EntryPtr& entry : Entries()) {
    EXPECT_TRUE(isBefore(entry, stranger)) << Shown(entry);
    EXPECT_FALSE(isBefore(stranger, entry)) << Shown(entry);
  }
  EXPECT_TRUE(isBefore.AreAlike(stranger, strangeMethod));
}

TEST_P(PathContract, OrdersNothingWithoutFolders) {
  const PathPtr path = Make({});

  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*At("/a"), *At("/b")));
  EXPECT_FALSE(path->FirstEntryIsBeforeSecondOnPath(*At("/a"), *At("/a")));
}

}  // namespace
}  // namespace Quorvex::PathManagement::contract
