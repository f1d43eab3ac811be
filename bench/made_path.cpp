#include "made_path.hpp"

#include <algorithm>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <map>
#include <random>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>

namespace bench {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::MemoryStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::FolderEntryFactory;
using Quorvex::PathEnvironment::FolderPathFactory;

constexpr std::size_t kOwnFiles = 90;
constexpr std::size_t kFoldersThatShare = 10;
constexpr std::size_t kFirstShared = 500'000'000;
constexpr std::size_t kFirstMissing = 900'000'000;

std::u16string Digits(std::size_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

std::u16string FolderText(std::size_t folder) { return u"/opt/toolboxes/box" + Digits(folder); }

// Adds what `folder` holds to the tree and to the lists of names.
void MakeFolder(std::size_t folder, MemoryStorageProvider& tree, MadePath& made) {
  const std::u16string text = FolderText(folder) + u'/';
  for (std::size_t file = 0; file < kOwnFiles; ++file) {
    made.names.push_back(NameOf(folder * kFilesInAFolder + file));
    tree.AddFile(text + made.names.back() + u".vnx");
  }
  const std::size_t group = folder / kFoldersThatShare;
  for (std::size_t file = kOwnFiles; file < kFilesInAFolder; ++file) {
    const std::u16string name = NameOf(kFirstShared + group * kFilesInAFolder + file);
    tree.AddFile(text + name + u".vnx");
    if (folder % kFoldersThatShare == 0) made.shadowing.push_back(name);
  }
  tree.AddFile(text + kCommonName + u".vnx");
  if (folder % kFoldersThatShare == 0) {
    const std::u16string className = u"Class" + Digits(folder);
    tree.AddFile(text + u'@' + className + u'/' + className + u".vnx");
    tree.AddFile(text + u"+pkg" + Digits(folder) + u'/' + kCommonName + u".vnx");
    made.packaged.push_back(u"pkg" + Digits(folder) + u'/' + NameOf(kFirstMissing - 1 - folder));
    tree.AddFile(text + u'+' + made.packaged.back() + u".vnx");
  }
}

MadePath Make(std::size_t folders) {
  MadePath made;
  const auto tree = std::make_shared<MemoryStorageProvider>();
  std::vector<AbsoluteIRI> locations;
  for (std::size_t folder = 0; folder < folders; ++folder) {
    MakeFolder(folder, *tree, made);
    locations.emplace_back(u"file://" + FolderText(folder));
  }
  made.names.insert(made.names.end(), made.shadowing.begin(), made.shadowing.end());

  auto counting = std::make_shared<foundation::storage::fakes::CountingStorageProvider>(tree);
  const auto mounted = VornixStorageSystem::Mount(u"file", counting);
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
  made.path = FolderPathFactory().CreateFolderPath(locations, entries);
  made.tree = tree;
  made.storage = std::move(counting);
  return made;
}

}  // namespace

std::u16string NameOf(std::size_t number) {
  const std::u16string digits = Digits(number);
  return u"f" + std::u16string(12 - digits.size(), u'_') + digits;
}

const MadePath& PathOf(std::size_t folders) {
  static std::map<std::size_t, MadePath> made;
  const auto found = made.find(folders);
  if (found != made.end()) return found->second;
  return made.emplace(folders, Make(folders)).first->second;
}

std::vector<std::u16string> Shuffled(std::vector<std::u16string> names) {
  std::shuffle(names.begin(), names.end(), std::mt19937_64(2021));  // NOLINT(cert-msc32-c,cert-msc51-cpp): repeatable
  return names;
}

std::vector<std::u16string> MissingNames(std::size_t count) {
  std::vector<std::u16string> names;
  names.reserve(count);
  for (std::size_t number = 0; number < count; ++number) names.push_back(NameOf(kFirstMissing + number));
  return names;
}

}  // namespace bench
