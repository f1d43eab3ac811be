#pragma once

#include <cstdint>

namespace Quorvex::PathEnvironment {

/// With what rights this process reads folders: its user, its groups and its capabilities, as one number that differs
/// when they do.
[[nodiscard]] std::uint32_t RightsOfThisProcess();

}  // namespace Quorvex::PathEnvironment
