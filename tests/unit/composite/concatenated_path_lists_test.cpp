// The operations that give lists: each is the concatenation of what the components give, made anew on every call.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/mock_path.hpp>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::FilesOf;
using support::Folder;
using support::InjectedFailure;
using support::LocationsOf;
using support::MockPath;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::NiceMock;
using testing::Return;

TEST(ConcatenatedPath, ListsTheMethodEntriesOfEachComponentInOrder) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  const auto entries = path.GetMethodEntries();

  EXPECT_THAT(LocationsOf(entries), ElementsAre("/a/@Cls", "/c/@Cls"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetMethodEntries", "second.GetMethodEntries"));
}

TEST(ConcatenatedPath, ListsTheMethodEntriesOfAName) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  const auto entries = path.GetMethodEntriesByName(kEverything, u"cls", kPolicy);

  EXPECT_THAT(LocationsOf(entries), ElementsAre("/a/@Cls", "/c/@Cls"));
  const auto calls = components.log->GetCalls();
  EXPECT_THAT(components.log->GetOperations(),
              ElementsAre("first.GetMethodEntriesByName", "second.GetMethodEntriesByName"));
  EXPECT_THAT(calls, Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(calls, Each(Field(&Call::text, u"cls")));
}

TEST(ConcatenatedPath, ListsPartiallyMatchingEntries) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  const auto entries = path.GetPartiallyMatchingEntries(kEverything, u"@cls", kPolicy);

  EXPECT_THAT(LocationsOf(entries), ElementsAre("/a/@Cls", "/c/@Cls"));
  const auto calls = components.log->GetCalls();
  EXPECT_THAT(components.log->GetOperations(),
              ElementsAre("first.GetPartiallyMatchingEntries", "second.GetPartiallyMatchingEntries"));
  EXPECT_THAT(calls, Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(calls, Each(Field(&Call::text, u"@cls")));
}

TEST(ConcatenatedPath, FindsAllMatchesOfEachComponentInOrder) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");

  const auto found = path.FindAllInScope(kEverything, target, kPolicy);

  EXPECT_THAT(FilesOf(found),
              ElementsAre("/a/foo.vnx", "/a/@Cls/foo.vnx", "/b/foo.vnx", "/c/foo.vnx", "/c/@Cls/foo.vnx"));
  const auto calls = components.log->GetCalls();
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.FindAllInScope", "second.FindAllInScope"));
  EXPECT_THAT(calls, Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(calls, Each(Field(&Call::target, &target)));
}

TEST(ConcatenatedPath, KeepsEntriesThatSeveralComponentsList) {
  const auto path = APath().With(Folder("/a").WithClass(Folder("Cls"))).Build();

  const ConcatenatedPath twice(path, path);

  EXPECT_THAT(LocationsOf(twice.GetMethodEntries()), ElementsAre("/a/@Cls", "/a/@Cls"));
}

TEST(ConcatenatedPath, AsksItsComponentsAnewForEveryListButThatOfMainEntries) {
  const auto mock = std::make_shared<NiceMock<MockPath>>();
  const auto entry = APath().With(Folder("/a").WithClass(Folder("Cls"))).Build()->EntryAt("/a/@Cls");
  const ConcatenatedPath path(PathPtrs{mock});

  EXPECT_CALL(*mock, GetMethodEntries).WillOnce(Return(MockPath::Entries{})).WillOnce(Return(MockPath::Entries{entry}));

  EXPECT_THAT(path.GetMethodEntries(), ElementsAre());
  EXPECT_THAT(path.GetMethodEntries(), ElementsAre(entry));
}

// Lists of three and of two, each with spare room.
class ConcatenatedPathCapacity : public testing::Test {
 protected:
  template <class T>
  static std::vector<T> Roomy(std::size_t size, const T& value) {
    std::vector<T> list(size, value);
    list.reserve(100);
    return list;
  }

  template <class T>
  static void ExpectFiveWithoutSpareRoom(const std::vector<T>& list) {
    EXPECT_EQ(list.size(), 5U);
    EXPECT_EQ(list.capacity(), 5U);
  }

  ConcatenatedPathCapacity() {
    for (const auto& [mock, size] : {std::pair{first_, 3U}, std::pair{second_, 2U}}) {
      const auto entries = Roomy<EntryPtr>(size, entry_);
      const auto found = Roomy<FoundItem>(size, FoundItem(nullptr, entry_));
      ON_CALL(*mock, GetMainEntries).WillByDefault([entries] { return std::make_shared<MockPath::Entries>(entries); });
      ON_CALL(*mock, GetMethodEntries).WillByDefault(Return(entries));
      ON_CALL(*mock, GetMethodEntriesByName).WillByDefault(Return(entries));
      ON_CALL(*mock, GetPartiallyMatchingEntries).WillByDefault(Return(entries));
      ON_CALL(*mock, FindAllInScope).WillByDefault(Return(found));
    }
  }

  std::shared_ptr<NiceMock<MockPath>> first_ = std::make_shared<NiceMock<MockPath>>();
  std::shared_ptr<NiceMock<MockPath>> second_ = std::make_shared<NiceMock<MockPath>>();
  EntryPtr entry_ = APath().With(Folder("/a")).Build()->EntryAt("/a");
  ConcatenatedPath path_{first_, second_};
};

TEST_F(ConcatenatedPathCapacity, EveryListIsHandedOutWithoutSpareRoom) {
  const auto target = detail::SearchTarget::Owning(u"foo", u"");

  ExpectFiveWithoutSpareRoom(*path_.GetMainEntries());
  ExpectFiveWithoutSpareRoom(path_.GetMethodEntries());
  ExpectFiveWithoutSpareRoom(path_.GetMethodEntriesByName(kEverything, u"Cls", kPolicy));
  ExpectFiveWithoutSpareRoom(path_.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy));
  ExpectFiveWithoutSpareRoom(path_.FindAllInScope(kEverything, target, kPolicy));
}

TEST(ConcatenatedPath, LetsTheFailureOfAComponentPassFromEveryList) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  for (const char* const operation :
       {"GetMethodEntries", "GetMethodEntriesByName", "GetPartiallyMatchingEntries", "FindAllInScope"}) {
    components.log->FailNext(std::string("second.") + operation);
  }

  EXPECT_THROW(static_cast<void>(path.GetMethodEntries()), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.GetMethodEntriesByName(kEverything, u"Cls", kPolicy)), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy)), InjectedFailure);
  EXPECT_THROW(static_cast<void>(path.FindAllInScope(kEverything, target, kPolicy)), InjectedFailure);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
