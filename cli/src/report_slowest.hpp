#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "loaded_path.hpp"
#include "shadow_pairs.hpp"
#include "timed_reading.hpp"

namespace vornixpath {

/// How long a folder took to be read, with its special subfolders.
struct FolderTime {
  NumberedFolder folder;
  std::chrono::nanoseconds time;

  friend bool operator==(const FolderTime&, const FolderTime&) = default;
};

inline constexpr std::size_t kSlowestTold = 10;

/// The folders of `path`, made by `entries`, that took longest, most first, those of equal time in path order:
/// kSlowestTold at most. Masked folders are left out.
[[nodiscard]] std::vector<FolderTime> SlowestOf(const LoadedPath& path, const TimedEntryFactory& entries);

/// "12.345 ms".
[[nodiscard]] std::string InMilliseconds(std::chrono::nanoseconds time);

[[nodiscard]] std::string SlowestHtml(const std::vector<FolderTime>& slowest);

}  // namespace vornixpath
