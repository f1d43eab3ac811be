#include "standpoint.hpp"

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "location_argument.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPath;

// The entry of `folder` in any spelling, as far as `part` of the path has one.
EntryPtr FindIn(const IPath& part, const LoadedPath& path, const AbsoluteIRI& folder) {
  if (auto entry = part.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native)) return entry;
  if (!path.IsFromStorage()) return nullptr;  // canonical locations have been compared already
  if (auto entry = part.GetPathEntryFromAbsoluteIRI(Quorvex::PathManagement::GetCanonicalIRI(folder))) return entry;
  EntryPtr entry = path.FindFolder(folder);
  return entry && part.IsEntryOnPath(*entry) ? entry : nullptr;
}

void WarnOfNoPrivateFolder(const std::string& text, const char* why) {
  WriteWarning(Quoted(fl::filesystem::from_bytes(text)) + why + ", so it contributes no private folder");
}

// The folder under the spelling by which the path knows it, if it does.
AbsoluteIRI FolderToAskFrom(const LoadedPath& path, const std::string& text) {
  const AbsoluteIRI folder = LocationFromArgument(text);
  try {
    if (const auto entry = FindIn(path.GetView(), path, folder)) return entry->GetAbsoluteIRI();
    if (const auto masked = EntryUnderAnySpelling(path, folder)) {
      WarnOfNoPrivateFolder(text, " is masked");
      return masked->GetAbsoluteIRI();
    }
  } catch (const foundation::storage::vfs::Exception& exception) {
    WriteWarning(exception.what());
  }
  WarnOfNoPrivateFolder(text, " is not on the path");
  return folder;
}

}  // namespace

EntryPtr EntryUnderAnySpelling(const LoadedPath& path, const AbsoluteIRI& folder) {
  return FindIn(path.GetLeaf(), path, folder);
}

FilenameMatchingPolicy PolicyFor(bool ignoreCase) {
  return ignoreCase ? FilenameMatchingPolicy::CaseInsensitive : FilenameMatchingPolicy::Native;
}

Standpoint StandpointOn(const LoadedPath& path, const std::optional<std::string>& from, bool ignoreCase) {
  Standpoint standpoint{path.GetView(), boost::none, PolicyFor(ignoreCase)};
  if (from) standpoint.folder = FolderToAskFrom(path, *from);
  return standpoint;
}

}  // namespace vornixpath
