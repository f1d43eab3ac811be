#pragma once

#include <cstddef>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <span>
#include <vector>

namespace vornixpath {

/// Compares files piece by piece, through two buffers that it keeps. Not safe from several threads.
class ContentComparison {
 public:
  /// Whether both files hold the same bytes; they are read up to the first piece that differs.
  [[nodiscard]] bool AreEqual(foundation::storage::vfs::IReadableFile& left,
                              foundation::storage::vfs::IReadableFile& right);

 private:
  std::vector<std::byte> left_;
  std::vector<std::byte> right_;
};

}  // namespace vornixpath
