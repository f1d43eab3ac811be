// Path strings and identifiers: the texts in which people hand over folders, and what the storage layer calls them.
//
// Free functions without state, safe from any thread. Only `GetCanonicalIRI` touches storage. Exceptions of the storage
// layer pass to the caller unchanged.
#pragma once

#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <search_path_utilities/export.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement {

/// Lists the folders that `text` names, in order.
/// `text` is a path string: folder texts separated by ';', on every platform, or by any character of
/// `Constants::VornixPathsepStr`. Runs of separators count as one, so no element is ever empty; blanks belong to the
/// name; nothing can be quoted, and an identifier is split like any other text. Repeats are kept.
///
/// Throws only std::bad_alloc. O(n) in code units.
///
///     u"a;;b;" gives { u"a", u"b" }
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::vector<std::u16string> SplitVornixPath(const std::u16string& text);

/// The identifier that `text`, an identifier or a file-system path, stands for.
///
/// An identifier is brought into normal form; a path becomes a `file` identifier by text alone. It is not made
/// absolute: a relative path gives an identifier that no storage accepts. Throws the storage layer's `Exception`, which
/// quotes the culprit, for a malformed identifier, and for a path that holds a NUL or stands for no bytes.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT foundation::storage::vfs::AbsoluteIRI GetIRIFromString(
    const std::u16string& text);

/// The text in which `iri` is shown and matched: the native path of a `file` identifier, else the whole identifier with
/// its escapes decoded. Throws the storage layer's `Exception` for a `file` identifier that no native path can express.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::u16string GetStringFromIRI(
    const foundation::storage::vfs::AbsoluteIRI& iri);

/// The canonical location of the folder `iri` on the session's storage system, links resolved.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT foundation::storage::vfs::CanonicalAbsoluteIRI GetCanonicalIRI(
    const foundation::storage::vfs::AbsoluteIRI& iri);

/// The text of the absolute path `path` without its root; of a path without root, the whole text. Throws
/// `std::out_of_range` should the path's root not stand in its own text.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::u16string RemoveRootPathFromAbsolutePath(
    const fl::filesystem::path& path);

}  // namespace Quorvex::PathManagement
