#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;
using support::LocationsOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NotNull;

// Sees what is inherited.
class Opened : public DeduplicatedPath {
 public:
  using DeduplicatedPath::ComponentPaths;
  using DeduplicatedPath::DeduplicatedPath;
  using DeduplicatedPath::MainEntriesCache;
};

static_assert(std::is_base_of_v<ConcatenatedPath, DeduplicatedPath>);
static_assert(sizeof(DeduplicatedPath) == sizeof(ConcatenatedPath), "it adds no members");
static_assert(!std::is_constructible_v<DeduplicatedPath, PathPtr, PathPtr>, "a list is the only way to make one");

TEST(DeduplicatedPath, TakesTheListOverAndLeavesTheArgumentEmpty) {
  const RepeatedComponents components;
  PathPtrs paths = components.Both();
  const PathPtr* const elements = paths.data();

  const Opened path(std::move(paths));

  EXPECT_THAT(paths, IsEmpty());  // NOLINT(bugprone-use-after-move): that is the promise
  EXPECT_EQ(path.ComponentPaths.data(), elements);
  EXPECT_THAT(path.ComponentPaths, ElementsAre(components.first, components.second));
}

TEST(DeduplicatedPath, AsksItsComponentsNothingUntilItIsAsked) {
  const RepeatedComponents components;

  const Opened path(components.Both());

  EXPECT_THAT(components.log->GetOperations(), IsEmpty());
  EXPECT_EQ(path.MainEntriesCache, nullptr);
}

TEST(DeduplicatedPath, RefusesANullComponentAndLeavesTheArgumentAlone) {
  PathPtrs paths = {APath().Build(), nullptr};

  EXPECT_THROW(DeduplicatedPath(std::move(paths)), std::invalid_argument);
  EXPECT_THAT(paths, ElementsAre(NotNull(), nullptr));  // NOLINT(bugprone-use-after-move): that is the promise
}

TEST(DeduplicatedPath, KeepsItsComponentsAliveAndReleasesThemAtItsEnd) {
  std::shared_ptr<const FakePath> component = APath().With(Folder("/a")).Build();
  const std::weak_ptr<const FakePath> watched = component;
  auto path = std::make_shared<const DeduplicatedPath>(PathPtrs{std::move(component)});

  EXPECT_THAT(LocationsOf(*path->GetMainEntries()), ElementsAre("/a"));
  path.reset();

  EXPECT_TRUE(watched.expired());
}

TEST(DeduplicatedPath, OfNoComponentsAnswersLikeAPathWithoutEntries) {
  const DeduplicatedPath path(PathPtrs{});
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  const auto fail = [](const EntryPtr&) {
    ADD_FAILURE() << "there is nothing to visit";
    return true;
  };

  EXPECT_FALSE(path.ForEachEntry(kEverything, fail));
  ASSERT_THAT(path.GetMainEntries(), NotNull());
  EXPECT_THAT(*path.GetMainEntries(), IsEmpty());
  EXPECT_THAT(path.GetMethodEntries(), IsEmpty());
  EXPECT_THAT(path.GetMethodEntriesByName(kEverything, u"Cls", kPolicy), IsEmpty());
  EXPECT_THAT(path.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy), IsEmpty());
  EXPECT_FALSE(path.FindFirstInScope(kEverything, target, kPolicy).has_value());
  EXPECT_THAT(path.FindAllInScope(kEverything, target, kPolicy), IsEmpty());
  EXPECT_FALSE(path.ForEachEntry(kEverything, fail));
  EXPECT_FALSE(path.ConcurrentForEachEntry(kEverything, fail));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
