// Folders on disk for the benchmarks that load.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <vector>

namespace bench {

inline constexpr std::size_t kRealFolders = 10'000;
inline constexpr std::size_t kRealFiles = 100;

/// The folders, 10,000 with 100 empty files of thirteen characters and an extension each. They are made once, which
/// takes a minute, under the folder that SPU_BENCH_TREE names, by default one for temporary files, and stay there.
[[nodiscard]] const std::vector<std::string>& RealFolders();
[[nodiscard]] std::vector<foundation::storage::vfs::AbsoluteIRI> RealLocations();

/// `count` empty folders in one, below the same place.
[[nodiscard]] std::vector<std::string> EmptyFolders(std::size_t count);

}  // namespace bench
