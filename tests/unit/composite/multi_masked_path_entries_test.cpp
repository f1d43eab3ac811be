// Questions about single entries: which are masked, which are on the path, and what else is known of them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "masked_folders.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using support::APath;
using support::Folder;
using support::InjectedFailure;
using testing::Each;
using testing::ElementsAre;
using testing::Field;

class MultiMaskedPathEntries : public testing::Test {
 protected:
  MaskedFolders folders_;
  MultiMaskedPath masked_ = folders_.Without({"/b", "/d"});
  EntryPtr stranger_ = APath().With(Folder("/b")).Build()->EntryAt("/b");
};

TEST_F(MultiMaskedPathEntries, AreMaskedWithTheirMainEntry) {
  for (const char* const location : {"/b", "/b/@Cls", "/d", "/d/@Cls"}) {
    EXPECT_TRUE(masked_.IsMasked(*folders_.At(location))) << location;
  }
  for (const char* const location : {"/a", "/a/@Cls", "/c", "/c/@Cls"}) {
    EXPECT_FALSE(masked_.IsMasked(*folders_.At(location))) << location;
  }
}

TEST_F(MultiMaskedPathEntries, AreMaskedAsObjectsNotByLocation) {
  EXPECT_FALSE(masked_.IsMasked(*stranger_));

  const auto twins = APath().With(Folder("/a")).With(Folder("/a")).Build();
  const EntryPtr first = twins->GetMainEntries()->at(0);
  const EntryPtr second = twins->GetMainEntries()->at(1);
  const MultiMaskedPath withoutSecond(twins, {second});
  EXPECT_FALSE(withoutSecond.IsMasked(*first));
  EXPECT_TRUE(withoutSecond.IsMasked(*second));
}

TEST_F(MultiMaskedPathEntries, AreNeverMaskedWhenTheyAreStrangers) {
  const MultiMaskedPath masked(folders_.path, {stranger_});

  EXPECT_FALSE(masked.IsMasked(*stranger_));
  EXPECT_FALSE(masked.IsEntryOnPath(*stranger_));
  EXPECT_TRUE(masked.IsEntryOnPath(*folders_.At("/b"))) << "a stranger hides nothing";
}

TEST_F(MultiMaskedPathEntries, AreAskedForTheirMainEntryOnlyWhenTheyAreOnThePath) {
  static_cast<void>(masked_.IsMasked(*stranger_));
  EXPECT_THAT(folders_.log->GetOperations(), ElementsAre("path.IsEntryOnPath"));

  folders_.log->Clear();
  const EntryPtr entry = folders_.At("/a");
  static_cast<void>(masked_.IsMasked(*entry));
  EXPECT_THAT(folders_.log->GetOperations(), ElementsAre("path.IsEntryOnPath", "path.GetMainEntryForEntry"));
  EXPECT_THAT(folders_.log->GetCalls(), Each(Field(&Call::arguments, ElementsAre(entry.get()))));
}

TEST_F(MultiMaskedPathEntries, AreOnThePathUnlessTheyAreMasked) {
  for (const char* const location : {"/b", "/b/@Cls", "/d", "/d/@Cls"}) {
    EXPECT_FALSE(masked_.IsEntryOnPath(*folders_.At(location))) << location;
  }
  for (const char* const location : {"/a", "/a/@Cls", "/c", "/c/@Cls"}) {
    EXPECT_TRUE(masked_.IsEntryOnPath(*folders_.At(location))) << location;
  }
  EXPECT_FALSE(masked_.IsEntryOnPath(*stranger_));
}

TEST_F(MultiMaskedPathEntries, TellWhereTheyBelongEvenWhenMasked) {
  EXPECT_EQ(masked_.GetMainEntryForEntry(*folders_.At("/b/@Cls")), folders_.At("/b"));
  EXPECT_EQ(masked_.GetMainEntryForEntry(*folders_.At("/b")), folders_.At("/b"));
  EXPECT_EQ(masked_.GetParentEntryForEntry(*folders_.At("/b/@Cls")), folders_.At("/b"));
  EXPECT_EQ(masked_.GetParentEntryForEntry(*folders_.At("/b")), nullptr);
  EXPECT_THAT(folders_.log->GetOperations(), ElementsAre("path.GetMainEntryForEntry", "path.GetMainEntryForEntry",
                                                         "path.GetParentEntryForEntry", "path.GetParentEntryForEntry"));
}

TEST_F(MultiMaskedPathEntries, KeepTheirOrderEvenWhenMasked) {
  const EntryPtr a = folders_.At("/a");
  const EntryPtr b = folders_.At("/b");

  EXPECT_TRUE(masked_.FirstEntryIsBeforeSecondOnPath(*a, *b));
  EXPECT_FALSE(masked_.FirstEntryIsBeforeSecondOnPath(*b, *a));
  EXPECT_TRUE(masked_.FirstEntryIsBeforeSecondOnPath(*b, *folders_.At("/d/@Cls")));
  EXPECT_FALSE(masked_.FirstEntryIsBeforeSecondOnPath(*b, *folders_.At("/b/@Cls")));
  EXPECT_THAT(folders_.log->GetOperations(), Each("path.FirstEntryIsBeforeSecondOnPath"));
  EXPECT_THAT(folders_.log->GetCalls().front().arguments, ElementsAre(a.get(), b.get()));
}

TEST_F(MultiMaskedPathEntries, AreFoundByTheirLocationUnlessTheyAreMasked) {
  const auto at = [&](const char16_t* location) {
    return masked_.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(location), kPolicy);
  };
  const auto atCanonical = [&](const char16_t* location) {
    return masked_.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(location), u"shown"));
  };

  EXPECT_EQ(at(u"file:///a"), folders_.At("/a"));
  EXPECT_EQ(at(u"file:///A/@cls"), folders_.At("/a/@Cls"));
  EXPECT_EQ(at(u"file:///b"), nullptr);
  EXPECT_EQ(at(u"file:///b/@Cls"), nullptr);
  EXPECT_EQ(at(u"file:///nowhere"), nullptr);
  EXPECT_EQ(atCanonical(u"file:///a"), folders_.At("/a"));
  EXPECT_EQ(atCanonical(u"file:///d/@Cls"), nullptr);
  EXPECT_EQ(atCanonical(u"file:///nowhere"), nullptr);
}

TEST_F(MultiMaskedPathEntries, AreLookedForByLocationWithTheVeryQuestion) {
  const AbsoluteIRI nowhere(u"file:///nowhere");

  static_cast<void>(masked_.GetPathEntryFromAbsoluteIRI(nowhere, kPolicy));
  static_cast<void>(masked_.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(nowhere, u"as typed")));

  const auto calls = folders_.log->GetCalls();
  EXPECT_THAT(folders_.log->GetOperations(),
              ElementsAre("path.GetPathEntryFromAbsoluteIRI(policy)", "path.GetPathEntryFromAbsoluteIRI(canonical)"));
  EXPECT_THAT(calls, Each(Field(&Call::location, nowhere)));
  EXPECT_EQ(calls[0].policy, kPolicy);
  EXPECT_EQ(calls[1].text, u"as typed");
}

TEST_F(MultiMaskedPathEntries, AreNotReplacedByAnotherAtTheSameLocation) {
  const auto twins = APath().With(Folder("/a")).With(Folder("/a")).Build();
  const MultiMaskedPath withoutFirst(twins, {twins->GetMainEntries()->front()});

  EXPECT_EQ(withoutFirst.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///a"), kPolicy), nullptr);
}

TEST_F(MultiMaskedPathEntries, LetFailuresOfThePathPass) {
  const EntryPtr a = folders_.At("/a");
  folders_.log->FailNext("path.IsEntryOnPath");
  EXPECT_THROW(static_cast<void>(masked_.IsMasked(*a)), InjectedFailure);
  folders_.log->FailNext("path.GetMainEntryForEntry");
  EXPECT_THROW(static_cast<void>(masked_.IsEntryOnPath(*a)), InjectedFailure);
  folders_.log->FailNext("path.GetMainEntryForEntry");
  EXPECT_THROW(static_cast<void>(masked_.GetMainEntryForEntry(*a)), InjectedFailure);
  folders_.log->FailNext("path.GetParentEntryForEntry");
  EXPECT_THROW(static_cast<void>(masked_.GetParentEntryForEntry(*a)), InjectedFailure);
  folders_.log->FailNext("path.FirstEntryIsBeforeSecondOnPath");
  EXPECT_THROW(static_cast<void>(masked_.FirstEntryIsBeforeSecondOnPath(*a, *a)), InjectedFailure);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
