#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::LocationsOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::NotNull;

// A derived path, as the deduplicated one is, sees the members.
class Opened : public ConcatenatedPath {
 public:
  using ConcatenatedPath::ComponentPaths;
  using ConcatenatedPath::ConcatenatedPath;
  using ConcatenatedPath::MainEntriesCache;
  using ConcatenatedPath::MainEntriesOnce;
};

TEST(ConcatenatedPath, TakesTheListOverAndLeavesTheArgumentEmpty) {
  const RecordedComponents components;
  PathPtrs paths = {components.first, components.second};
  const PathPtr* const elements = paths.data();

  const Opened path(std::move(paths));

  EXPECT_THAT(paths, IsEmpty());  // NOLINT(bugprone-use-after-move): that is the promise
  EXPECT_EQ(path.ComponentPaths.data(), elements);
  EXPECT_THAT(path.ComponentPaths, ElementsAre(components.first, components.second));
}

TEST(ConcatenatedPath, OfTwoPathsHoldsThemInOrderInExactlyTwoSlots) {
  const RecordedComponents components;

  const Opened path(components.first, components.second);

  EXPECT_THAT(path.ComponentPaths, ElementsAre(components.first, components.second));
  EXPECT_EQ(path.ComponentPaths.capacity(), 2U);
}

TEST(ConcatenatedPath, AsksItsComponentsNothingUntilItIsAsked) {
  const RecordedComponents components;

  const Opened path(components.first, components.second);

  EXPECT_THAT(components.log->GetOperations(), IsEmpty());
  EXPECT_EQ(path.MainEntriesCache, nullptr);
}

TEST(ConcatenatedPath, KeepsItsMembersInOrderForDerivedPaths) {
  const Opened path(PathPtrs{});

  const auto* const components = reinterpret_cast<const char*>(&path.ComponentPaths);
  const auto* const once = reinterpret_cast<const char*>(&path.MainEntriesOnce);
  const auto* const cache = reinterpret_cast<const char*>(&path.MainEntriesCache);
  EXPECT_LT(components, once);
  EXPECT_LT(once, cache);
}

TEST(ConcatenatedPath, RefusesANullComponentNamesItAndLeavesTheArgumentAlone) {
  PathPtrs paths = {APath().Build(), nullptr};

  try {
    const ConcatenatedPath path(std::move(paths));
    FAIL() << "a null component was accepted";
  } catch (const std::invalid_argument& refused) {
    EXPECT_THAT(refused.what(), AllOf(HasSubstr("component 1"), HasSubstr("null")));
  }
  EXPECT_THAT(paths, ElementsAre(NotNull(), nullptr));  // NOLINT(bugprone-use-after-move): that is the promise
}

TEST(ConcatenatedPath, OfTwoPathsRefusesEitherToBeNull) {
  const PathPtr some = APath().Build();

  EXPECT_THROW(ConcatenatedPath(some, nullptr), std::invalid_argument);
  EXPECT_THROW(ConcatenatedPath(nullptr, some), std::invalid_argument);
}

TEST(ConcatenatedPath, KeepsItsComponentsAliveAndReleasesThemAtItsEnd) {
  std::shared_ptr<const FakePath> component = APath().With(Folder("/a")).Build();
  const std::weak_ptr<const FakePath> watched = component;
  auto path = std::make_shared<const ConcatenatedPath>(PathPtrs{std::move(component)});

  EXPECT_THAT(LocationsOf(*path->GetMainEntries()), ElementsAre("/a"));
  path.reset();

  EXPECT_TRUE(watched.expired());
}

TEST(ConcatenatedPath, OfNoComponentsAnswersLikeAPathWithoutEntries) {
  const ConcatenatedPath path(PathPtrs{});
  const auto stranger = APath().With(Folder("/a")).Build()->EntryAt("/a");
  const auto location = stranger->GetAbsoluteIRI();
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  const auto fail = [](const EntryPtr&) {
    ADD_FAILURE() << "there is nothing to visit";
    return true;
  };

  ASSERT_NE(path.GetMainEntries(), nullptr);
  EXPECT_THAT(*path.GetMainEntries(), IsEmpty());
  EXPECT_THAT(path.GetMethodEntries(), IsEmpty());
  EXPECT_THAT(path.GetMethodEntriesByName(kEverything, u"Cls", kPolicy), IsEmpty());
  EXPECT_THAT(path.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy), IsEmpty());
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(location, kPolicy), nullptr);
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(foundation::storage::vfs::CanonicalAbsoluteIRI(location, u"")), nullptr);
  EXPECT_FALSE(path.FindFirstInScope(kEverything, target, kPolicy).has_value());
  EXPECT_THAT(path.FindAllInScope(kEverything, target, kPolicy), IsEmpty());
  EXPECT_FALSE(path.ForEachEntry(kEverything, fail));
  EXPECT_FALSE(path.ConcurrentForEachEntry(kEverything, fail));
  EXPECT_FALSE(path.IsEntryOnPath(*stranger));
  EXPECT_FALSE(path.FirstEntryIsBeforeSecondOnPath(*stranger, *stranger));
}

TEST(ConcatenatedPath, CanItselfBeAComponent) {
  const RecordedComponents components;
  const auto inner = std::make_shared<const ConcatenatedPath>(components.second, components.first);

  const ConcatenatedPath path(inner, components.second);

  EXPECT_THAT(LocationsOf(*path.GetMainEntries()), ElementsAre("/c", "/a", "/b", "/c"));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
