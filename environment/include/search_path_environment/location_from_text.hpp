// What a text that people type names. By text alone: no storage is touched. Pure functions, safe from any thread.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/export.hpp>
#include <string>

namespace Quorvex::PathEnvironment {

/// The folder or file that `text` names: an identifier, an absolute path, or a path relative to `base`, which is an
/// absolute path or an identifier; with any other base, a relative path gives an identifier that no storage accepts.
///
/// Throws the storage layer's Exception for a malformed identifier, and for a path that holds a NUL or stands for no
/// bytes. O(n).
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT foundation::storage::vfs::AbsoluteIRI LocationFromText(
    const std::u16string& text, const std::u16string& base);

/// The same for a path that is no identifier, whatever it looks like.
[[nodiscard]] SEARCH_PATH_ENVIRONMENT_EXPORT foundation::storage::vfs::AbsoluteIRI LocationFromPath(
    const std::u16string& path, const std::u16string& base);

}  // namespace Quorvex::PathEnvironment
