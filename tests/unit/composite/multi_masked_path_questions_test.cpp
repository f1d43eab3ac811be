// How many questions of order a masked list costs: two binary searches for each mask, whatever is masked.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {
namespace {

using support::APath;
using support::Folder;

/// For one mask over a list of `length`: twice ceil(log2(length)) + 1.
std::size_t MostQuestionsPerMask(std::size_t length) {
  return length == 0 ? 0 : 2 * (static_cast<std::size_t>(std::bit_width(length - 1)) + 1);
}

/// A path of `count` folders, each with a foo.vnx and a class Cls, that tells a log what it is asked.
struct LongPath {
  explicit LongPath(std::size_t count) {
    APath folders;
    folders.Recording("path", log);
    for (std::size_t number = 0; number < count; ++number) {
      folders.With(Folder("/" + std::to_string(number)).WithFile("foo.vnx").WithClass(Folder("Cls")));
    }
    path = folders.Build();
    main = *path->GetMainEntries();
    methods = path->GetMethodEntries();
    log->Clear();
  }

  /// Since the last time.
  [[nodiscard]] std::size_t TakeOrderQuestions() const {
    const auto operations = log->GetOperations();
    log->Clear();
    return static_cast<std::size_t>(
        std::count(operations.begin(), operations.end(), "path.FirstEntryIsBeforeSecondOnPath"));
  }

  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::shared_ptr<const FakePath> path;
  std::vector<EntryPtr> main;
  std::vector<EntryPtr> methods;
};

void ExpectFewQuestions(const LongPath& path, const std::vector<EntryPtr>& masks) {
  const std::size_t most = masks.size() * MostQuestionsPerMask(path.main.size());
  const MultiMaskedPath masked(path.path, masks);
  SCOPED_TRACE(path.main.size());

  const auto kept = masked.RemoveMaskedEntries(path.main);
  EXPECT_LE(path.TakeOrderQuestions(), most);
  EXPECT_EQ(kept.size(), path.main.size() - masks.size());

  static_cast<void>(masked.GetMethodEntries());
  EXPECT_LE(path.TakeOrderQuestions(), most);

  static_cast<void>(masked.GetMethodEntriesByName(kEverything, u"Cls", kPolicy));
  EXPECT_LE(path.TakeOrderQuestions(), most);

  const auto target = detail::SearchTarget::Owning(u"foo", u".vnx");
  static_cast<void>(masked.FindAllInScope(kEverything, target, kPolicy));
  EXPECT_LE(path.TakeOrderQuestions(), most);

  static_cast<void>(masked.FindFirstInScope(kEverything, target, kPolicy));
  EXPECT_LE(path.TakeOrderQuestions(), most);
}

/// First, middle and last, as far as they are three.
std::vector<EntryPtr> EndsAndMiddleOf(const std::vector<EntryPtr>& entries) {
  if (entries.size() < 3) return entries;
  return {entries.back(), entries.front(), entries[entries.size() / 2]};
}

TEST(MultiMaskedPathQuestions, AreFewForEveryLengthUpTo200) {
  for (std::size_t length = 0; length <= 200; ++length) {
    const LongPath path(length);
    ExpectFewQuestions(path, EndsAndMiddleOf(path.main));
  }
}

TEST(MultiMaskedPathQuestions, AreFewForEveryPlaceOfTheMask) {
  const LongPath path(40);

  for (const EntryPtr& mask : path.main) ExpectFewQuestions(path, {mask});
}

TEST(MultiMaskedPathQuestions, AreFewForLongLists) {
  for (const std::size_t length : {1023U, 1024U, 1025U, 5000U}) {
    const LongPath path(length);
    ExpectFewQuestions(path, EndsAndMiddleOf(path.main));
  }
}

TEST(MultiMaskedPathQuestions, AreFewWhenAllOfALongListIsMaskedAtOnce) {
  Folder folder("/a");
  for (int number = 0; number < 1000; ++number) folder.WithClass(Folder("C" + std::to_string(number)));
  const auto log = std::make_shared<CallLog>();
  const auto path = APath().Recording("path", log).With(folder).Build();
  const MultiMaskedPath masked(path, {path->EntryAt("/a")});

  EXPECT_TRUE(masked.GetMethodEntries().empty());

  // One question more than those of order: the list itself.
  EXPECT_LE(log->GetOperations().size(), 1 + MostQuestionsPerMask(1000));
}

TEST(MultiMaskedPathQuestions, AreNotAskedForMainEntriesAtAll) {
  const LongPath path(100);
  const MultiMaskedPath masked(path.path, EndsAndMiddleOf(path.main));

  EXPECT_EQ(masked.GetMainEntries()->size(), 97U);

  EXPECT_THAT(path.log->GetOperations(), testing::ElementsAre("path.GetMainEntries"));
}

}  // namespace
}  // namespace Quorvex::PathManagement::composite_tests
