#include "path_source.hpp"

#include <algorithm>
#include <array>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_environment/snapshot_file.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <span>
#include <stdexcept>

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
using Quorvex::PathEnvironment::SavedPathFile;

// A file that names folders is small; anything larger is something else.
constexpr std::size_t kLargestPathFile = std::size_t{64} << 20U;

// A text, told apart from the same text of another kind, or seen from another folder.
std::string OriginOf(std::string_view kind, std::u16string_view base, std::string_view text) {
  std::string origin(kind);
  origin.append(1, '\0').append(fl::filesystem::to_bytes(base)).append(1, '\0').append(text);
  return origin;
}

FolderList ListFromText(const std::string& bytes) {
  const std::u16string current = CurrentFolder();
  return {OriginOf("text", current, bytes), [bytes, current] {
            std::vector<AbsoluteIRI> folders;
            for (const std::u16string& folder : Quorvex::PathManagement::SplitVornixPath(from_bytes(bytes))) {
              folders.push_back(LocationFromPath(folder, current));
            }
            return folders;
          }};
}

std::string ContentOf(const AbsoluteIRI& file) {
  const auto reader = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file)->OpenForReading(file);
  std::string content;
  std::array<char, 65536> buffer;
  while (const std::size_t count = reader->Read(std::as_writable_bytes(std::span(buffer)))) {
    content.append(buffer.data(), count);
    if (content.size() > kLargestPathFile) throw std::runtime_error("it is too large to be a list of folders");
  }
  return content;
}

std::vector<std::string> LinesOf(const std::string& content) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < content.size();) {
    const std::size_t end = std::min(content.find('\n', begin), content.size());
    lines.push_back(content.substr(begin, end - begin));
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
    const std::string content = ContentOf(file);
    return {OriginOf("file", file.getParent().toString(), content), [name, file, content] {
              return WithPathFile(name, [&] { return FoldersFromLines(LinesOf(content), file); });
            }};
  });
}

// The location has no part in it: what is saved is absolute.
FolderList ListFromSaved(const SavedPathFile& session, const std::optional<std::string>& bytes) {
  return {OriginOf("session", u"", bytes.value_or("")),
          [session, bytes] { return session.Understand(bytes).GetFolders(); }};
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

LoadedPath LoadPath(const PathOptions& options, const CountDeciding& countDeciding) {
  const std::vector<AbsoluteIRI> masks = MasksFrom(options.masks);
  LoadedPath path = options.snapshot ? LoadedPath(SnapshotIn(*options.snapshot), masks)
                                     : LoadListed(ListFor(options), CacheChoice(options), masks, countDeciding);
  for (const AbsoluteIRI& mask : path.GetIdleMasks()) {
    WriteWarning(Quoted(TextOf(mask)) + " is no folder of the path, so that masking it hides nothing");
  }
  return path;
}

}  // namespace vornixpath
