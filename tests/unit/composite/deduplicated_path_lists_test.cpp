// The lists of entries: each location once, where it appears first.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/mock_path.hpp>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::InjectedFailure;
using support::LocationsOf;
using support::MockPath;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::NiceMock;
using testing::Return;

TEST(DeduplicatedPath, ListsAFolderOfTwoComponentsOnceWithTheEntryOfTheFirst) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());

  EXPECT_THAT(*path.GetMainEntries(), ElementsAre(components.first->EntryAt("/a"), components.first->EntryAt("/b"),
                                                  components.second->EntryAt("/c")));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMainEntries", "second.GetMainEntries"));
}

TEST(DeduplicatedPath, ListsAFolderThatOneComponentRepeatsOnce) {
  const auto component = APath().With(Folder("/a")).With(Folder("/b")).With(Folder("/a")).Build();
  const DeduplicatedPath path(PathPtrs{component});

  const auto entries = path.GetMainEntries();

  EXPECT_THAT(LocationsOf(*entries), ElementsAre("/a", "/b"));
  EXPECT_EQ(entries->front(), component->EntryAt("/a"));
}

TEST(DeduplicatedPath, ListsTheMethodEntriesOfARepeatedFolderThatItsFirstAppearanceLacks) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());

  EXPECT_THAT(path.GetMethodEntries(),
              ElementsAre(components.first->EntryAt("/a/@Cls"), components.second->EntryAt("/a/@New")));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMethodEntries", "second.GetMethodEntries"));
}

TEST(DeduplicatedPath, ListsAMethodEntryThatOneComponentRepeatsOnce) {
  const auto component =
      APath().With(Folder("/a").WithClass(Folder("Cls"))).With(Folder("/a").WithClass(Folder("Cls"))).Build();
  const DeduplicatedPath path(PathPtrs{component});

  EXPECT_THAT(path.GetMethodEntries(), ElementsAre(component->EntryAt("/a/@Cls")));
}

TEST(DeduplicatedPath, ListsTheMethodEntriesOfANameOnce) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());

  const auto entries = path.GetMethodEntriesByName(kEverything, u"cls", kPolicy);

  EXPECT_THAT(entries, ElementsAre(components.first->EntryAt("/a/@Cls")));
  EXPECT_THAT(components.log->GetOperations(),
              ElementsAre("first.GetMethodEntriesByName", "second.GetMethodEntriesByName"));
  EXPECT_THAT(components.log->GetCalls(), Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(components.log->GetCalls(), Each(Field(&Call::text, u"cls")));
}

TEST(DeduplicatedPath, ListsPartiallyMatchingEntriesOnce) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());

  const auto entries = path.GetPartiallyMatchingEntries(kEverything, u"A", kPolicy);

  EXPECT_THAT(entries, ElementsAre(components.first->EntryAt("/a")));
  EXPECT_THAT(components.log->GetOperations(),
              ElementsAre("first.GetPartiallyMatchingEntries", "second.GetPartiallyMatchingEntries"));
  EXPECT_THAT(components.log->GetCalls(), Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(components.log->GetCalls(), Each(Field(&Call::text, u"A")));
}

TEST(DeduplicatedPath, TellsLocationsApartByTheirIdentifierAlone) {
  const auto exact = APath().With(Folder("/a")).Build();
  const auto otherCase = APath().IgnoringCase().With(Folder("/A")).Build();
  const auto otherScheme = APath().Under(u"memory").With(Folder("/a")).Build();
  const DeduplicatedPath path(PathPtrs{exact, otherCase, otherScheme});

  EXPECT_THAT(*path.GetMainEntries(),
              ElementsAre(exact->EntryAt("/a"), otherCase->EntryAt("/A"), otherScheme->EntryAt("/a")));
}

TEST(DeduplicatedPath, ForgetsWhatItSawWhenAListIsDone) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());

  const auto once = path.GetMethodEntries();
  const auto again = path.GetMethodEntries();

  EXPECT_EQ(LocationsOf(once), LocationsOf(again));
}

TEST(DeduplicatedPath, AsksItsComponentsAnewForEveryListButThatOfMainEntries) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  const auto entry = APath().With(Folder("/a").WithClass(Folder("Cls"))).Build()->EntryAt("/a/@Cls");
  const DeduplicatedPath path(PathPtrs{mock});

  EXPECT_CALL(*mock, GetMethodEntries).WillOnce(Return(MockPath::Entries{})).WillOnce(Return(MockPath::Entries{entry}));

  EXPECT_THAT(path.GetMethodEntries(), ElementsAre());
  EXPECT_THAT(path.GetMethodEntries(), ElementsAre(entry));
}

TEST(DeduplicatedPath, LetsTheFailureOfAComponentPassFromEveryList) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());
  for (const char* const operation : {"GetMethodEntries", "GetMethodEntriesByName", "GetPartiallyMatchingEntries"}) {
    components.log->FailNext(std::string("second.") + operation);
  }

  EXPECT_THROW(static_cast<void>(path.GetMethodEntries()), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.GetMethodEntriesByName(kEverything, u"Cls", kPolicy)), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy)), InjectedFailure);
}

// Lists of twice the same three entries, each with spare room. A vector that grows by itself has room for four.
TEST(DeduplicatedPath, HandsEveryListOutWithoutSpareRoom) {
  const auto source = APath().With(Folder("/a")).With(Folder("/b")).With(Folder("/c")).Build();
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  MockPath::Entries entries = {source->EntryAt("/a"), source->EntryAt("/b"), source->EntryAt("/c")};
  entries.reserve(100);
  ON_CALL(*mock, GetMainEntries).WillByDefault([&] { return std::make_shared<MockPath::Entries>(entries); });
  ON_CALL(*mock, GetMethodEntries).WillByDefault(Return(entries));
  ON_CALL(*mock, GetMethodEntriesByName).WillByDefault(Return(entries));
  ON_CALL(*mock, GetPartiallyMatchingEntries).WillByDefault(Return(entries));
  const DeduplicatedPath path(PathPtrs{mock, mock});

  EXPECT_EQ(path.GetMainEntries()->capacity(), 3U);
  EXPECT_EQ(path.GetMethodEntries().capacity(), 3U);
  EXPECT_EQ(path.GetMethodEntriesByName(kEverything, u"Cls", kPolicy).capacity(), 3U);
  EXPECT_EQ(path.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy).capacity(), 3U);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
