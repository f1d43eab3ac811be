#include "session.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/location_from_text.hpp>

#include "current_folder.hpp"
#include "environment_variable.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::SavedPathFile;

std::optional<SavedPathFile> SessionBelow(const char* variable, const std::string& place) {
  const std::optional<std::string> folder = Variable(variable);
  if (!folder || folder->front() != '/') return std::nullopt;
  const std::u16string file = from_bytes(*folder + place);
  return SavedPathFile(Quorvex::PathEnvironment::LocationFromPath(file, u"/"),
                       VornixStorageSystem::GetStorageSystemReference());
}

}  // namespace

SavedPathFile SessionFile(const std::optional<std::string>& name) {
  if (name) {
    return {Quorvex::PathEnvironment::LocationFromText(from_bytes(*name), CurrentFolder()),
            VornixStorageSystem::GetStorageSystemReference()};
  }
  if (auto session = DefaultSessionFile()) return *std::move(session);
  throw UsageError("there is no place to keep a path: give --session, or set HOME to an absolute path");
}

std::optional<SavedPathFile> DefaultSessionFile() {
  if (auto session = SessionBelow("XDG_STATE_HOME", "/vornixpath/path")) return session;
  return SessionBelow("HOME", "/.local/state/vornixpath/path");
}

std::optional<std::string> PathVariable() { return Variable("VORNIX_PATH"); }

}  // namespace vornixpath
