// Which entries a comparison asks for their method entries: each once, and in which order.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "logged_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {
namespace {

using support::CallLog;
using testing::ElementsAreArray;
using testing::IsEmpty;

std::vector<std::string> AllCallsOf(const std::vector<std::string>& names) {
  std::vector<std::string> calls;
  for (const std::string& name : names) {
    for (const auto* operation : {"GetPrivateEntry", "GetSecondSingleEntry", "GetFirstEntryGroup",
                                  "GetSecondEntryGroup", "GetThirdEntryGroup"}) {
      calls.push_back(name + ' ' + operation);
    }
  }
  return calls;
}

TEST(ComparisonWithMethodEntries, AsksAllOldEntriesOnceBeforeAllNewOnesByFolder) {
  const auto log = std::make_shared<CallLog>();
  const EntryPtr kept = ALoggedEntry("kept", "kept", log);
  const EntryPtr moved = ALoggedEntry("moved", "moved", log);
  const EntryPtr oldB = ALoggedEntry("b", "old b", log);
  const EntryPtr oldC = ALoggedEntry("c", "old c", log);
  const EntryPtr newA = ALoggedEntry("a", "new a", log);
  const EntryPtr newB = ALoggedEntry("b", "new b", log);

  ChangesOf({moved, kept, oldC, oldB}, {kept, moved, newB, newA}, ComparisonFilter::IncludeMethodEntries);

  EXPECT_THAT(log->GetOperations(), ElementsAreArray(AllCallsOf({"old b", "old c", "new a", "new b"})));
}

TEST(ComparisonWithMethodEntries, AsksALevelWhenItHasAskedTheOneAbove) {
  const auto log = std::make_shared<CallLog>();
  const auto before = ALoggedEntry("a", "old", log);
  const auto after = ALoggedEntry("a", "new", log);
  const auto gone = ALoggedEntry("b", "gone", log);
  before->privateEntry = ALoggedEntry("a/private", "old private", log);
  after->third = {ALoggedEntry("a/private", "new private", log)};
  gone->second = {ALoggedEntry("b/+pkg", "gone package", log)};

  ChangesOf({gone, before}, {after}, ComparisonFilter::IncludeMethodEntries);

  EXPECT_THAT(log->GetOperations(),
              ElementsAreArray(AllCallsOf({"old", "gone", "new", "old private", "gone package", "new private"})));
}

TEST(ComparisonWithMethodEntries, AsksAnEntryOnceForEachOccurrenceThatChanged) {
  const auto log = std::make_shared<CallLog>();
  const EntryPtr a = ALoggedEntry("a", "a", log);

  ChangesOf({a, a, a}, {a}, ComparisonFilter::IncludeMethodEntries);

  EXPECT_THAT(log->GetOperations(), ElementsAreArray(AllCallsOf({"a", "a"})));
}

TEST(ComparisonOfMainEntries, AsksForNoMethodEntries) {
  const auto log = std::make_shared<CallLog>();

  ChangesOf({ALoggedEntry("a", "old", log)}, {ALoggedEntry("a", "new", log)}, ComparisonFilter::MainEntriesOnly);

  EXPECT_THAT(log->GetOperations(), IsEmpty());
}

}  // namespace
}  // namespace Quorvex::PathManagement::diff_tests
