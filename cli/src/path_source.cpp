#include "path_source.hpp"

#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_environment/snapshot_file.hpp>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <stdexcept>
#include <system_error>

#include "cached_loading.hpp"
#include "current_folder.hpp"
#include "location_argument.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "session.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::from_bytes;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::LocationFromPath;
using Quorvex::PathEnvironment::LocationFromText;
using Quorvex::PathEnvironment::ReadWholeFile;
using Quorvex::PathEnvironment::SavedPathFile;

// A file that names folders is small; anything larger is something else.
constexpr std::size_t kLargestPathFile = std::size_t{64} << 20U;

// The bytes of a list behind what tells them apart from the same bytes of another kind, or seen from another folder.
struct Origin {
  std::string bytes;
  std::size_t begin;  // of the list

  Origin(std::string_view kind, std::u16string_view base) : bytes(kind) {
    bytes.append(1, '\0').append(fl::filesystem::to_bytes(base)).append(1, '\0');
    begin = bytes.size();
  }
};

// `understand(list)` makes folders of the bytes of the list.
template <class Understand>
FolderList ListFrom(Origin origin, const Understand& understand) {
  return {std::move(origin.bytes),
          [begin = origin.begin, understand](std::string_view bytes) { return understand(bytes.substr(begin)); }};
}

FolderList ListFromText(const std::string& bytes) {
  const std::u16string current = CurrentFolder();
  Origin origin("text", current);
  origin.bytes += bytes;
  return ListFrom(std::move(origin), [current](std::string_view text) {
    std::vector<AbsoluteIRI> folders;
    for (const std::u16string& folder : Quorvex::PathManagement::SplitVornixPath(from_bytes(text))) {
      folders.push_back(LocationFromPath(folder, current));
    }
    return folders;
  });
}

std::string ContentOf(const AbsoluteIRI& file) {
  const auto storage = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file);
  try {
    if (auto content = ReadWholeFile(*storage, file, kLargestPathFile)) return *std::move(content);
  } catch (const foundation::storage::vfs::Exception& exception) {
    if (exception.GetError() != std::errc::file_too_large) throw;
    throw std::runtime_error("it is too large to be a list of folders");
  }
  throw foundation::storage::vfs::Exception("open", file, std::make_error_code(std::errc::no_such_file_or_directory));
}

std::vector<std::string> LinesOf(std::string_view content) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < content.size();) {
    const std::size_t end = std::min(content.find('\n', begin), content.size());
    lines.emplace_back(content.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

std::vector<AbsoluteIRI> FoldersFromLines(const std::vector<std::string>& lines, const AbsoluteIRI& file) {
  const std::u16string base = Quorvex::PathManagement::GetStringFromIRI(file.getParent());
  std::vector<AbsoluteIRI> folders;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    try {
      folders.push_back(LocationFromText(from_bytes(lines[i]), base));
    } catch (const foundation::storage::vfs::Exception& exception) {
      throw std::runtime_error("line " + std::to_string(i + 1) + ": " + exception.what());
    }
  }
  return folders;
}

template <class Use>
auto WithPathFile(const std::string& name, const Use& use) {
  try {
    return use();
  } catch (const std::exception& exception) {
    throw std::runtime_error("cannot use the path file " + Quoted(from_bytes(name)) + ": " + exception.what());
  }
}

FolderList ListFromFile(const std::string& name) {
  return WithPathFile(name, [&name]() -> FolderList {
    const AbsoluteIRI file = LocationFromText(from_bytes(name), CurrentFolder());
    Origin origin("file", file.getParent().toString());
    origin.bytes += ContentOf(file);
    return ListFrom(std::move(origin), [name, file](std::string_view content) {
      return WithPathFile(name, [&] { return FoldersFromLines(LinesOf(content), file); });
    });
  });
}

// Where the session stands has no part in it: what is saved is absolute.
FolderList ListFromSaved(const SavedPathFile& session, const std::optional<std::string>& saved) {
  Origin origin("session", u"");
  if (saved) origin.bytes += *saved;
  return ListFrom(std::move(origin), [session, isThere = saved.has_value()](std::string_view bytes) {
    return session.Understand(isThere ? std::optional<std::string>(bytes) : std::nullopt).GetFolders();
  });
}

FolderList ListFromSession(const std::optional<std::string>& name) {
  const SavedPathFile session = SessionFile(name);
  const std::optional<std::string> bytes = session.ReadBytes();
  if (!bytes) WriteWarning("nothing was saved in " + Quoted(TextOf(session.GetLocation())) + " yet");
  return ListFromSaved(session, bytes);
}

// Nothing when nothing was saved there yet.
std::optional<FolderList> ListFromDefaultSession() {
  const std::optional<SavedPathFile> session = DefaultSessionFile();
  const std::optional<std::string> bytes = session ? session->ReadBytes() : std::nullopt;
  if (!bytes) return std::nullopt;
  return ListFromSaved(*session, bytes);
}

std::vector<AbsoluteIRI> MasksFrom(const std::vector<std::string>& arguments) {
  std::vector<AbsoluteIRI> masks;
  for (const std::string& argument : arguments) {
    const AbsoluteIRI mask = LocationFromArgument(argument);
    if (std::find(masks.begin(), masks.end(), mask) == masks.end()) masks.push_back(mask);
  }
  return masks;
}

Quorvex::PathEnvironment::PathSnapshot SnapshotIn(const std::string& file) {
  return Quorvex::PathEnvironment::ReadSnapshotFile(VornixStorageSystem::GetStorageSystemReference(),
                                                    LocationFromArgument(file));
}

// Then the list does not follow from what was typed alone.
FolderList Joined(const FolderList& list, const std::vector<AbsoluteIRI>& further) {
  if (further.empty()) return list;
  return {"", [list, further](std::string_view /*origin*/) {
            std::vector<AbsoluteIRI> folders = list.GetFolders();
            folders.insert(folders.end(), further.begin(), further.end());
            return folders;
          }};
}

void WarnOfIdleMasks(const LoadedPath& path) {
  for (const AbsoluteIRI& mask : path.GetIdleMasks()) {
    WriteWarning(Quoted(TextOf(mask)) + " is no folder of the path, so that masking it hides nothing");
  }
}

}  // namespace

std::vector<AbsoluteIRI> FoldersFromSession(const std::optional<std::string>& name) {
  return ListFromSession(name).GetFolders();
}

FolderList ListFor(const PathOptions& options) {
  if (options.file) return ListFromFile(*options.file);
  if (options.text) return ListFromText(*options.text);
  if (options.session) return ListFromSession(options.session);
  if (const auto variable = PathVariable()) return ListFromText(*variable);
  if (auto list = ListFromDefaultSession()) return *std::move(list);
  throw UsageError(
      "there is no path to search: give --path, --path-file, or set VORNIX_PATH, or 'vornixpath add FOLDER'");
}

std::vector<AbsoluteIRI> FoldersFor(const PathOptions& options) { return ListFor(options).GetFolders(); }

LoadedPath LoadPath(const PathOptions& options, const std::vector<AbsoluteIRI>& further,
                    const CountDeciding& countDeciding) {
  const std::vector<AbsoluteIRI> masks = MasksFrom(options.masks);
  LoadedPath path = options.snapshot
                        ? LoadedPath(SnapshotIn(*options.snapshot), masks)
                        : LoadListed(Joined(ListFor(options), further), CacheChoice(options), masks, countDeciding);
  WarnOfIdleMasks(path);
  return path;
}

LoadedPath LoadPathThrough(const Quorvex::PathManagement::IPathEntryFactory& entries, const PathOptions& options,
                           const std::vector<AbsoluteIRI>& further) {
  LoadedPath path(Joined(ListFor(options), further), entries, MasksFrom(options.masks));
  WarnOfIdleMasks(path);
  return path;
}

}  // namespace vornixpath
