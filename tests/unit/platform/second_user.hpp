#pragma once

// A second library in the process that uses the platform by itself.

#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <string>

namespace second_user {

[[nodiscard]] __attribute__((visibility("default"))) std::shared_ptr<foundation::storage::vfs::IStorageProvider>
FindProvider(const std::u16string& scheme);
[[nodiscard]] __attribute__((visibility("default"))) std::u16string ResolvedTextOf(const std::u16string& iri);
__attribute__((visibility("default"))) void PostToSession(foundation::msg_svc::eventmgr::Event* event);
/// The address of the logger of that name.
[[nodiscard]] __attribute__((visibility("default"))) const void* FindLogger(const std::string& name);
/// Writes `text` with a logger of its own.
__attribute__((visibility("default"))) void Log(const std::string& text);
/// Throws what storage throws.
__attribute__((visibility("default"))) void ParseIdentifier(const std::u16string& text);

}  // namespace second_user
