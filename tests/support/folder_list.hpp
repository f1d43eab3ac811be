#pragma once

// Lists of folders and messages as the short texts that people write and read.

#include <foundation/core/except/notification.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathManagement::support {

using FolderList = std::vector<foundation::storage::vfs::AbsoluteIRI>;

/// The folders that `names`, separated by blanks, mean: "a" is memory:///a, and an identifier is itself.
[[nodiscard]] FolderList FoldersAt(std::string_view names);

/// The other way round: "a b file:///c".
[[nodiscard]] std::string NamesOf(const FolderList& folders);

/// Each message as "identifier key(argument, ...)". Numbers among the arguments appear as "#".
[[nodiscard]] std::vector<std::string> MessagesOf(const foundation::core::except::Notification& notification);

}  // namespace Quorvex::PathManagement::support
