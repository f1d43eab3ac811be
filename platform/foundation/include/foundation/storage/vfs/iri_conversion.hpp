// The way between file-system paths and identifiers. Pure functions on text, safe from any thread; no storage is
// touched.
#pragma once

#include <fl/filesystem/path.hpp>
#include <foundation/export.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace foundation::storage::vfs {

/// True when `text` begins with a scheme of two or more characters and "://". So "C:\x", "a:b" and "x:/y" are paths.
[[nodiscard]] FOUNDATION_EXPORT bool hasIRIPrefix(const std::u16string& text) noexcept;

/// The identifier of `path` in `scheme`. Dot segments are taken out by text; a relative or an empty path gives a
/// rootless identifier.
///
/// Throws Exception when the scheme is malformed or the path holds a NUL or stands for no bytes. fromAbsoluteIRI gives
/// back the exact text of an absolute path in native normal form.
[[nodiscard]] FOUNDATION_EXPORT AbsoluteIRI toAbsoluteIRI(const std::u16string& scheme,
                                                          const fl::filesystem::path& path);

/// The native path of a `file` identifier; relative when that is rootless.
///
/// Throws Exception for another scheme, for an escaped '/' or NUL in a name, on POSIX for a host, and on Windows for a
/// backslash in a name.
[[nodiscard]] FOUNDATION_EXPORT fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri);

namespace detail {

/// The public form, for a given style. Windows: `C:\x` is `file:///C:/x`, `\\srv\share\x` is `file://srv/share/x`, and
/// the prefix `\\?\` is dropped.
[[nodiscard]] FOUNDATION_EXPORT AbsoluteIRI toAbsoluteIRI(const std::u16string& scheme,
                                                          const fl::filesystem::path& path,
                                                          fl::filesystem::detail::path_style style);
/// The public form, for a given style: the way back.
[[nodiscard]] FOUNDATION_EXPORT fl::filesystem::path fromAbsoluteIRI(const AbsoluteIRI& iri,
                                                                     fl::filesystem::detail::path_style style);

/// fromAbsoluteIRI for whatever scheme a provider of native files is mounted under.
[[nodiscard]] FOUNDATION_EXPORT fl::filesystem::path toNativePath(const AbsoluteIRI& iri,
                                                                  fl::filesystem::detail::path_style style);

}  // namespace detail

}  // namespace foundation::storage::vfs
