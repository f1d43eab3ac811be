// Masked paths against lists that are copied and looked through: every selection and order of masks on all small paths,
// then random larger ones.

#include <gtest/gtest.h>

#include <oracle/composite_paths.hpp>
#include <stdexcept>
#include <support/random_source.hpp>

#include "questions.hpp"
#include "random_components.hpp"
#include "small_paths.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using oracle::MaskedPathModel;
using support::APath;
using support::Folder;
using support::RandomSource;

void ExpectTheSameMainEntries(const MultiMaskedPath& path, const MaskedPathModel& model) {
  if (model.HasTooManyMasks()) {
    ASSERT_THROW(static_cast<void>(path.GetMainEntries()), std::length_error);
  } else {
    ASSERT_EQ(*path.GetMainEntries(), model.MainEntries());
  }
}

void ExpectTheSameLists(const MultiMaskedPath& path, const MaskedPathModel& model) {
  ASSERT_EQ(path.GetMethodEntries(), model.MethodEntries());
  for (const auto& [scope, policy] : Questions()) {
    ASSERT_EQ(path.GetMethodEntriesByName(scope, kClassName, policy),
              model.MethodEntriesByName(scope, kClassName, policy));
    ASSERT_EQ(path.GetPartiallyMatchingEntries(scope, kPartialPathname, policy),
              model.PartiallyMatchingEntries(scope, kPartialPathname, policy));
    ASSERT_EQ(Visited(path, scope), model.Walk(scope));
    ASSERT_EQ(VisitedConcurrently(path, scope), model.Walk(scope));
  }
}

void ExpectTheSameFiles(const MultiMaskedPath& path, const MaskedPathModel& model) {
  for (const auto& [scope, policy] : Questions()) {
    const oracle::Items all = model.FindAll(scope, WantedTarget(), policy);
    const auto first = path.FindFirstInScope(scope, WantedTarget(), policy);
    ASSERT_TRUE(path.FindAllInScope(scope, WantedTarget(), policy) == all);
    ASSERT_TRUE(first == model.FindFirst(scope, WantedTarget(), policy));
    ASSERT_EQ(first.has_value(), !all.empty()) << "a later item, perhaps, but never none";
  }
}

void ExpectTheSameAboutEntries(const MultiMaskedPath& path, const MaskedPathModel& model, const IPath& underlying) {
  for (const EntryPtr& entry : Visited(underlying, kEverything)) {
    const auto location = entry->GetAbsoluteIRI();
    ASSERT_EQ(path.IsMasked(*entry), model.IsMasked(*entry));
    ASSERT_EQ(path.IsEntryOnPath(*entry), model.IsOnPath(*entry));
    ASSERT_EQ(path.GetPathEntryFromAbsoluteIRI(location, kPolicy), model.EntryAt(location, kPolicy));
  }
}

void ExpectAgreement(const PathPtr& underlying, const std::vector<EntryPtr>& masked,
                     const std::vector<EntryPtr>& order) {
  const MultiMaskedPath path(underlying, masked);
  const MaskedPathModel model(underlying, masked, order);
  SCOPED_TRACE(testing::PrintToString(support::LocationsOf(masked)) + " masked of " +
               testing::PrintToString(support::LocationsOf(order)));

  ASSERT_NO_FATAL_FAILURE(ExpectTheSameMainEntries(path, model));
  ASSERT_NO_FATAL_FAILURE(ExpectTheSameLists(path, model));
  ASSERT_NO_FATAL_FAILURE(ExpectTheSameFiles(path, model));
  ASSERT_NO_FATAL_FAILURE(ExpectTheSameAboutEntries(path, model, *underlying));
}

void ExpectAgreementHoweverMasked(const PathPtr& underlying, const std::vector<EntryPtr>& order) {
  for (const auto& masked : SelectionsOf(order)) ASSERT_NO_FATAL_FAILURE(ExpectAgreement(underlying, masked, order));
}

TEST(MultiMaskedPathOracle, AgreesOnEveryLeafPathOfFourFoldersWithOrWithoutAMatch) {
  for (unsigned int bearers = 0; bearers < 16; ++bearers) {
    APath folders;
    for (unsigned int number = 0; number < 4; ++number) {
      Folder folder("/" + std::to_string(number));
      folder.WithClass(Folder("Cls"));
      if ((bearers >> number & 1U) != 0) folder.WithFile("foo.vnx").With(Folder("private").WithFile("foo.vnx"));
      folders.With(folder);
    }
    const auto path = folders.Build();

    ASSERT_NO_FATAL_FAILURE(ExpectAgreementHoweverMasked(path, *path->GetMainEntries()));
  }
}

TEST(MultiMaskedPathOracle, AgreesOnEverySmallConcatenatedPath) {
  for (const PathPtrs& components : SmallComponentLists()) {
    const std::vector<EntryPtr> order = MainEntriesOf(components);
    if (order.size() > 3) continue;
    PathPtrs taken = components;
    const auto joined = std::make_shared<const ConcatenatedPath>(std::move(taken));

    ASSERT_NO_FATAL_FAILURE(ExpectAgreementHoweverMasked(joined, order));
  }
}

TEST(MultiMaskedPathOracle, AgreesOnEverySmallDeduplicatedPathWhoseHiddenFoldersAreMaskedToo) {
  for (const PathPtrs& components : SmallComponentLists()) {
    const std::vector<EntryPtr> order = MainEntriesOf(components);
    if (order.size() > 3) continue;
    PathPtrs taken = components;
    const auto distinct = std::make_shared<const DeduplicatedPath>(std::move(taken));

    ASSERT_NO_FATAL_FAILURE(ExpectAgreementHoweverMasked(distinct, order));
  }
}

/// Up to seven of the main entries in any order, some twice, and strangers.
std::vector<EntryPtr> RandomMasks(RandomSource& random, const std::vector<EntryPtr>& order) {
  const EntryPtr stranger = APath().With(Folder("/stranger")).Build()->EntryAt("/stranger");
  return random.ListOf(7, [&] { return order.empty() || random.OneIn(8) ? stranger : random.Pick(order); });
}

TEST(MultiMaskedPathOracle, AgreesOnRandomPathsAndMasks) {
  RandomSource random = RandomSource::OfThisRun(1401);
  SCOPED_TRACE(random.Describe());

  for (int round = 0; round < RandomSource::Rounds(100); ++round) {
    PathPtrs components = RandomComponents(random, Contents::Changing);
    const std::vector<EntryPtr> order = MainEntriesOf(components);
    const auto masked = RandomMasks(random, order);
    PathPtr path;
    if (random.OneIn(2)) {
      path = std::make_shared<const ConcatenatedPath>(std::move(components));
    } else {
      path = std::make_shared<const DeduplicatedPath>(std::move(components));
    }

    ASSERT_NO_FATAL_FAILURE(ExpectAgreement(path, masked, order));
  }
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
