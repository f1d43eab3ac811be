// Points in time as text, such as 2026-11-21T10:00:00Z (RFC 3339, UTC, whole seconds).
#pragma once

#include <chrono>
#include <optional>
#include <search_path_environment/export.hpp>
#include <string>

namespace Quorvex::PathEnvironment {

/// Any thread.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::string ToText(std::chrono::sys_seconds time);
/// Nothing when `text` is no such text.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::optional<std::chrono::sys_seconds> TimeFromText(
    const std::string& text);

}  // namespace Quorvex::PathEnvironment
