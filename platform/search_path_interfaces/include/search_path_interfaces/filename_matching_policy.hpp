#pragma once

#include <cstdint>

namespace Quorvex::PathManagement {

/// How names of files and folders are compared. A value outside the list acts as `Native`.
enum class FilenameMatchingPolicy : std::uint32_t {
  CaseSensitive = 0,
  CaseInsensitive = 1,
  Native = 2,  ///< as the storage that holds the folder compares names
};

}  // namespace Quorvex::PathManagement
