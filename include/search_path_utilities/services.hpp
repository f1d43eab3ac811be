// What is done around a search path: changes announced to whoever watches its folders.
//
// Free functions without state, each wholly on the caller's thread; no locks are taken here.
#pragma once

#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_utilities/export.hpp>

namespace Quorvex::PathManagement {

/// Tells the session that `iri`, a file or folder, may have changed: posts a FileFolderChangedEvent for it, for each
/// special subfolder around it, innermost first, and for the plain folder around them all, the path entry that has to
/// look again.
///
/// By names alone: a dot anywhere in a name makes it a file's, a folder `data.old` included; nothing need exist. The
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

}  // namespace Quorvex::PathManagement
