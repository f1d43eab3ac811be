// The entry at a location: an exact one anywhere comes before one that only the policy finds.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using support::APath;
using support::Folder;
using support::InjectedFailure;
using testing::ElementsAre;
using testing::Field;
using testing::SizeIs;

TEST(ConcatenatedPath, FindsTheExactLocationOfALaterComponentBeforeAPolicyMatchOfAnEarlierOne) {
  const auto first = APath().With(Folder("/LIB")).Build();
  const auto second = APath().With(Folder("/lib")).Build();
  const ConcatenatedPath path(first, second);

  const auto entry =
      path.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///lib"), FilenameMatchingPolicy::CaseInsensitive);

  EXPECT_EQ(entry, second->EntryAt("/lib"));
}

TEST(ConcatenatedPath, FindsTheFirstPolicyMatchWhenNoLocationIsExact) {
  const auto first = APath().With(Folder("/LIB")).Build();
  const auto second = APath().With(Folder("/Lib")).Build();
  const ConcatenatedPath path(first, second);
  const AbsoluteIRI location(u"file:///lib");

  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(location, FilenameMatchingPolicy::CaseInsensitive),
            first->EntryAt("/LIB"));
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(location, FilenameMatchingPolicy::CaseSensitive), nullptr);
}

TEST(ConcatenatedPath, AsksEveryComponentForTheExactLocationThenEachUnderThePolicy) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  const AbsoluteIRI location(u"file:///nowhere");

  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(location, kPolicy), nullptr);

  const auto calls = components.log->GetCalls();
  ASSERT_THAT(calls, SizeIs(4));
  EXPECT_THAT(
      components.log->GetOperations(),
      ElementsAre("first.GetPathEntryFromAbsoluteIRI(canonical)", "second.GetPathEntryFromAbsoluteIRI(canonical)",
                  "first.GetPathEntryFromAbsoluteIRI(policy)", "second.GetPathEntryFromAbsoluteIRI(policy)"));
  EXPECT_THAT(calls, testing::Each(Field(&Call::location, location)));
  EXPECT_EQ(calls[0].text, u"") << "the canonical location is made with an empty second text";
  EXPECT_EQ(calls[2].policy, kPolicy);
  EXPECT_EQ(calls[3].policy, kPolicy);
}

TEST(ConcatenatedPath, StopsAskingAtTheFirstEntryFound) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///b"), kPolicy), components.At("/b"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetPathEntryFromAbsoluteIRI(canonical)"));

  components.log->Clear();
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(AbsoluteIRI(u"file:///B"), kPolicy), components.At("/b"));
  EXPECT_THAT(components.log->GetOperations(), ElementsAre("first.GetPathEntryFromAbsoluteIRI(canonical)",
                                                           "second.GetPathEntryFromAbsoluteIRI(canonical)",
                                                           "first.GetPathEntryFromAbsoluteIRI(policy)"));
}

TEST(ConcatenatedPath, FindsCanonicalLocationsInTheFirstComponentThatHasThem) {
  const auto first = APath().With(Folder("/a")).Build();
  const auto second = APath().With(Folder("/a")).With(Folder("/b")).Build();
  const ConcatenatedPath path(first, second);

  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///a"), u"")),
            first->EntryAt("/a"));
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///b"), u"")),
            second->EntryAt("/b"));
  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///c"), u"")), nullptr);
}

TEST(ConcatenatedPath, PassesACanonicalLocationOnWithItsShownText) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);

  static_cast<void>(path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///x"), u"as typed")));

  EXPECT_THAT(components.log->GetCalls(), testing::Each(Field(&Call::text, u"as typed")));
  EXPECT_THAT(components.log->GetCalls(), SizeIs(2));
}

// A derived path with its own idea of canonical locations.
class Overriding : public ConcatenatedPath {
 public:
  Overriding(const std::shared_ptr<const IPath>& component, EntryPtr answer)
      : ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>{component}), answer_(std::move(answer)) {}

  using ConcatenatedPath::GetPathEntryFromAbsoluteIRI;
  EntryPtr GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const override {
    asked_ = location.getAbsoluteIRI();
    return answer_;
  }

  mutable std::optional<AbsoluteIRI> asked_;

 private:
  EntryPtr answer_;
};

TEST(ConcatenatedPath, LooksForTheExactLocationThroughADerivedPathsOwnLookup) {
  const RecordedComponents components;
  const Overriding path(components.first, components.At("/c"));
  const AbsoluteIRI location(u"file:///a");

  EXPECT_EQ(path.GetPathEntryFromAbsoluteIRI(location, kPolicy), components.At("/c"));
  EXPECT_EQ(path.asked_, location);
  EXPECT_THAT(components.log->GetOperations(), testing::IsEmpty());
}

TEST(ConcatenatedPath, LetsTheFailureOfALookupByLocationPass) {
  const RecordedComponents components;
  const ConcatenatedPath path(components.first, components.second);
  const AbsoluteIRI location(u"file:///nowhere");

  components.log->FailNext("second.GetPathEntryFromAbsoluteIRI(canonical)");
  EXPECT_THROW(static_cast<void>(path.GetPathEntryFromAbsoluteIRI(location, kPolicy)), InjectedFailure);

  components.log->FailNext("second.GetPathEntryFromAbsoluteIRI(policy)");
  EXPECT_THROW(static_cast<void>(path.GetPathEntryFromAbsoluteIRI(location, kPolicy)), InjectedFailure);
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
