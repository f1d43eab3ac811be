#include "folder_numbers.hpp"

#include <gmock/gmock.h>

#include <unit/environment/memory_storage.hpp>

namespace vornixpath {
namespace {

using Quorvex::PathEnvironment::MemoryStorage;

TEST(FolderNumbers, CountFoldersAsThePathWasGivenRepeatsIncluded) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a", u"/b", u"/c/@Shape"}));
  const auto path = storage.Path({u"/a", u"/a", u"/b", u"/a", u"/b", u"/c"});
  const auto main = path->GetMainEntries();

  const FolderNumbers numbers(*path);

  EXPECT_EQ(numbers.NumberOf(*main->at(0)), 1U);
  EXPECT_EQ(numbers.NumberOf(*main->at(1)), 3U);
  EXPECT_EQ(numbers.NumberOf(*main->at(2)), 6U);
}

TEST(FolderNumbers, GiveASpecialFolderTheNumberOfItsFolderOfThePath) {
  const MemoryStorage storage = std::move(MemoryStorage().WithFolders({u"/a", u"/b/+pkg/@Shape/private"}));
  const auto path = storage.Path({u"/a", u"/b"});

  const FolderNumbers numbers(*path);

  for (const auto& entry : path->GetMethodEntries()) EXPECT_EQ(numbers.NumberOf(*entry), 2U);
}

}  // namespace
}  // namespace vornixpath
