// Path strings and identifiers, and the editing of the main search path: the texts in which people hand over folders,
// what the storage layer calls them, and how they come onto the path and off it.
//
// Free functions without state. Those that are given no manager are safe from any thread; serializing edits is the
// manager's task. Only `GetCanonicalIRI`, the working folder and the manager touch storage. Exceptions of the storage
// layer pass to the caller unchanged.
#pragma once

#include <boost/optional/optional.hpp>
#include <current_working_folder/current_working_folder.hpp>
#include <fl/filesystem/path.hpp>
#include <foundation/core/except/exception.hpp>
#include <foundation/core/except/notification.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <search_path_interfaces/any_range_adapter.hpp>
#include <search_path_interfaces/factories.hpp>
#include <search_path_interfaces/main_search_path_manager.hpp>
#include <search_path_interfaces/path.hpp>
#include <search_path_interfaces/position.hpp>
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

/// The folder that `name`, as the user typed it, means to `workingFolder`.
///
/// Empty when the working folder rejects the name for a reason that the user should hear about: then one message
/// "VORNIX:mpath" is added to `warnings`, with the name as its argument and one of the keys "invalidLocation" (code 0),
/// "directoryPermissionDenied" (3), "nameNonexistentOrNotADirectory" (4 to 7) and "directoryNameTooLong" (9). A
/// `FailedToAbsolutizeException` with any other code, and every other exception, passes unchanged.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT boost::optional<foundation::storage::vfs::AbsoluteIRI>
ConvertUstringToAbsoluteIRI(const std::u16string& name,
                            const current_working_folder::ICurrentWorkingFolder& workingFolder,
                            foundation::core::except::Notification& warnings);

/// The folders that `names` mean, in order, repeats included; a rejected name leaves a warning and no gap. An exception
/// discards the result, but leaves the warnings added before it. `names` is walked twice.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::vector<foundation::storage::vfs::AbsoluteIRI>
ConvertUstringRangeToAbsoluteIRIs(const detail::AnyRangeAdapter<std::u16string>& names,
                                  const current_working_folder::ICurrentWorkingFolder& workingFolder,
                                  foundation::core::except::Notification& warnings);

/// Thrown by a manager that refuses a change of the path because it was begun within another one. The editing functions
/// swallow it, and only it: the change is dropped. Carries no text.
class SEARCH_PATH_UTILITIES_EXPORT RecursivePathChangeException
    : public foundation::core::except::Exception<foundation::core::except::IInternalException, std::exception, void> {
 public:
  RecursivePathChangeException() noexcept;
  RecursivePathChangeException(const RecursivePathChangeException&) noexcept;
  RecursivePathChangeException& operator=(const RecursivePathChangeException&) noexcept;
  ~RecursivePathChangeException() override;
};

/// Puts the folders that `names` mean onto the path, as AddIRIsToVornixPath does; all or nothing: when a name is
/// rejected, nothing is added, and the warnings are returned. The two factories are not used.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT foundation::core::except::Notification AddFoldersToVornixPath(
    const detail::AnyRangeAdapter<std::u16string>& names,
    const current_working_folder::ICurrentWorkingFolder& workingFolder, IMainSearchPathManager& manager,
    const IPathFactory& pathFactory, const IPathEntryFactory& entryFactory, Position position);

/// Puts `folders` at the beginning of the path or, for every other position, at its end, in their order and each once;
/// where they stood before, they no longer stand. What the manager has to say is returned. The manager is called even
/// when nothing was given. O(n) on average in the number of folders.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT foundation::core::except::Notification AddIRIsToVornixPath(
    const detail::AnyRangeAdapter<foundation::storage::vfs::AbsoluteIRI>& folders, IMainSearchPathManager& manager,
    Position position);

/// Takes the folders that `names` mean off the path, as RemoveIRIsFromVornixPath does; nothing when a name is rejected.
/// The factory and the path are not used.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT foundation::core::except::Notification RemoveFoldersFromVornixPath(
    const detail::AnyRangeAdapter<std::u16string>& names,
    const current_working_folder::ICurrentWorkingFolder& workingFolder, IMainSearchPathManager& manager,
    const IPathFactory& pathFactory, const IPath& path);

/// Takes `folders` off the path, every occurrence of each. When one of them is not on the path, nothing is removed, and
/// a message "VORNIX:rmpath" with the key "DirNotFound" and the folder's text is returned for each such mention. The
/// manager is handed the new list lazily, computed as it reads. O(n) on average in the number of folders.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT foundation::core::except::Notification RemoveIRIsFromVornixPath(
    const detail::AnyRangeAdapter<foundation::storage::vfs::AbsoluteIRI>& folders, IMainSearchPathManager& manager);

}  // namespace Quorvex::PathManagement
