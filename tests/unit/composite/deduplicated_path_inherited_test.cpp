// What needs no care for repetitions, because the first component that has an answer gives it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using support::APath;
using support::FileOf;
using support::Folder;
using testing::ElementsAre;

class DeduplicatedPathInherited : public testing::Test {
 protected:
  bool IsBefore(const EntryPtr& first, const EntryPtr& second) const {
    return path_.FirstEntryIsBeforeSecondOnPath(*first, *second);
  }

  RepeatedComponents components_;
  DeduplicatedPath path_{components_.Both()};
  EntryPtr b_ = components_.first->EntryAt("/b");
  EntryPtr c_ = components_.second->EntryAt("/c");
  EntryPtr hidden_ = components_.second->EntryAt("/a");
  EntryPtr hiddenClass_ = components_.second->EntryAt("/a/@Cls");
};

TEST_F(DeduplicatedPathInherited, HoldsEntriesThatAreHiddenAsRepetitions) {
  EXPECT_TRUE(path_.IsEntryOnPath(*hidden_));
  EXPECT_TRUE(path_.IsEntryOnPath(*hiddenClass_));

  static_cast<void>(path_.GetMainEntries());
  EXPECT_TRUE(path_.IsEntryOnPath(*hidden_));
}

TEST_F(DeduplicatedPathInherited, PlacesAHiddenEntryByTheComponentThatHoldsIt) {
  EXPECT_TRUE(IsBefore(b_, hidden_)) << "though its location is listed before /b";
  EXPECT_FALSE(IsBefore(hidden_, b_));
  EXPECT_TRUE(IsBefore(c_, hidden_));
  EXPECT_TRUE(IsBefore(c_, hiddenClass_));
  EXPECT_FALSE(IsBefore(hidden_, hiddenClass_));
}

TEST_F(DeduplicatedPathInherited, KnowsWhereAHiddenEntryBelongs) {
  EXPECT_EQ(path_.GetMainEntryForEntry(*hiddenClass_), hidden_);
  EXPECT_EQ(path_.GetParentEntryForEntry(*hiddenClass_), hidden_);
  EXPECT_EQ(path_.GetParentEntryForEntry(*hidden_), nullptr);
}

TEST_F(DeduplicatedPathInherited, FindsAtALocationTheEntryOfTheFirstComponent) {
  EXPECT_EQ(path_.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///a"), kPolicy), components_.first->EntryAt("/a"));
  EXPECT_EQ(path_.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///a/@Cls"), u"")),
            components_.first->EntryAt("/a/@Cls"));
  EXPECT_EQ(path_.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///nowhere"), kPolicy), nullptr);
}

TEST_F(DeduplicatedPathInherited, FindsAnExactLocationBeforeAPolicyMatchOfAnEarlierComponent) {
  const auto first = APath().With(Folder("/LIB")).Build();
  const auto second = APath().With(Folder("/lib")).Build();
  const DeduplicatedPath path(PathPtrs{first, second});

  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///lib"), kPolicy), second->EntryAt("/lib"));
}

TEST_F(DeduplicatedPathInherited, FindsTheFirstMatchWithoutAskingLaterComponents) {
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");

  const auto found = path_.FindFirstInScope(kEverything, target, kPolicy);

  EXPECT_EQ(FileOf(found), "/a/foo.vnx");
  EXPECT_EQ(found->GetPathEntry(), components_.first->EntryAt("/a"));
  EXPECT_THAT(components_.log->GetOperations(), ElementsAre("first.FindFirstInScope"));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
