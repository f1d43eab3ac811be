// The versions of a saved path, each a file in one folder: `12-0123456789abcdef`, number and XXH3 of the bytes that it
// keeps. Its first line tells the edit that replaced them, the rest is the bytes as they were.
#pragma once

#include <foundation/storage/vfs/storage_provider.hpp>
#include <optional>
#include <search_path_environment/saved_path_file.hpp>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// For whoever holds the saved path's lock, but for reading.
class PathVersions {
 public:
  using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;
  using IStorageProvider = foundation::storage::vfs::IStorageProvider;

  struct Edit {
    EditKind kind;
    std::uint64_t undone;
  };

  PathVersions(const IStorageProvider& storage, const AbsoluteIRI& folder);

  /// Keeps `bytes`, which `edit` is about to replace, and drops the oldest versions beyond the number that is kept.
  /// Returns the new version's file, to be removed should the edit fail.
  [[nodiscard]] AbsoluteIRI Keep(std::string_view bytes, const Edit& edit) const;

  /// All, oldest first, but for one that an edit left which never came about: its bytes are the `current` ones.
  [[nodiscard]] std::vector<PathVersion> Read(std::string_view current) const;

 private:
  struct File {
    std::uint64_t number;
    std::uint64_t hash;
    AbsoluteIRI location;
  };

  [[nodiscard]] std::vector<File> List() const;
  [[nodiscard]] std::vector<File> ListWithoutAborted(std::string_view current) const;
  [[nodiscard]] std::optional<PathVersion> ReadVersion(const File& file) const;

  const IStorageProvider& storage_;
  AbsoluteIRI folder_;
};

}  // namespace Quorvex::PathEnvironment
