// The logger is there for whoever looks for it, and silent.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fakes/recording_log.hpp>
#include <foundation/log/diagnostic_logger.hpp>

#include "repeated_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using testing::IsEmpty;

TEST(DeduplicatedPathLogger, IsThereFromTheStart) {
  const auto* const logger = foundation::log::FindDiagnosticLogger("searchpath::utilities::deduplicatedpath");

  ASSERT_NE(logger, nullptr);
  EXPECT_EQ(logger->GetName(), "searchpath::utilities::deduplicatedpath");
}

TEST(DeduplicatedPathLogger, HearsNothingOfWhatIsDropped) {
  const foundation::storage::fakes::RecordingLog log;
  const RepeatedComponents components;
  const DeduplicatedPath path(components.Both());
  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  const auto goOn = [](const EntryPtr&) { return false; };

  path.ForEachEntry(kEverything, goOn);
  ASSERT_EQ(path.GetMainEntries()->size(), 3U);
  path.ForEachEntry(kEverything, goOn);
  path.ConcurrentForEachEntry(kEverything, goOn);
  static_cast<void>(path.GetMethodEntries());
  static_cast<void>(path.GetMethodEntriesByName(kEverything, u"Cls", kPolicy));
  static_cast<void>(path.GetPartiallyMatchingEntries(kEverything, u"a", kPolicy));
  static_cast<void>(path.FindAllInScope(kEverything, target, kPolicy));

  EXPECT_THAT(log.GetRecords(), IsEmpty());
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
