#include "real_tree.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fl/filesystem/text_codec.hpp>
#include <fstream>
#include <search_path_utilities/path_editing.hpp>
#include <stdexcept>

#include "made_path.hpp"

namespace bench {

namespace {

std::filesystem::path Root() {
  const char* const named = std::getenv("SPU_BENCH_TREE");  // NOLINT(concurrency-mt-unsafe): nobody sets variables
  return named != nullptr && *named != '\0' ? std::filesystem::path(named)
                                            : std::filesystem::temp_directory_path() / "spu-bench-tree";
}

void MakeTree(const std::filesystem::path& root, const std::vector<std::string>& folders) {
  std::fprintf(stderr, "making a million files below %s\n", root.c_str());
  std::size_t number = 0;
  for (const std::string& folder : folders) {
    std::filesystem::create_directories(folder);
    for (std::size_t file = 0; file < kRealFiles; ++file) {
      const std::string name = fl::filesystem::to_bytes(NameOf(number++)) + ".vnx";
      if (!std::ofstream(std::filesystem::path(folder) / name)) throw std::runtime_error("cannot make " + name);
    }
  }
  if (!std::ofstream(root / "complete")) throw std::runtime_error("cannot finish " + root.string());
}

std::vector<std::string> MakeFolders() {
  const std::filesystem::path root = Root();
  std::vector<std::string> folders;
  folders.reserve(kRealFolders);
  for (std::size_t folder = 0; folder < kRealFolders; ++folder) {
    folders.push_back((root / ("box" + std::to_string(folder))).string());
  }
  if (!std::filesystem::exists(root / "complete")) MakeTree(root, folders);
  return folders;
}

}  // namespace

std::vector<std::string> EmptyFolders(std::size_t count) {
  std::vector<std::string> folders;
  folders.reserve(count);
  for (std::size_t folder = 0; folder < count; ++folder) {
    folders.push_back((Root() / "empty" / ("folder" + std::to_string(folder))).string());
    std::filesystem::create_directories(folders.back());
  }
  return folders;
}

const std::vector<std::string>& RealFolders() {
  static const std::vector<std::string> folders = MakeFolders();
  return folders;
}

std::vector<foundation::storage::vfs::AbsoluteIRI> RealLocations() {
  std::vector<foundation::storage::vfs::AbsoluteIRI> locations;
  for (const std::string& folder : RealFolders()) {
    locations.push_back(Quorvex::PathManagement::GetIRIFromString(fl::filesystem::from_bytes(folder)));
  }
  return locations;
}

}  // namespace bench
