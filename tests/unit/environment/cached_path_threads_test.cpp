// Entries that come to life while many ask for them.

#include <gmock/gmock.h>

#include <fakes/counting_storage_provider.hpp>
#include <support/run_together.hpp>
#include <vector>

#include "toolbox_caches.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using PathManagement::support::RunTogether;

constexpr std::size_t kThreads = 8;
constexpr std::size_t kFolders = 40;

std::u16string NumberText(std::size_t number) {
  const std::string text = std::to_string(number);
  return {text.begin(), text.end()};
}

class CachedPathThreadsTest : public testing::Test {
 protected:
  CachedPathThreadsTest() {
    for (std::size_t i = 0; i < kFolders; ++i) {
      const std::u16string folder = u"/m" + NumberText(i);
      memory_.WithFiles({folder + u"/f" + NumberText(i) + u".x", folder + u"/@c" + NumberText(i) + u"/c.x"});
      folders_.push_back(InMemory(folder));
    }
    WriteCache(File(), InMemory(u"/"), folders_);
  }

  static AbsoluteIRI File() { return InMemory(u"/cache/toolbox"); }
  [[nodiscard]] MemoryStorage& Memory() { return memory_; }
  [[nodiscard]] const std::vector<AbsoluteIRI>& Folders() const { return folders_; }

  /// What one thread is given, in path order, when it begins with the folder numbered `first`.
  static std::vector<EntryPtr> AskFrom(std::size_t first, const CachedPath& path) {
    std::vector<EntryPtr> entries(2 * kFolders);
    for (std::size_t step = 0; step < kFolders; ++step) {
      const std::size_t i = (first + step) % kFolders;
      const Wanted file = Exactly(u"f" + NumberText(i) + u".x");
      const auto found = path.FindFirstInScope(kEveryKind, file.Target(), kCaseSensitive);
      if (found) entries[2 * i] = found->GetPathEntry();
      const auto classes = path.GetMethodEntriesByName(kEveryKind, u"c" + NumberText(i), kCaseSensitive);
      if (classes.size() == 1) entries[2 * i + 1] = classes.front();
    }
    return entries;
  }

 private:
  MemoryStorage memory_;
  std::vector<AbsoluteIRI> folders_;
};

TEST_F(CachedPathThreadsTest, HasOneObjectForEachEntryWhoeverAsksFirst) {
  const auto path = PathFrom(OpenCache(File()), Folders());
  std::vector<std::vector<EntryPtr>> given(kThreads);
  RunTogether(kThreads, [&](std::size_t index) { given[index] = AskFrom(index * 5, *path); });

  for (const auto& entries : given) EXPECT_EQ(entries, given[0]);
  for (std::size_t i = 0; i < kFolders; ++i) EXPECT_EQ(given[0][2 * i], path->GetMainEntries()->at(i));
  for (const EntryPtr& entry : given[0]) {
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(path->GetWhole()->IsEntryOnPath(*entry));
  }
}

TEST_F(CachedPathThreadsTest, HasOneObjectForEachEntryThoughSomeAskForAllAtOnce) {
  const auto cache = OpenCache(File());
  const auto path = PathFrom(cache, Folders());
  std::vector<std::vector<EntryPtr>> given(kThreads);
  RunTogether(kThreads, [&](std::size_t index) {
    if (index % 3 == 0) {
      given[index] = AskFrom(index * 5, *path);
    } else if (index % 3 == 1) {
      given[index] = *path->GetMainEntries();
    } else {
      for (const auto& entry : cache.GetMainEntries()) given[index].push_back(entry);
    }
  });
  for (std::size_t index = 0; index < kThreads; ++index) {
    const std::size_t step = index % 3 == 0 ? 2 : 1;
    for (std::size_t i = 0; i < kFolders; ++i) EXPECT_EQ(given[index].at(i * step), given[1].at(i));
  }
}

TEST_F(CachedPathThreadsTest, ReadsAFolderThatChangedOnceForAll) {
  Memory().WithFiles({u"/m7/late.x"});
  const auto counting = Memory().Through<CountingStorageProvider>();
  const auto path = PathFrom(OpenCache(File()), Folders());
  std::vector<EntryPtr> given(kThreads);
  RunTogether(kThreads, [&](std::size_t index) {
    const auto found = path->FindFirstInScope(kEveryKind, Exactly(u"late.x").Target(), kCaseSensitive);
    if (found) given[index] = found->GetPathEntry();
  });
  for (const EntryPtr& entry : given) {
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry, given[0]);
  }
  EXPECT_EQ(counting->GetCount(StorageOperation::List), 2U);  // of /m7 and its class folder
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
