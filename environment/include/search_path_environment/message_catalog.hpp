// The texts in which people read the messages of the library.
#pragma once

#include <foundation/core/except/notification.hpp>
#include <search_path_environment/export.hpp>
#include <string>

namespace Quorvex::PathEnvironment {

/// What `message` says, and what to do about it: `"/a" is not on the search path, so nothing was removed: ...`. UTF-8
/// in which nothing is dangerous to a terminal.
///
/// A text names the folder that is the message's first argument; one of more than 300 characters by its ends and its
/// length. A message that is not in the catalog, or whose first argument is no text, is shown with all it holds. Pure,
/// safe from any thread. O(n).
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT std::string TextOf(
    const foundation::core::except::NotificationMessage& message);

}  // namespace Quorvex::PathEnvironment
