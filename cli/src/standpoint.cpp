#include "standpoint.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "current_folder.hpp"
#include "output.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::FilenameMatchingPolicy;

AbsoluteIRI LocationFromArgument(const std::u16string& text) {
  try {
    return Quorvex::PathEnvironment::LocationFromText(text, CurrentFolder());
  } catch (const foundation::storage::vfs::Exception& exception) {
    throw UsageError(exception.what());
  }
}

// The folder under the spelling by which the path knows it, if it does.
AbsoluteIRI FolderToAskFrom(const FolderPath& path, const std::u16string& text) {
  const AbsoluteIRI folder = LocationFromArgument(text);
  try {
    if (const auto entry = EntryUnderAnySpelling(path, folder)) return entry->GetAbsoluteIRI();
  } catch (const foundation::storage::vfs::Exception& exception) {
    WriteWarning(exception.what());
  }
  WriteWarning(Quoted(text) + " is not on the path, so it contributes no private folder");
  return folder;
}

}  // namespace

EntryPtr EntryUnderAnySpelling(const FolderPath& path, const AbsoluteIRI& folder) {
  if (auto entry = path.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native)) return entry;
  return path.GetPathEntryFromAbsoluteIRI(Quorvex::PathManagement::GetCanonicalIRI(folder));
}

FilenameMatchingPolicy PolicyFor(bool ignoreCase) {
  return ignoreCase ? FilenameMatchingPolicy::CaseInsensitive : FilenameMatchingPolicy::Native;
}

Standpoint StandpointOn(const FolderPath& path, const std::optional<std::string>& from, bool ignoreCase) {
  Standpoint standpoint{path, boost::none, PolicyFor(ignoreCase)};
  if (from) standpoint.folder = FolderToAskFrom(path, fl::filesystem::from_bytes(*from));
  return standpoint;
}

}  // namespace vornixpath
