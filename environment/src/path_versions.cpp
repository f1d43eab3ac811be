#include "path_versions.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/utc_time.hpp>
#include <sstream>
#include <stdexcept>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "whole_file.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::ListedEntry;

namespace {

constexpr std::size_t kLargestVersion = std::size_t{1} << 30U;
constexpr std::u16string_view kDraft = u"draft";

// By EditKind.
constexpr std::array<std::string_view, 3> kWords = {"addition", "removal", "undo"};

std::uint64_t HashOf(std::string_view bytes) { return XXH3_64bits(bytes.data(), bytes.size()); }

std::u16string NameFor(std::uint64_t number, std::uint64_t hash) {
  std::ostringstream name;
  name << number << '-' << std::hex << hash;
  return fl::filesystem::from_bytes(name.str());
}

template <class Number>
std::optional<Number> NumberIn(std::string_view text, int base) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string FirstLineFor(const PathVersions::Edit& edit) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto kind = static_cast<std::size_t>(edit.kind);
  std::string line = "# replaced " + ToText(now) + " by " + std::string(kWords.at(kind));
  if (edit.kind == EditKind::Undo) line += " " + std::to_string(edit.undone);
  return line + '\n';
}

PathVersion FromFirstLine(const std::string& line) {
  std::istringstream words(line);
  std::string hash;
  std::string replaced;
  std::string time;
  std::string by;
  std::string kind;
  words >> hash >> replaced >> time >> by >> kind;
  const auto instant = TimeFromText(time);
  const auto* const word = std::find(kWords.begin(), kWords.end(), kind);
  PathVersion version;
  if (word != kWords.end()) version.kind = static_cast<EditKind>(word - kWords.begin());
  if (version.kind == EditKind::Undo) words >> version.undone;
  if (!words || hash != "#" || replaced != "replaced" || by != "by" || !instant || word == kWords.end()) {
    throw SavedPathError(1, "it does not tell what edit replaced this version");
  }
  version.time = *instant;
  return version;
}

std::vector<ListedEntry> EntriesOf(const IStorageProvider& storage, const AbsoluteIRI& folder) {
  try {
    return storage.List(folder).entries;
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
    return {};
  }
}

void CreateIfMissing(const IStorageProvider& storage, const AbsoluteIRI& folder) {
  try {
    storage.CreateFolder(folder);
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::file_exists) throw;
  }
}

}  // namespace

PathVersions::PathVersions(const IStorageProvider& storage, const AbsoluteIRI& folder)
    : storage_(storage), folder_(folder) {}

std::vector<PathVersions::File> PathVersions::List() const {
  std::vector<File> files;
  for (const ListedEntry& entry : EntriesOf(storage_, folder_)) {
    const std::string name = fl::filesystem::to_bytes(entry.name);
    const std::size_t dash = std::min(name.find('-'), name.size() - 1);
    const auto number = NumberIn<std::uint64_t>(std::string_view(name).substr(0, dash), 10);
    const auto hash = NumberIn<std::uint64_t>(std::string_view(name).substr(dash + 1), 16);
    if (number && hash) files.push_back({*number, *hash, folder_.getChild(entry.name)});
  }
  std::sort(files.begin(), files.end(), [](const File& left, const File& right) { return left.number < right.number; });
  return files;
}

std::vector<PathVersions::File> PathVersions::ListWithoutAborted(std::string_view current) const {
  std::vector<File> files = List();
  if (!files.empty() && files.back().hash == HashOf(current)) files.pop_back();
  return files;
}

AbsoluteIRI PathVersions::Keep(std::string_view bytes, const Edit& edit) const {
  CreateIfMissing(storage_, folder_);
  std::vector<File> files = List();
  const std::uint64_t hash = HashOf(bytes);
  if (!files.empty() && files.back().hash == hash) {
    RemoveIfThere(storage_, files.back().location);
    files.pop_back();
  }
  const std::size_t surplus = files.size() - std::min(files.size(), SavedPathFile::kVersions - 1);
  for (std::size_t i = 0; i < surplus; ++i) RemoveIfThere(storage_, files[i].location);

  const std::uint64_t number = files.empty() ? 1 : files.back().number + 1;
  const AbsoluteIRI file = folder_.getChild(NameFor(number, hash));
  ReplaceWholeFile(storage_, file, folder_.getChild(std::u16string(kDraft)), FirstLineFor(edit).append(bytes),
                   Durability::Whole);
  return file;
}

std::vector<PathVersion> PathVersions::Read(std::string_view current) const {
  std::vector<PathVersion> versions;
  for (const File& file : ListWithoutAborted(current)) versions.push_back(ReadVersion(file));
  return versions;
}

PathVersion PathVersions::ReadVersion(const File& file) const {
  const std::string bytes = ReadWholeFile(storage_, file.location, kLargestVersion).value_or("");
  const std::size_t lineEnd = std::min(bytes.find('\n'), bytes.size());
  const std::string_view kept = std::string_view(bytes).substr(std::min(lineEnd + 1, bytes.size()));
  try {
    PathVersion version = FromFirstLine(bytes.substr(0, lineEnd));
    if (HashOf(kept) != file.hash) throw SavedPathError(2, "what follows is not what was written");
    version.number = file.number;
    if (!kept.empty()) version.before = SavedPathText::Parse(kept);
    return version;
  } catch (const SavedPathError& error) {
    throw SavedPathError(fl::filesystem::to_displayed_text(file.location.toString()), error);
  }
}

}  // namespace Quorvex::PathEnvironment
