#include "path_versions.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/utc_time.hpp>
#include <search_path_environment/whole_file.hpp>
#include <search_path_utilities/path_editing.hpp>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "folder_making.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::ListedEntry;

namespace {

constexpr std::u16string_view kDraft = u"draft";

// By EditKind.
constexpr std::array<std::string_view, 3> kWords = {"addition", "removal", "undo"};

std::uint64_t HashOf(std::string_view bytes) { return XXH3_64bits(bytes.data(), bytes.size()); }

std::u16string NameFor(std::uint64_t number, std::uint64_t hash) {
  std::array<char, 16> digits = {};
  const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
  return fl::filesystem::from_bytes(std::to_string(number) + '-' +
                                    std::string(static_cast<const char*>(digits.data()), end));
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

std::vector<std::string_view> WordsOf(std::string_view line) {
  std::vector<std::string_view> words;
  while (!line.empty()) {
    const std::size_t end = std::min(line.find(' '), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return words;
}

PathVersion FromFirstLine(std::string_view line) {
  const std::vector<std::string_view> words = WordsOf(line);  // # replaced TIME by KIND [NUMBER]
  const auto wordAt = [&words](std::size_t place) { return place < words.size() ? words[place] : std::string_view(); };
  const auto* const kind = std::find(kWords.begin(), kWords.end(), wordAt(4));
  const auto time = TimeFromText(std::string(wordAt(2)));
  const bool isUndo = wordAt(4) == kWords.back();
  const auto undone = isUndo ? NumberIn<std::uint64_t>(wordAt(5), 10) : 0;
  if (wordAt(0) != "#" || wordAt(1) != "replaced" || !time || kind == kWords.end() || !undone) {
    throw SavedPathError(1, "it does not tell what edit replaced this version");
  }
  PathVersion version;
  version.kind = static_cast<EditKind>(kind - kWords.begin());
  version.undone = *undone;
  version.time = *time;
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

}  // namespace

PathVersions::PathVersions(const IStorageProvider& storage, const AbsoluteIRI& folder)
    : storage_(storage), folder_(folder) {}

std::vector<PathVersions::File> PathVersions::List() const {
  std::vector<File> files;
  for (const ListedEntry& entry : EntriesOf(storage_, folder_)) {
    if (entry.kind != FileKind::File) continue;
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
  MakeFolder(storage_, folder_);
  std::vector<File> files = List();
  const std::uint64_t hash = HashOf(bytes);
  if (!files.empty() && files.back().hash == hash) {
    RemoveIfThere(storage_, files.back().location);
    files.pop_back();
  }
  const std::uint64_t number = files.empty() ? 1 : files.back().number + 1;
  const AbsoluteIRI file = folder_.getChild(NameFor(number, hash));
  ReplaceWholeFile(storage_, file, folder_.getChild(std::u16string(kDraft)), {FirstLineFor(edit), bytes},
                   Durability::Whole);
  const std::size_t surplus = files.size() - std::min(files.size(), SavedPathFile::kVersions - 1);
  for (std::size_t i = 0; i < surplus; ++i) RemoveIfThere(storage_, files[i].location);
  return file;
}

std::vector<PathVersion> PathVersions::Read(std::string_view current) const {
  std::vector<PathVersion> versions;
  for (const File& file : ListWithoutAborted(current)) {
    if (auto version = ReadVersion(file)) versions.push_back(*std::move(version));
  }
  return versions;
}

std::optional<PathVersion> PathVersions::ReadVersion(const File& file) const {
  const auto bytes = ReadWholeFile(storage_, file.location);
  if (!bytes) return std::nullopt;  // dropped since it was listed

  const std::size_t lineEnd = std::min(bytes->find('\n'), bytes->size());
  const std::string_view kept = std::string_view(*bytes).substr(std::min(lineEnd + 1, bytes->size()));
  PathVersion version;
  try {
    version = FromFirstLine(std::string_view(*bytes).substr(0, lineEnd));
    if (HashOf(kept) != file.hash) throw SavedPathError(2, "what follows is not what was written");
    if (!kept.empty()) version.before = SavedPathText::Parse(kept);
  } catch (const SavedPathError& error) {
    version.damage.emplace(fl::filesystem::to_displayed_text(PathManagement::GetStringFromIRI(file.location)), error);
  }
  version.number = file.number;
  return version;
}

}  // namespace Quorvex::PathEnvironment
