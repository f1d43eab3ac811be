#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace vornixpath {

/// The absolute text of the process's current folder.
[[nodiscard]] std::u16string CurrentFolder();

/// The folder or file that `text` names: an identifier, an absolute path, or one relative to the absolute path `base`,
/// joined by text. Throws the storage layer's Exception for a malformed identifier.
[[nodiscard]] foundation::storage::vfs::AbsoluteIRI LocationFromText(const std::u16string& text,
                                                                     const std::u16string& base);

/// The same for a path that is no identifier, whatever it looks like.
[[nodiscard]] foundation::storage::vfs::AbsoluteIRI LocationFromPath(const std::u16string& path,
                                                                     const std::u16string& base);

}  // namespace vornixpath
