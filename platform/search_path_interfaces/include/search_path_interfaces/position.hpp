#pragma once

#include <cstdint>

namespace Quorvex::PathManagement {

/// Where added folders go on the main search path. Any value but `Beginning` means the end.
enum class Position : std::uint32_t { Beginning = 0, End = 1 };

}  // namespace Quorvex::PathManagement
