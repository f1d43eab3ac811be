// Which folders hear of a change inside a special subfolder: every one up to the plain folder above them all.

#include <boost/smart_ptr/shared_ptr.hpp>
#include <foundation/storage/vfs/canonical_absolute_iri.hpp>
#include <foundation/storage/vfs/file.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_interfaces/path_entry_type.hpp>
#include <search_path_utilities/lookup.hpp>
#include <search_path_utilities/services.hpp>
#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <string>
#include <utility>

namespace Quorvex::PathManagement {

namespace {

using foundation::msg_svc::eventmgr::createLocalEventMgr;
using foundation::msg_svc::eventmgr::Event;
using foundation::msg_svc::eventmgr::EventMgr;
using foundation::msg_svc::eventmgr::SessionEmId;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::File;
using foundation::storage::vfs::VornixStorageSystem;
using storage::filefolderobserver::FileFolderChangedEvent;
using storage::filefolderobserver::FrozenInclusion;

void PostChange(EventMgr& manager, const AbsoluteIRI& iri) {
  const FileFolderChangedEvent event(iri.toString(), FrozenInclusion::None);
  manager.post(boost::shared_ptr<Event>(event.clone()), 0);
}

}  // namespace

void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(AbsoluteIRI iri) {
  const auto manager = createLocalEventMgr(SessionEmId);
  if (iri.getName().find(u'.') != std::u16string::npos) {
    PostChange(*manager, iri);
    iri = iri.getParent();
  }
  while (GetPathEntryTypeFromBaseName(iri.getName()) != PathEntryType::Main) {
    PostChange(*manager, iri);
    iri = iri.getParent();
  }
  PostChange(*manager, iri);
}

// Every event goes to the session's manager, whichever one a caller hands over.
void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(const AbsoluteIRI& iri, EventMgr& /*manager*/) {
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(iri.getResolvedIRI());
}

void NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesAndCanonicalize(const AbsoluteIRI& iri,
                                                                               EventMgr& /*manager*/) {
  const File file(iri, VornixStorageSystem::GetStorageSystemReference());
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChangesCommon(file.getCanonicalLocation().getAbsoluteIRI());
}

}  // namespace Quorvex::PathManagement
