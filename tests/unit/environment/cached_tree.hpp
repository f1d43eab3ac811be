#pragma once

// A random tree in memory, the cache of a path over it, and the same path read from it: what the one answers the other
// must answer.

#include <gmock/gmock.h>

#include <foundation/storage/vfs/exception.hpp>
#include <memory>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <search_path_environment/toolbox_cache_file.hpp>
#include <search_path_utilities/lookup.hpp>
#include <string>
#include <support/random_source.hpp>
#include <utility>
#include <vector>

#include "memory_storage.hpp"
#include "shown.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::StorageSystemReference;
using foundation::storage::vfs::VornixStorageSystem;
using PathManagement::support::RandomSource;

inline StorageSystemReference SessionStorage() { return VornixStorageSystem::GetStorageSystemReference(); }

class CachedTree {
 public:
  CachedTree(RandomSource& random, NameComparison comparison) : random_(random), memory_(comparison) {
    const std::size_t count = 1 + random_.Below(6);
    for (std::size_t i = 0; i < count; ++i) folders_.push_back(InMemory(RandomMainFolder()));
    memory_.GetProvider().AddFolder(u"/cache");
    for (int i = 0; i < 30; ++i) ChangeSomething();
  }

  [[nodiscard]] const std::vector<AbsoluteIRI>& GetFolders() const { return folders_; }
  [[nodiscard]] MemoryStorage& GetMemory() { return memory_; }
  [[nodiscard]] static AbsoluteIRI CacheLocation() { return InMemory(u"/cache/toolbox"); }

  void WriteCache(const AbsoluteIRI& root = InMemory(u"/")) const {
    const FolderEntryFactory factory(SessionStorage());
    const auto path = FolderPathFactory().CreateFolderPath(DistinctFolders(folders_, SessionStorage()), factory);
    factory.RememberOrigin("the list");
    WriteToolboxCacheFile(CacheLocation(), root, factory);
  }

  /// The path as it is on disk now.
  [[nodiscard]] std::shared_ptr<const FolderPath> Fresh() const {
    return ReadWith(FolderEntryFactory(SessionStorage()));
  }

  /// The path with the help of the cache; null when the list has to be looked through again.
  [[nodiscard]] std::shared_ptr<const CachedPath> Cached(const ToolboxCache& cache) const {
    return Cached(cache, cache.CountFolders());
  }
  /// The same over its first `count` folders.
  [[nodiscard]] std::shared_ptr<const CachedPath> Cached(const ToolboxCache& cache, std::size_t count) const {
    return CachedPath::Make(cache, count,
                            [this](const PathManagement::IPathEntryFactory& entries) { return ReadWith(entries); });
  }

  /// The same as any path, one way or the other.
  [[nodiscard]] std::shared_ptr<const PathManagement::IPath> WithHelpOf(const ToolboxCache& cache) const {
    if (auto cached = Cached(cache)) return cached;
    return ReadWith(FolderEntryFactory(SessionStorage(), cache));
  }

  void ChangeSomething() {
    auto& memory = memory_.GetProvider();
    const std::u16string file = RandomFolder() + u"/" + RandomFile();
    try {
      switch (random_.Below(8)) {
        case 0:
          return memory.Remove(InMemory(file));
        case 1:
          return memory.Remove(InMemory(RandomFolder()));
        case 2:
          return memory.AddFolder(RandomFolder());
        case 3:
          return memory.AddLink(file, RandomFolder() + u"/" + RandomFile());
        case 4:
          return memory.AddLink(RandomFolder(), RandomFolder());
        case 5:
          return memory.Rename(InMemory(RandomFolder()), InMemory(RandomFolder()));
        default:
          return memory.AddFile(file);
      }
    } catch (const foundation::storage::vfs::Exception&) {
      return;  // it could not be done, and so nothing changed
    }
  }

  [[nodiscard]] std::u16string RandomName() const { return random_.Pick(kBaseNames); }
  [[nodiscard]] std::u16string RandomExtension() const { return random_.Pick(kExtensions); }
  [[nodiscard]] std::u16string RandomFolder() const {
    std::u16string folder = RandomMainFolder();
    while (random_.OneIn(2)) folder += u"/" + random_.Pick(kSubfolders);
    return folder;
  }

 private:
  [[nodiscard]] std::shared_ptr<const FolderPath> ReadWith(const PathManagement::IPathEntryFactory& entries) const {
    return FolderPathFactory().CreateFolderPath(DistinctFolders(folders_, SessionStorage()), entries);
  }
  [[nodiscard]] std::u16string RandomMainFolder() const { return u"/t/" + random_.Pick(kMainFolders); }
  [[nodiscard]] std::u16string RandomFile() const { return random_.Pick(kBaseNames) + random_.Pick(kExtensions); }

  // Few, so that names meet.
  inline static const std::vector<std::u16string> kMainFolders = {u"m1", u"m2", u"m3", u"m3/inner", u"m\u00E9"};
  inline static const std::vector<std::u16string> kSubfolders = {u"private", u"resources", u"@a", u"@A",
                                                                 u"+a",      u"+b",        u"c"};
  inline static const std::vector<std::u16string> kBaseNames = {u"a", u"A", u"b", u"a.b", u".h", u"\u4E00\u00DF"};
  inline static const std::vector<std::u16string> kExtensions = {u".x", u".X", u"", u".x.y"};

  RandomSource& random_;
  MemoryStorage memory_;
  std::vector<AbsoluteIRI> folders_;
};

inline std::vector<AbsoluteIRI> LocationsOf(const std::vector<EntryPtr>& entries) {
  std::vector<AbsoluteIRI> locations;
  for (const EntryPtr& entry : entries) locations.push_back(entry->GetAbsoluteIRI());
  return locations;
}

/// Asks both paths every kind of question, those that a cache answers by itself first.
inline void ExpectSameAnswers(const CachedTree& tree, const PathManagement::IPath& path, const FolderPath& fresh,
                              RandomSource& random) {
  const std::vector<FilenameMatchingPolicy> policies = {kNative, kCaseSensitive, kNative, kCaseInsensitive};
  for (int i = 0; i < 12; ++i) {
    const Wanted wanted{tree.RandomName(), random.ListOf(3, [&] { return tree.RandomExtension(); })};
    const SearchScope scope = random.OneIn(2) ? kEveryKind : Only(PathEntryType::Main);
    // The first questions leave the cache to answer by itself.
    const FilenameMatchingPolicy policy = policies.at(random.Below(i < 8 ? 2 : 4));
    SCOPED_TRACE(testing::PrintToString(wanted.name) + " with " + testing::PrintToString(wanted.extensions));
    EXPECT_EQ(Shown(path.FindFirstInScope(scope, wanted.Target(), policy)),
              Shown(fresh.FindFirstInScope(scope, wanted.Target(), policy)));
    const auto classes = path.GetMethodEntriesByName(scope, wanted.name, policy);
    EXPECT_EQ(LocationsOf(classes), LocationsOf(fresh.GetMethodEntriesByName(scope, wanted.name, policy)));
    EXPECT_EQ(Shown(FindFirstFileVisibleOnPath(path, wanted.Target(), policy)),
              Shown(FindFirstFileVisibleOnPath(fresh, wanted.Target(), policy)));
  }
  EXPECT_EQ(Walk(path), Walk(fresh));
  const auto main = path.GetMainEntries();
  const auto freshMain = fresh.GetMainEntries();
  ASSERT_EQ(main->size(), freshMain->size());
  for (std::size_t i = 0; i < main->size(); ++i) {
    EXPECT_TRUE(
        static_cast<const FolderEntry&>(*(*main)[i]).HoldsTheSameAs(static_cast<const FolderEntry&>(*(*freshMain)[i])))
        << Shown((*main)[i]);
  }
}

}  // namespace Quorvex::PathEnvironment
