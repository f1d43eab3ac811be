// The lists of entries and files, of which everything at a masked entry's position is taken.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "masked_folders.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::FilesOf;
using support::Folder;
using support::InjectedFailure;
using support::LocationsOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

class MultiMaskedPathLists : public testing::Test {
 protected:
  std::vector<Call> TakeCalls() const {
    auto calls = folders_.log->GetCalls();
    folders_.log->Clear();
    return calls;
  }

  MaskedFolders folders_;
  detail::SearchTarget target_ = detail::SearchTarget::Owning(u"foo", u".vnx");
};

TEST_F(MultiMaskedPathLists, LackTheMethodEntriesOfMaskedFolders) {
  EXPECT_THAT(LocationsOf(folders_.Without({"/c", "/a"}).GetMethodEntries()), ElementsAre("/b/@Cls", "/d/@Cls"));
}

TEST_F(MultiMaskedPathLists, LackTheMethodEntriesOfAName) {
  const auto entries = folders_.Without({"/b"}).GetMethodEntriesByName(kEverything, u"cls", kPolicy);

  EXPECT_THAT(LocationsOf(entries), ElementsAre("/a/@Cls", "/c/@Cls", "/d/@Cls"));
  const Call question = TakeCalls().front();
  EXPECT_EQ(question.operation, "path.GetMethodEntriesByName");
  EXPECT_THAT(question, GotTheSameScopeAndPolicy());
  EXPECT_EQ(question.text, u"cls");
}

TEST_F(MultiMaskedPathLists, LackWhatMatchesPartially) {
  const auto entries = folders_.Without({"/d"}).GetPartiallyMatchingEntries(kEverything, u"@CLS", kPolicy);

  EXPECT_THAT(LocationsOf(entries), ElementsAre("/a/@Cls", "/b/@Cls", "/c/@Cls"));
  const Call question = TakeCalls().front();
  EXPECT_EQ(question.operation, "path.GetPartiallyMatchingEntries");
  EXPECT_THAT(question, GotTheSameScopeAndPolicy());
  EXPECT_EQ(question.text, u"@CLS");
}

TEST_F(MultiMaskedPathLists, LackTheFilesFoundInMaskedFoldersAndTheirMethodEntries) {
  const auto found = folders_.Without({"/c", "/a"}).FindAllInScope(kEverything, target_, kPolicy);

  EXPECT_THAT(FilesOf(found), ElementsAre("/b/foo.vnx", "/b/@Cls/foo.vnx", "/d/foo.vnx", "/d/@Cls/foo.vnx"));
  const Call question = TakeCalls().front();
  EXPECT_EQ(question.operation, "path.FindAllInScope");
  EXPECT_THAT(question, GotTheSameScopeAndPolicy());
  EXPECT_EQ(question.target, &target_);
}

TEST_F(MultiMaskedPathLists, AreThePathsOwnWhenNothingIsMasked) {
  const MultiMaskedPath masked = folders_.Without({});

  EXPECT_EQ(masked.GetMethodEntries(), folders_.path->GetMethodEntries());
  EXPECT_THAT(masked.FindAllInScope(kEverything, target_, kPolicy), SizeIs(8));
  EXPECT_THAT(folders_.log->GetOperations(),
              ElementsAre("path.GetMethodEntries", "path.GetMethodEntries", "path.FindAllInScope"));
}

TEST_F(MultiMaskedPathLists, AreEmptyWhenEverythingIsMasked) {
  const MultiMaskedPath masked = folders_.Without({"/d", "/b", "/a", "/c"});

  EXPECT_THAT(masked.GetMethodEntries(), IsEmpty());
  EXPECT_THAT(masked.FindAllInScope(kEverything, target_, kPolicy), IsEmpty());
}

TEST_F(MultiMaskedPathLists, AreAskedForAnewEveryTime) {
  const MultiMaskedPath masked = folders_.Without({});

  static_cast<void>(masked.GetMethodEntries());
  static_cast<void>(masked.GetMethodEntries());

  EXPECT_THAT(folders_.log->GetOperations(), ElementsAre("path.GetMethodEntries", "path.GetMethodEntries"));
}

TEST_F(MultiMaskedPathLists, LoseTheMaskedEntryItselfAndItsMethodEntriesFromAnyListInPathOrder) {
  const MultiMaskedPath masked = folders_.Without({"/b"});

  EXPECT_THAT(LocationsOf(masked.RemoveMaskedEntries(folders_.EntriesAt({"/a", "/b", "/b/@Cls", "/c"}))),
              ElementsAre("/a", "/c"));
  EXPECT_THAT(LocationsOf(masked.RemoveMaskedEntries(folders_.EntriesAt({"/b/@Cls"}))), IsEmpty());
  EXPECT_THAT(LocationsOf(masked.RemoveMaskedEntries(folders_.EntriesAt({"/a", "/c"}))), ElementsAre("/a", "/c"));
  EXPECT_THAT(masked.RemoveMaskedEntries({}), IsEmpty());
}

TEST_F(MultiMaskedPathLists, AreHandedThroughInTheVeryVectorWhenNothingIsMasked) {
  std::vector<EntryPtr> entries = folders_.EntriesAt({"/c", "/a"});
  const EntryPtr* const elements = entries.data();

  const std::vector<EntryPtr> same = folders_.Without({}).RemoveMaskedEntries(std::move(entries));

  EXPECT_EQ(same.data(), elements);
  EXPECT_THAT(LocationsOf(same), ElementsAre("/c", "/a")) << "not even their order is looked at";
  EXPECT_THAT(folders_.log->GetOperations(), IsEmpty());
}

TEST_F(MultiMaskedPathLists, AreSearchedByTheOrderOfThePathAlone) {
  const MultiMaskedPath masked = folders_.Without({"/b"});
  const EntryPtr a = folders_.At("/a");
  const EntryPtr b = folders_.At("/b");

  static_cast<void>(masked.RemoveMaskedEntries({a}));
  static_cast<void>(masked.RemoveMaskedEntries({b}));

  // "Is it before the masked one?", and if not, "is the masked one before it?"
  const std::vector<Call> calls = TakeCalls();
  ASSERT_THAT(calls, SizeIs(3));
  EXPECT_THAT(calls, testing::Each(Field(&Call::operation, "path.FirstEntryIsBeforeSecondOnPath")));
  EXPECT_THAT(calls[0].arguments, ElementsAre(a.get(), b.get()));
  EXPECT_THAT(calls[1].arguments, ElementsAre(b.get(), b.get()));
  EXPECT_THAT(calls[2].arguments, ElementsAre(b.get(), b.get()));
}

TEST_F(MultiMaskedPathLists, LoseNothingToAStranger) {
  const EntryPtr stranger = APath().With(Folder("/a")).Build()->EntryAt("/a");
  const MultiMaskedPath masked(folders_.path, {stranger});

  EXPECT_THAT(masked.GetMethodEntries(), SizeIs(4));
  EXPECT_THAT(masked.FindAllInScope(kEverything, target_, kPolicy), SizeIs(8));
}

TEST_F(MultiMaskedPathLists, LoseAWholePositionToAMaskedMethodEntryThoughNothingElseDoes) {
  const MultiMaskedPath masked = folders_.Without({"/b/@Cls"});

  EXPECT_THAT(LocationsOf(masked.GetMethodEntries()), ElementsAre("/a/@Cls", "/c/@Cls", "/d/@Cls"));
  EXPECT_THAT(masked.FindAllInScope(kEverything, target_, kPolicy), SizeIs(6));
  EXPECT_THAT(*masked.GetMainEntries(), SizeIs(4));
  EXPECT_TRUE(masked.IsEntryOnPath(*folders_.At("/b/@Cls")));
}

TEST_F(MultiMaskedPathLists, LetFailuresOfThePathPass) {
  const MultiMaskedPath masked = folders_.Without({"/a"});
  for (const char* const operation :
       {"GetMethodEntries", "GetMethodEntriesByName", "GetPartiallyMatchingEntries", "FindAllInScope"}) {
    folders_.log->FailNext(std::string("path.") + operation);
  }
  EXPECT_THROW(static_cast<void>(masked.GetMethodEntries()), InjectedFailure);
  EXPECT_THROW(static_cast<void>(masked.GetMethodEntriesByName(kEverything, u"Cls", kPolicy)), InjectedFailure);
  EXPECT_THROW(static_cast<void>(masked.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy)), InjectedFailure);
  EXPECT_THROW(static_cast<void>(masked.FindAllInScope(kEverything, target_, kPolicy)), InjectedFailure);

  folders_.log->FailNext("path.FirstEntryIsBeforeSecondOnPath");
  EXPECT_THROW(static_cast<void>(masked.GetMethodEntries()), InjectedFailure);
  EXPECT_THAT(masked.GetMethodEntries(), SizeIs(3)) << "nothing of the failures is left";
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
