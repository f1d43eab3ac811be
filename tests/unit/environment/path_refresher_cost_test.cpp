// What a refresh asks of memory, and what is left when memory ends in the middle of it.

#include <gmock/gmock.h>

#include <search_path_environment/path_refresher.hpp>
#include <support/allocations.hpp>

#include "announced.hpp"
#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::support::Allocations;

std::u16string Numbered(std::size_t number) {
  const std::string digits = std::to_string(number);
  return u"/d" + std::u16string(digits.begin(), digits.end());
}

// The bytes that refreshing asks for, on average, when one file has come in one of so many folders.
std::size_t CostOfARefresh(std::size_t length) {
  constexpr std::size_t changes = 100;
  SessionEvents()->dispatch();
  MemoryStorage storage;
  std::vector<std::u16string> folders;
  for (std::size_t number = 0; number < length; ++number) {
    folders.push_back(Numbered(number));
    storage.WithFiles({folders.back() + u"/+p/f.x"});
  }
  PathRefresher refresher(storage.Path(folders), VornixStorageSystem::GetStorageSystemReference());

  std::size_t bytes = 0;
  for (std::size_t change = 0; change < changes; ++change) {
    const std::u16string folder = Numbered(change * 7919 % length);
    storage.WithFiles({folder + u"/+p" + Numbered(change) + u".x"});
    Announce(InMemory(folder + u"/+p"));
    SessionEvents()->dispatch();
    const Allocations allocations;
    EXPECT_EQ(refresher.Refresh().changed.size(), 1U);
    bytes += allocations.GetBytes();
  }
  return bytes / changes;
}

TEST(RefreshingAPath, CostsAsMuchOnALongPathAsOnAShortOne) {
  const std::size_t onShort = CostOfARefresh(400);
  const std::size_t onLong = CostOfARefresh(4'000);

  std::cout << "bytes a refresh: " << onShort << " on 400 folders, " << onLong << " on 4000\n";
  EXPECT_LT(2 * onLong, 3 * onShort);
}

TEST(RefreshingAPath, ForgetsNoAnnouncementWhereverMemoryEnds) {
  SessionEvents()->dispatch();
  MemoryStorage storage;
  storage.WithFiles({u"/a/+p/f.x", u"/b/f.x"});
  const auto path = storage.Path({u"/a", u"/b"});

  bool isThrough = false;
  for (std::size_t successes = 0; !isThrough; ++successes) {
    PathRefresher refresher(path, VornixStorageSystem::GetStorageSystemReference());
    storage.WithFiles({u"/a/+p/+new/new.x", u"/b/new.x"});
    Announce(InMemory(u"/a/+p"));
    Announce(InMemory(u"/b"));
    SessionEvents()->dispatch();
    try {
      const Allocations allocations(successes);
      static_cast<void>(refresher.Refresh());
      isThrough = true;
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(refresher.GetPath(), path);
    }
    static_cast<void>(refresher.Refresh());
    for (const auto& entry : *refresher.GetPath()->GetMainEntries()) {
      const auto fresh = ReadEntry(entry->GetAbsoluteIRI());
      ASSERT_TRUE(fresh->HoldsTheSameAs(static_cast<const FolderEntry&>(*entry))) << successes << Shown(entry);
    }
    storage.GetProvider().Remove(InMemory(u"/a/+p/+new/new.x"));
    storage.GetProvider().Remove(InMemory(u"/a/+p/+new"));
    storage.GetProvider().Remove(InMemory(u"/b/new.x"));
  }
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
