// What is done around a search path: the toolbox path cache saved, changes announced to whoever watches folders,
// packages asked for the folders they put on the path.
//
// Free functions without state, each wholly on the caller's thread; no locks are taken here, and calls for the same
// file are not coordinated.
#pragma once

#include <exception>
#include <foundation/core/except/exception.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <package_registry/package_registry.hpp>
#include <search_path_interfaces/factories.hpp>
#include <search_path_utilities/export.hpp>
#include <span>
#include <vector>

namespace Quorvex::PathManagement {

/// The toolbox path cache could not be saved. Carries no text and no reason.
class SEARCH_PATH_UTILITIES_EXPORT UnableToSaveToolboxCacheException
    : public foundation::core::except::Exception<foundation::core::except::IInternalException, std::exception> {
 public:
  UnableToSaveToolboxCacheException() noexcept;
  UnableToSaveToolboxCacheException(const UnableToSaveToolboxCacheException&) noexcept;
  UnableToSaveToolboxCacheException& operator=(const UnableToSaveToolboxCacheException&) noexcept;
  ~UnableToSaveToolboxCacheException() override;
};

/// Lets `factory` write what it knows of the folders below `toolboxRoot` into `cacheFile`, on the session's storage
/// system; a file of that name is replaced.
///
/// Throws UnableToSaveToolboxCacheException when storage refuses to open the file, which is then left as it is; and
/// when opening leaves the stream failed or the factory throws, once the file has been removed. A write that fails
/// throws within the factory; if the factory keeps that to itself, the cache counts as saved. What fails in closing or
/// removing the file passes instead, as does anything but storage's Exception from opening. The last bytes, written as
/// the file is closed after success, are not checked: a factory that wants them to be flushes the stream.
///
/// Name the file itself and not a link to it: what is removed is the link, and what it leads to keeps the part that was
/// written.
SEARCH_PATH_UTILITIES_EXPORT void WriteToolboxPathCache(const foundation::storage::vfs::AbsoluteIRI& cacheFile,
                                                        const foundation::storage::vfs::AbsoluteIRI& toolboxRoot,
                                                        const IPathEntryFactory& factory);

/// Tells the session that `iri`, a file or folder, may have changed: posts a FileFolderChangedEvent for it, for each
/// special subfolder around it, innermost first, and for the plain folder around them all, the path entry that has to
/// look again.
///
/// By names alone: a dot anywhere in its name makes `iri` a file, a folder `data.old` included; nothing need exist. The
/// events go to the session's manager, which delivers them when somebody dispatches. What an identifier or the manager
/// throws passes unchanged; events already posted stay posted. O(n) in the length of the identifier for each event.
SEARCH_PATH_UTILITIES_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(
    foundation::storage::vfs::AbsoluteIRI iri);

/// The same for the resolved form of `iri`. `manager` is not used.
SEARCH_PATH_UTILITIES_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(
    const foundation::storage::vfs::AbsoluteIRI& iri, foundation::msg_svc::eventmgr::EventMgr& manager);

/// The same for the canonical location of `iri` on the session's storage system, which is asked once and need not hold
/// it. `manager` is not used.
SEARCH_PATH_UTILITIES_EXPORT void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(
    const foundation::storage::vfs::AbsoluteIRI& iri, foundation::msg_svc::eventmgr::EventMgr& manager);

/// The folders that the packages of `components` put on the path, in the order of the components and of each package's
/// own list, repeats included. No path is changed.
///
/// A component that the registry does not know and a package that is not enabled add nothing. A package adds its path
/// folders; a root-folder package adds its root, but only if its property "ManualInstall" is true. Throws
/// `std::bad_variant_access` when that property is no `bool`; what the registry throws passes. O(folders) on average.
[[nodiscard]] SEARCH_PATH_UTILITIES_EXPORT std::vector<foundation::storage::vfs::AbsoluteIRI> GetPathFoldersForPackages(
    const PackageRegistry::IPackageRegistry& registry,
    std::span<const VornixComponents::ComponentIdentifier> components);

}  // namespace Quorvex::PathManagement
