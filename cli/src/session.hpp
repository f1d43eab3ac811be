// The saved path that a command works on.
#pragma once

#include <optional>
#include <search_path_environment/saved_path_file.hpp>
#include <string>

namespace vornixpath {

/// The one in the file `name`, or the default one. Throws UsageError when the default is needed and there is none.
[[nodiscard]] Quorvex::PathEnvironment::SavedPathFile SessionFile(const std::optional<std::string>& name);

/// `$XDG_STATE_HOME/vornixpath/path`, else `$HOME/.local/state/vornixpath/path`. A variable that is no absolute path
/// counts for nothing; without any, there is no default.
[[nodiscard]] std::optional<Quorvex::PathEnvironment::SavedPathFile> DefaultSessionFile();

/// The text of VORNIX_PATH, which queries prefer to the default session. Empty counts for nothing.
[[nodiscard]] std::optional<std::string> PathVariable();

}  // namespace vornixpath
