#pragma once

// A tree of real folders that changes at random, in every way that matters to a path over some of them.

#include <cstddef>
#include <filesystem>
#include <string>
#include <support/random_source.hpp>
#include <support/temporary_folder.hpp>
#include <vector>

namespace Quorvex::PathManagement::support {

/// Main folders stand directly in the tree, deep in it, and behind links; they may be missing. Not safe from several
/// threads.
class RandomDisk {
 public:
  explicit RandomDisk(RandomSource& random);

  /// The folders for a path, in order.
  [[nodiscard]] const std::vector<std::filesystem::path>& GetMainFolders() const noexcept { return main_; }

  /// Creates, removes, renames or retargets something; whatever is not possible at the moment is left undone.
  void Change();

  /// Makes and removes so many files in one of the folders that no queue of notifications holds it all.
  void Flood(std::size_t files);

 private:
  using Path = std::filesystem::path;

  [[nodiscard]] Path RandomFolder();
  [[nodiscard]] Path RandomFile();
  [[nodiscard]] Path RandomSpecialFolder();
  void ChangeFile();
  void ChangeLinkToFile();
  void ChangeSpecialFolder();
  void ChangeLinkToSpecialFolder();
  void ChangeMainFolder();
  void ChangeAncestor();
  void ChangeLinkOnTheWay();
  void Fill(const Path& folder);

  RandomSource& random_;
  TemporaryFolder root_;
  std::vector<Path> main_;
};

}  // namespace Quorvex::PathManagement::support
