#include "session.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/location_from_text.hpp>

#include "current_folder.hpp"
#include "environment_variable.hpp"
#include "usage_error.hpp"
#include "usual_place.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::SavedPathFile;

SavedPathFile SessionAt(const AbsoluteIRI& file) { return {file, VornixStorageSystem::GetStorageSystemReference()}; }

}  // namespace

SavedPathFile SessionFile(const std::optional<std::string>& name) {
  if (name) return SessionAt(Quorvex::PathEnvironment::LocationFromText(from_bytes(*name), CurrentFolder()));
  if (auto session = DefaultSessionFile()) return *std::move(session);
  throw UsageError("there is no place to keep a path: give --session, or set HOME to an absolute path");
}

std::optional<SavedPathFile> DefaultSessionFile() {
  if (const auto file = PlaceBelow("XDG_STATE_HOME", "/vornixpath/path")) return SessionAt(*file);
  if (const auto file = PlaceBelow("HOME", "/.local/state/vornixpath/path")) return SessionAt(*file);
  return std::nullopt;
}

std::optional<std::string> PathVariable() { return Variable("VORNIX_PATH"); }

}  // namespace vornixpath
