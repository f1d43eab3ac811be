// The files found: each once, where a file is its folder's location and its full name.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <support/mock_path.hpp>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using support::APath;
using support::FilesOf;
using support::Folder;
using support::InjectedFailure;
using support::MockPath;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::NiceMock;
using testing::Return;
using testing::SizeIs;

TEST(DeduplicatedPath, FindsAFileOfARepeatedFolderOnceInTheEntryThatFoundItFirst) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");

  const auto found = path.FindAllInScope(kEverything, target, kPolicy);

  EXPECT_THAT(FilesOf(found),
              ElementsAre("/a/foo.vnx", "/a/@Cls/foo.vnx", "/b/foo.vnx", "/c/foo.vnx", "/a/@New/foo.vnx"));
  EXPECT_EQ(found.front().GetPathEntry(), components.first->EntryAt("/a"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.FindAllInScope", "second.FindAllInScope"));
  EXPECT_THAT(components.log->GetCalls(), Each(GotTheSameScopeAndPolicy()));
  EXPECT_THAT(components.log->GetCalls(), Each(Field(&Call::target, &target)));
}

TEST(DeduplicatedPath, FindsWhatOnlyALaterEntryOfARepeatedFolderHolds) {
  const auto first = APath().With(Folder("/a").WithFile("foo.m")).Build();
  const auto second = APath().With(Folder("/a").WithFile("foo.m").WithFile("foo.x")).Build();
  const DeduplicatedPath path(PathPtrs{first, second});
  const std::u16string name = u"foo";
  const std::vector<std::u16string> extensions = {u".m", u".x"};

  EXPECT_THAT(FilesOf(path.FindAllInScope(kEverything, {name, extensions}, kPolicy)),
              ElementsAre("/a/foo.m", "/a/foo.x"));
}

// A component that finds given items, whatever it is asked.
class DeduplicatedPathFiles : public testing::Test {
 protected:
  FoundItem Item(const char16_t* folder, const char16_t* baseName, const char16_t* extension) const {
    return {std::make_shared<const PathItem>(PathItem{baseName, extension, AbsoluteIRI(folder)}), entry_};
  }

  static std::vector<FoundItem> FilesKeptOf(const std::vector<FoundItem>& first,
                                            const std::vector<FoundItem>& second = {}) {
    PathPtrs components;
    for (const auto& items : {first, second}) {
      const auto mock = std::make_shared<NiceMock<MockPath>>();
      ON_CALL(*mock, FindAllInScope).WillByDefault(Return(items));
      components.push_back(mock);
    }
    const DeduplicatedPath path(std::move(components));
    return path.FindAllInScope(kEverything, detail::SearchTarget::Owning(u"foo", u".vnx"),
                               FilenameMatchingPolicy::CaseInsensitive);
  }

  EntryPtr entry_ = APath().With(Folder("/a")).Build()->EntryAt("/a");
};

TEST_F(DeduplicatedPathFiles, OfOneNameInDifferentFoldersAreDifferent) {
  EXPECT_THAT(FilesKeptOf({Item(u"file:///a", u"foo", u".m")},
                          {Item(u"file:///b", u"foo", u".m"), Item(u"memory:///a", u"foo", u".m")}),
              SizeIs(3));
}

TEST_F(DeduplicatedPathFiles, AreToldApartByLetterCaseWhateverThePolicy) {
  EXPECT_THAT(FilesOf(FilesKeptOf({Item(u"file:///a", u"foo", u".m"), Item(u"file:///a", u"Foo", u".m")},
                                  {Item(u"file:///a", u"foo", u".M")})),
              ElementsAre("/a/foo.m", "/a/Foo.m", "/a/foo.M"));
}

TEST_F(DeduplicatedPathFiles, AreTheSameHoweverNameAndExtensionAreCut) {
  EXPECT_THAT(FilesKeptOf({Item(u"file:///a", u"foo", u".m")},
                          {Item(u"file:///a", u"foo.m", u""), Item(u"file:///a", u"", u"foo.m")}),
              SizeIs(1));
}

TEST_F(DeduplicatedPathFiles, AreKeptOnceWithinOneComponent) {
  EXPECT_THAT(FilesKeptOf({Item(u"file:///a", u"foo", u".m"), Item(u"file:///a", u"foo", u".m")}), SizeIs(1));
}

TEST_F(DeduplicatedPathFiles, LieWhereTheItemSaysNotWhereTheEntryIs) {
  const EntryPtr elsewhere = APath().With(Folder("/z")).Build()->EntryAt("/z");
  const FoundItem inA = Item(u"file:///a", u"foo", u".m");
  const FoundItem again(inA.GetPathItem(), elsewhere);

  EXPECT_THAT(FilesKeptOf({inA}, {again}), ElementsAre(inA));
  EXPECT_THAT(FilesKeptOf({again}, {inA}), ElementsAre(again));
}

TEST_F(DeduplicatedPathFiles, AreHandedOutWithoutSpareRoom) {
  const FoundItem foo = Item(u"file:///a", u"foo", u".m");
  const FoundItem bar = Item(u"file:///a", u"bar", u".m");
  const FoundItem baz = Item(u"file:///a", u"baz", u".m");

  EXPECT_EQ(FilesKeptOf({foo, bar, foo}, {bar, baz, foo}).capacity(), 3U);
}

TEST(DeduplicatedPath, LetsTheFailureOfASearchPass) {
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  components.log->FailNext("second.FindAllInScope");

  EXPECT_THROW(static_cast<void>(path.FindAllInScope(kEverything, target, kPolicy)), InjectedFailure);
  EXPECT_THAT(path.FindAllInScope(kEverything, target, kPolicy), SizeIs(5)) << "nothing of the failure is left";
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
