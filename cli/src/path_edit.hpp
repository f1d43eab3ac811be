// What the commands that change the session's path have in common.
#pragma once

#include <foundation/core/except/notification.hpp>
#include <functional>
#include <search_path_interfaces/main_search_path_manager.hpp>
#include <string>
#include <vector>

#include "command_line.hpp"
#include "exit_status.hpp"

namespace vornixpath {

/// Changes the path of a manager, all or nothing; what it returns says why it did not.
using PathEdit =
    std::function<foundation::core::except::Notification(Quorvex::PathManagement::IMainSearchPathManager&)>;

/// Does `edit` to the session's path, or under --dry-run tells what it would change and writes nothing. Warns of what
/// was in its way, and of VORNIX_PATH, which hides the session's path from queries.
[[nodiscard]] ExitStatus RunEdit(const EditOptions& options, const PathEdit& edit);

/// The folders of `options` as the library takes them.
[[nodiscard]] std::vector<std::u16string> FolderNames(const EditOptions& options);

}  // namespace vornixpath
