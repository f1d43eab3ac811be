// Comparisons that end where an entry fails to give its method entries: at each call, on either side, on two levels.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "logged_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::CallLog;
using support::InjectedFailure;
using testing::Combine;
using testing::ElementsAre;
using testing::Values;

// Something changes on each of three levels. The log knows each entry by its side and its folder: "old a/private".
class FailedMethodEntries : public testing::TestWithParam<std::tuple<std::string, std::string>> {
 protected:
  FailedMethodEntries() {
    before->privateEntry = innerBefore;
    before->first = {methodX, methodY};
    after->privateEntry = innerAfter;
    after->first = {methodY, methodX, methodAdded};
    innerBefore->third = {AnEntry("gone")};
    innerAfter->third = {AnEntry("come")};
  }

  // Until `side` fails to answer about its entry for the folder.
  Changes ChangesBeforeFailureAt(const std::string& folder) const {
    const auto& [side, operation] = GetParam();
    const std::string call = side + ' ' + folder + ' ' + operation;
    log->FailNext(call);
    PathEntryVectorDifferentiator differentiator;
    EXPECT_THROW(
        differentiator.Compare({x, y, before, removed}, {y, x, after, added}, ComparisonFilter::IncludeMethodEntries),
        InjectedFailure);
    EXPECT_EQ(log->GetOperations().back(), call);
    return Changes(differentiator);
  }

  const std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  const EntryPtr x = AnEntry("x");
  const EntryPtr y = AnEntry("y");
  const EntryPtr removed = AnEntry("removed");
  const EntryPtr added = AnEntry("added");
  const EntryPtr methodX = AnEntry("a/@X");
  const EntryPtr methodY = AnEntry("a/@Y");
  const EntryPtr methodAdded = AnEntry("a/@Added");
  const std::shared_ptr<MadeEntry> before = ALoggedEntry("a", "old a", log);
  const std::shared_ptr<MadeEntry> after = ALoggedEntry("a", "new a", log);
  const std::shared_ptr<MadeEntry> innerBefore = ALoggedEntry("a/private", "old a/private", log);
  const std::shared_ptr<MadeEntry> innerAfter = ALoggedEntry("a/private", "new a/private", log);
};

TEST_P(FailedMethodEntries, OfAMainEntryKeepAllMainEntries) {
  const Changes changes = ChangesBeforeFailureAt("a");

  EXPECT_THAT(changes.reordered, ElementsAre(x));
  EXPECT_THAT(changes.removed, ElementsAre(removed));
  EXPECT_THAT(changes.added, ElementsAre(added));
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after));
}

TEST_P(FailedMethodEntries, OfAMethodEntryKeepAllOfItsLevelAndAbove) {
  const Changes changes = ChangesBeforeFailureAt("a/private");

  EXPECT_THAT(changes.reordered, ElementsAre(x, methodX));
  EXPECT_THAT(changes.removed, ElementsAre(removed));
  EXPECT_THAT(changes.added, ElementsAre(added, methodAdded));
  EXPECT_THAT(changes.refreshedBefore, ElementsAre(before, innerBefore));
  EXPECT_THAT(changes.refreshedAfter, ElementsAre(after, innerAfter));
}

INSTANTIATE_TEST_SUITE_P(AtEachCallOnEitherSide, FailedMethodEntries,
                         Combine(Values("old", "new"),
                                 Values("GetPrivateEntry", "GetSecondSingleEntry", "GetFirstEntryGroup",
                                        "GetSecondEntryGroup", "GetThirdEntryGroup")));

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
