// Lookup on a path: which file does this name mean?
//
// Free functions without state; they may run on any number of threads at once as far as the paths and entries given
// allow it. A miss is an empty result; exceptions of paths and entries pass to the caller. No storage is touched beyond
// what the path touches.
#pragma once

#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/folder.hpp>
#include <functional>
#include <memory>
#include <search_path_interfaces/any_range_adapter.hpp>
#include <search_path_interfaces/path.hpp>
#include <search_path_utilities/export.hpp>
#include <search_path_utilities/is_partial_pathname.hpp>  // IWYU pragma: export
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathManagement {

/// Plain folders only.
extern SEARCH_PATH_UTILITIES_EXPORT const SearchScope MainScope;

/// Every kind but resources.
extern SEARCH_PATH_UTILITIES_EXPORT const SearchScope VisibleScope;

/// What kind of entry a folder of this base name is.
///
/// Letter case counts: `Private` is not the private folder. Never `PathEntryType::Auxiliary`. O(1).
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT PathEntryType GetPathEntryTypeFromBaseName(const std::u16string& baseName);

/// The target that looks for `name`: an extension written in the name wins over the list.
///
/// A name without extension borrows both arguments, which the caller keeps alive and unchanged as long as the target is
/// used. Otherwise, and when the list is empty, the target owns its parts: `foo.src` looks for `foo` with `.src` only,
/// `foo.` for `foo` with a lone dot; with an empty list, `foo` and `a.b/c` look for exactly that, and `.hidden` for an
/// empty base name with `.hidden`.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT detail::SearchTarget CreateSearchTargetWithExtensionInFilenamePreferred(
    const std::u16string& name, const std::vector<std::u16string>& extensions);

/// The file that `target` means on the whole path.
///
/// A plain name is looked for in the main entries and in the class folders of that name; the class folder's file wins
/// only when its entry stands before the main one's. Class folders are always selected by native comparison, whatever
/// the policy. A base name with a separator is looked for in every visible kind of entry, as it is.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT boost::optional<FoundItem> FindFirstFileVisibleOnPath(
    const IPath& path, const detail::SearchTarget& target, FilenameMatchingPolicy policy);

/// The file that `target` means to code that lives in `folder`.
///
/// Precedence: the folder's private subfolder, then class folders of the name, then the main entries. Unlike on the
/// whole path, a class folder's file always wins over a plain one. A folder that is not on the path contributes nothing
/// of its own. A base name with a separator is looked for as on the whole path.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const foundation::storage::vfs::AbsoluteIRI& folder, const detail::SearchTarget& target,
    FilenameMatchingPolicy policy);

/// The same for the folder's location as the handle was given it, not its canonical one.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const foundation::storage::vfs::Folder& folder, const detail::SearchTarget& target,
    FilenameMatchingPolicy policy);

/// Every file of `entry` whose extension is one of `extensions`, in the entry's own order.
///
/// Extensions are compared whole, dot included, by the entry's comparator for `policy`. A file is listed once for each
/// wanted extension that matches it, so one that is wanted twice is listed twice in a row. A comparator that is null or
/// empty throws `std::bad_function_call` when there is something to compare. O(items x extensions).
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::vector<FoundItem> FindFilesByExtensions(
    const std::shared_ptr<const IPathEntry>& entry, const std::vector<std::u16string>& extensions,
    FilenameMatchingPolicy policy);

/// The same for every entry of `path` that `scope` selects, in path order. Hidden files are listed as well as visible
/// ones, and an entry that the walk visits twice contributes its files twice.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::vector<FoundItem> FindFilesByExtensions(
    const IPath& path, SearchScope scope, const std::vector<std::u16string>& extensions, FilenameMatchingPolicy policy);

/// A partial pathname: the last few folders of a place, the file's own name left out. Names are compared from the end,
/// so it can be read in both directions.
using PartialPathname = detail::AnyRangeAdapter<std::u16string, boost::bidirectional_traversal_tag>;

/// Whether `partial` leniently names a place inside the folder of `entry`.
///
/// A name matches a folder under the entry's comparator for `policy`; the '@' or '+' of a folder may be left out.
/// Enclosing class, private and resources folders may be left out, but every package folder up to the first plain
/// folder must be named. An empty comparator throws `std::bad_function_call` when a name is compared. O(n) in the
/// length of the folder's text.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT bool DoesPartialPathnameMatchPathEntryIRI(
    const PartialPathname& partial, std::shared_ptr<const IPathEntry> entry, const FilenameMatchingPolicy& policy);

/// Whether `partial` leniently names a place inside the folder of `entry`, following its parents on `path`.
///
/// Each name is compared with the folder of one entry, from `entry` outwards, and once all are used up no entry that is
/// left, up to the main one, may be a package. Where the names go beyond the main entry, they must equal the folders of
/// its location under the comparator alone, from its own name on, and what encloses them does not matter: this differs
/// from the form without a path.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT bool DoesPartialPathnameMatchPathEntryIRI(
    const IPath& path, const PartialPathname& partial, std::shared_ptr<const IPathEntry> entry,
    const FilenameMatchingPolicy& policy);

/// Whether `partial` strictly names the folder that `pathString` gives.
///
/// The names of packages, classes and the private folder are compared exactly; a package's with its '+', a class's with
/// or without its '@'. `comparator(name in partial, folder)` decides about every other. What encloses the named folders
/// must be a plain folder or nothing. An empty comparator throws `std::bad_function_call` when it is needed. O(n).
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT bool DoesPartialPathnameStrictlyMatchPathString(
    const PartialPathname& partial, const std::u16string& pathString,
    const std::function<bool(const std::u16string&, const std::u16string&)>& comparator);

/// The same for the folder of `entry`, under its comparator for `policy`.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT bool DoesPartialPathnameStrictlyMatchPathEntryIRI(
    const PartialPathname& partial, const IPathEntry& entry, const FilenameMatchingPolicy& policy);

}  // namespace Quorvex::PathManagement
