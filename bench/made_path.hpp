// A path of any size over folders in memory, and the questions to ask of it.
#pragma once

#include <fakes/counting_storage_provider.hpp>
#include <memory>
#include <search_path_environment/folder_path.hpp>
#include <string>
#include <vector>

namespace bench {

inline constexpr std::size_t kFilesInAFolder = 100;

/// The base name of a file that every folder holds, and every package.
inline constexpr const char16_t* kCommonName = u"in_every_place";

/// The base name of thirteen characters that stands for `number`.
[[nodiscard]] std::u16string NameOf(std::size_t number);

/// Folders of 100 files, and one more that all have in common. Nine files of ten bear a name of their own; the tenth
/// shares its name with nine other folders. Every tenth folder has a package and a class folder.
struct MadePath {
  std::shared_ptr<const foundation::storage::vfs::IStorageProvider> tree;  ///< without the counting
  std::shared_ptr<const foundation::storage::fakes::CountingStorageProvider> storage;
  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> path;
  std::vector<std::u16string> names;      ///< of the folders' own files, every one once
  std::vector<std::u16string> shadowing;  ///< the names that several folders offer
  std::vector<std::u16string> packaged;   ///< of files in a package, whose name is pkg<number of the folder>
};

/// Made once for each number of folders.
[[nodiscard]] const MadePath& PathOf(std::size_t folders);

/// The names in random order, the same in each run.
[[nodiscard]] std::vector<std::u16string> Shuffled(std::vector<std::u16string> names);

/// `count` names that no folder offers.
[[nodiscard]] std::vector<std::u16string> MissingNames(std::size_t count);

}  // namespace bench
