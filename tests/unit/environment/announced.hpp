#pragma once

// What the session is told about folders, by a test or to a test.

#include <boost/smart_ptr/make_shared.hpp>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathEnvironment {

inline std::shared_ptr<foundation::msg_svc::eventmgr::EventMgr> SessionEvents() {
  return foundation::msg_svc::eventmgr::createLocalEventMgr(foundation::msg_svc::eventmgr::SessionEmId);
}

/// Tells the session that something at `location`, an identifier's text, may have changed.
inline void AnnounceText(const std::u16string& location) {
  using namespace ::storage::filefolderobserver;
  SessionEvents()->post(boost::make_shared<FileFolderChangedEvent>(location, FrozenInclusion::None), 0);
}
inline void Announce(const foundation::storage::vfs::AbsoluteIRI& location) { AnnounceText(location.toString()); }

}  // namespace Quorvex::PathEnvironment
