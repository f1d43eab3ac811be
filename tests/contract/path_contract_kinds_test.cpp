// The kinds of paths that keep the contract: one line a kind, at the end.

#include <map_path/map_path.hpp>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/toolbox_cache_file.hpp>
#include <search_path_utilities/composite_paths.hpp>
#include <support/fake_path.hpp>
#include <unit/environment/disk_folder.hpp>
#include <unit/environment/memory_storage.hpp>
#include <utility>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using PathEnvironment::CachedPath;
using PathEnvironment::CacheTrust;
using PathEnvironment::DiskFolder;
using PathEnvironment::DistinctFolders;
using PathEnvironment::FolderEntryFactory;
using PathEnvironment::FolderPathFactory;
using PathEnvironment::MemoryStorage;
using PathEnvironment::NameComparison;
using PathEnvironment::ToolboxCache;

/// Calls `addFolder(path)` and `addFile(path)` for all that `folder`, whose own path text is `path`, holds.
template <class AddFolder, class AddFile>
void LayOut(const Folder& folder, const std::u16string& path, const AddFolder& addFolder, const AddFile& addFile) {
  addFolder(path);
  for (const std::u16string& file : folder.GetFiles()) addFile(path + u'/' + file);
  for (const Folder& inner : folder.GetSubfolders()) LayOut(inner, path + u'/' + inner.GetName(), addFolder, addFile);
}

/// Folders made up on the spot.
template <bool IgnoresCase>
class MadeUp {
 public:
  explicit MadeUp(const Content& /*content*/) {}

  [[nodiscard]] PathPtr PathOver(const Content& folders) const {
    support::APath path;
    if (IgnoresCase) path.IgnoringCase();
    for (const Folder& folder : folders) path.With(folder);
    return path.Build();
  }
};

/// Folders read from a tree in memory.
template <NameComparison Comparison>
class InMemory {
 public:
  explicit InMemory(const Content& content) {
    for (const Folder& folder : content) {
      LayOut(
          folder, folder.GetName(), [this](const std::u16string& path) { storage_.WithFolders({path}); },
          [this](const std::u16string& path) { storage_.WithFiles({path}); });
    }
  }

  [[nodiscard]] PathPtr PathOver(const Content& folders) const { return PathEnvironment::ReadPath(ListOf(folders)); }

  [[nodiscard]] std::vector<AbsoluteIRI> ListOf(const Content& folders) const {
    std::vector<AbsoluteIRI> locations;
    for (const Folder& folder : folders) locations.push_back(PathEnvironment::InMemory(folder.GetName()));
    return locations;
  }
  [[nodiscard]] static AbsoluteIRI Root() { return PathEnvironment::InMemory(u"/"); }

 private:
  MemoryStorage storage_{Comparison};
};

/// Folders read from disk.
class OnDisk {
 public:
  explicit OnDisk(const Content& content) {
    for (const Folder& folder : content) {
      LayOut(
          folder, folder.GetName(), [this](const std::u16string& path) { disk_.AddFolder(BelowRoot(path)); },
          [this](const std::u16string& path) { disk_.AddFile(BelowRoot(path)); });
    }
  }

  [[nodiscard]] PathPtr PathOver(const Content& folders) const { return PathEnvironment::ReadPath(ListOf(folders)); }

  [[nodiscard]] std::vector<AbsoluteIRI> ListOf(const Content& folders) const {
    std::vector<AbsoluteIRI> locations;
    for (const Folder& folder : folders) locations.push_back(disk_.LocationOf(BelowRoot(folder.GetName())));
    return locations;
  }
  [[nodiscard]] AbsoluteIRI Root() const { return disk_.LocationOf(); }

 private:
  static std::string BelowRoot(const std::u16string& path) { return fl::filesystem::to_bytes(path.substr(1)); }

  DiskFolder disk_;
};

/// Folders of a map.
class InAMap {
 public:
  explicit InAMap(const Content& content) {
    for (const Folder& folder : content) {
      LayOut(
          folder, folder.GetName(), [this](const std::u16string& path) { contents_[path]; },
          [this](const std::u16string& path) {
            const std::size_t cut = path.rfind(u'/');
            contents_[path.substr(0, cut)].push_back(path.substr(cut + 1));
          });
    }
  }

  [[nodiscard]] PathPtr PathOver(const Content& folders) const {
    std::vector<std::u16string> names;
    for (const Folder& folder : folders) names.push_back(folder.GetName());
    return std::make_shared<const map_path::MapPath>(names, contents_);
  }

 private:
  map_path::FolderMap contents_;
};

/// `path`, which keeps `folders` as long as it is held itself.
template <class Folders>
PathPtr Keeping(const std::shared_ptr<const Folders>& folders, PathPtr path) {
  const auto both =
      std::make_shared<const std::pair<std::shared_ptr<const Folders>, PathPtr>>(folders, std::move(path));
  return PathPtr(both, both->second.get());
}

/// One path over all folders.
template <class Folders>
PathPtr Leaf(const Content& content) {
  const auto folders = std::make_shared<const Folders>(content);
  return Keeping(folders, folders->PathOver(content));
}

/// One path over all folders, out of a cache of it.
template <class Folders, CacheTrust Trust>
PathPtr Cached(const Content& content) {
  const auto folders = std::make_shared<const Folders>(content);
  const auto storage = VornixStorageSystem::GetStorageSystemReference();
  const DistinctFolders list(folders->ListOf(content), storage);
  const AbsoluteIRI file = folders->Root().getChild(u"cache");
  {
    const FolderEntryFactory entries(storage);
    const auto path = FolderPathFactory().CreateFolderPath(list, entries);
    PathEnvironment::WriteToolboxCacheFile(file, folders->Root(), entries);
  }
  return Keeping<Folders>(folders, CachedPath::Make(ToolboxCache::Open(storage, file, Trust), content.size(),
                                                    [list](const IPathEntryFactory& entries) {
                                                      return FolderPathFactory().CreateFolderPath(list, entries);
                                                    }));
}

/// A path for each folder, and one without any after each, joined.
template <class Folders>
PathPtr Concatenated(const Content& content) {
  const auto folders = std::make_shared<const Folders>(content);
  std::vector<PathPtr> components;
  for (const Folder& folder : content) {
    components.push_back(folders->PathOver({folder}));
    components.push_back(folders->PathOver({}));
  }
  return Keeping<Folders>(folders, std::make_shared<const ConcatenatedPath>(std::move(components)));
}

/// The first folder's path and a joined one of all others, joined.
template <class Folders>
PathPtr ConcatenatedTwice(const Content& content) {
  const auto folders = std::make_shared<const Folders>(content);
  const auto middle = content.begin() + (content.empty() ? 0 : 1);
  const auto rest = std::make_shared<const ConcatenatedPath>(folders->PathOver({}),
                                                             folders->PathOver(Content(middle, content.end())));
  return Keeping<Folders>(
      folders, std::make_shared<const ConcatenatedPath>(folders->PathOver(Content(content.begin(), middle)), rest));
}

/// A path for each folder, and then one of all of them again, each location listed once.
template <class Folders>
PathPtr Deduplicated(const Content& content) {
  const auto folders = std::make_shared<const Folders>(content);
  std::vector<PathPtr> components;
  for (const Folder& folder : content) components.push_back(folders->PathOver({folder}));
  components.push_back(folders->PathOver(content));
  return Keeping<Folders>(folders, std::make_shared<const DeduplicatedPath>(std::move(components)));
}

/// The content with a folder more, which stands first and has much in common with the sample.
Content WithAnother(Content content) {
  const auto another = Folder("/masked")
                           .WithFile("foo.vnx")
                           .WithFile("secret.vnx")
                           .WithFile("late.vnx")
                           .WithClass(Folder("Cls").WithFile("method.vnx").WithFile("foo.vnx"))
                           .With(Folder("private").WithFile("secret.vnx"))
                           .WithPackage(Folder("pkg").WithFile("inner.vnx"));
  content.insert(content.begin(), another);
  return content;
}

/// `path` without its first folder.
PathPtr WithoutTheFirst(const PathPtr& path) {
  return std::make_shared<const MultiMaskedPath>(path, std::vector<EntryPtr>{path->GetMainEntries()->front()});
}

/// One path over all folders and another, which is masked.
template <class Folders>
PathPtr Masked(const Content& content) {
  const auto folders = std::make_shared<const Folders>(WithAnother(content));
  return Keeping<Folders>(folders, WithoutTheFirst(folders->PathOver(WithAnother(content))));
}

/// The same out of a cache.
template <class Folders, CacheTrust Trust>
PathPtr MaskedCached(const Content& content) {
  return WithoutTheFirst(Cached<Folders, Trust>(WithAnother(content)));
}

/// The folders of two paths, each listed once, of which one is masked.
template <class Folders>
PathPtr MaskedDeduplicated(const Content& content) {
  return WithoutTheFirst(Deduplicated<Folders>(WithAnother(content)));
}

/// Two paths over all folders and another, which is masked in each, each location listed once.
template <class Folders>
PathPtr DeduplicatedMasked(const Content& content) {
  const auto folders = std::make_shared<const Folders>(WithAnother(content));
  std::vector<PathPtr> components = {WithoutTheFirst(folders->PathOver(WithAnother(content))),
                                     WithoutTheFirst(folders->PathOver(WithAnother(content)))};
  return Keeping<Folders>(folders, std::make_shared<const DeduplicatedPath>(std::move(components)));
}

using Fake = MadeUp<false>;
using CaselessFake = MadeUp<true>;
using Memory = InMemory<NameComparison::Exact>;
using CaselessMemory = InMemory<NameComparison::IgnoreCase>;

INSTANTIATE_TEST_SUITE_P(EachKind, PathContract,
                         testing::Values(                                                         //
                             PathKind{"Fake", Leaf<Fake>},                                        //
                             PathKind{"CaselessFake", Leaf<CaselessFake>},                        //
                             PathKind{"MapPath", Leaf<InAMap>},                                   //
                             PathKind{"FolderPathInMemory", Leaf<Memory>},                        //
                             PathKind{"FolderPathInCaselessMemory", Leaf<CaselessMemory>},        //
                             PathKind{"FolderPathOnDisk", Leaf<OnDisk>},                          //
                             PathKind{"CachedPathInMemory", Cached<Memory, CacheTrust::Proven>},  //
                             PathKind{"CachedPathInCaselessMemory", Cached<CaselessMemory, CacheTrust::Proven>},
                             PathKind{"CachedPathOnDisk", Cached<OnDisk, CacheTrust::Proven>},               //
                             PathKind{"CachedPathTrustedBlindly", Cached<Memory, CacheTrust::Blind>},        //
                             PathKind{"CachedPathOnDiskTrustedBlindly", Cached<OnDisk, CacheTrust::Blind>},  //
                             PathKind{"MaskedCachedPath", MaskedCached<Memory, CacheTrust::Proven>},         //
                             PathKind{"ConcatenatedFakes", Concatenated<Fake>},                              //
                             PathKind{"ConcatenatedFolderPathsInMemory", Concatenated<Memory>},              //
                             PathKind{"ConcatenatedFolderPathsOnDisk", Concatenated<OnDisk>},                //
                             PathKind{"TwiceConcatenatedFakes", ConcatenatedTwice<Fake>},                    //
                             PathKind{"TwiceConcatenatedFolderPaths", ConcatenatedTwice<CaselessMemory>},    //
                             PathKind{"DeduplicatedFakes", Deduplicated<Fake>},                              //
                             PathKind{"DeduplicatedFolderPathsInMemory", Deduplicated<Memory>},              //
                             PathKind{"DeduplicatedFolderPathsOnDisk", Deduplicated<OnDisk>},                //
                             PathKind{"MaskedFake", Masked<Fake>},                                           //
                             PathKind{"MaskedFolderPathInMemory", Masked<Memory>},                           //
                             PathKind{"MaskedFolderPathOnDisk", Masked<OnDisk>},                             //
                             PathKind{"MaskedDeduplicatedFakes", MaskedDeduplicated<Fake>},                  //
                             PathKind{"MaskedDeduplicatedFolderPathsInMemory", MaskedDeduplicated<Memory>},  //
                             PathKind{"MaskedDeduplicatedFolderPathsOnDisk", MaskedDeduplicated<OnDisk>},    //
                             PathKind{"DeduplicatedMaskedFakes", DeduplicatedMasked<Fake>},                  //
                             PathKind{"DeduplicatedMaskedFolderPathsInMemory", DeduplicatedMasked<Memory>},  //
                             PathKind{"DeduplicatedMaskedFolderPathsOnDisk", DeduplicatedMasked<OnDisk>}),
                         [](const testing::TestParamInfo<PathKind>& kind) { return kind.param.name; });

}  // namespace
}  // namespace Quorvex::PathManagement::contract
