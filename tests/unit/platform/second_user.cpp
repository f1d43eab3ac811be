#include "second_user.hpp"

#include <foundation/log/diagnostic_logger.hpp>

namespace second_user {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;

std::shared_ptr<IStorageProvider> FindProvider(const std::u16string& scheme) {
  return VornixStorageSystem::GetStorageSystemReference().FindProvider(scheme);
}

std::u16string ResolvedTextOf(const std::u16string& iri) { return AbsoluteIRI(iri).getResolvedIRI().toString(); }

void PostToSession(foundation::msg_svc::eventmgr::Event* event) {
  namespace eventmgr = foundation::msg_svc::eventmgr;
  eventmgr::createLocalEventMgr(eventmgr::SessionEmId)->post(boost::shared_ptr<eventmgr::Event>(event), 0);
}

const void* FindLogger(const std::string& name) { return foundation::log::FindDiagnosticLogger(name); }

void Log(const std::string& text) {
  foundation::log::basic_diagnostic_logger<char>("second_user").Write(foundation::log::Level::Info, text);
}

void ParseIdentifier(const std::u16string& text) { static_cast<void>(AbsoluteIRI(text)); }

}  // namespace second_user
