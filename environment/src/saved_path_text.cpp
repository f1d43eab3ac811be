#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_text.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <utility>

#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;

namespace {

constexpr std::string_view kFirstLine = "# search path, version 1";
constexpr std::string_view kExplanation =
    "# One folder a line, the first one before the others. Lines that begin with '#' are comments.";
constexpr std::u16string_view kFilePrefix = u"file://";

// An absolute path that is the rest of its identifier, character for character: most are, and need no more than a copy.
template <class Text>
bool IsPlainPath(const Text& path) {
  auto previous = typename Text::value_type('/');
  for (std::size_t i = 1; i < path.size(); ++i) {
    const auto unit = path[i];
    const bool isPlain = (unit >= 'a' && unit <= 'z') || (unit >= '0' && unit <= '9') || (unit >= 'A' && unit <= 'Z') ||
                         unit == '_' || unit == '-' || unit == '+' || unit == '@';
    const bool isFine = isPlain || ((unit == '/' || unit == '.') && previous != '/');
    if (!isFine) return false;
    previous = unit;
  }
  return path.starts_with('/') && previous != '/';
}

AbsoluteIRI FolderIn(std::string_view line) {
  if (IsPlainPath(line)) {
    std::u16string text(kFilePrefix.size() + line.size(), u'\0');
    std::copy(line.begin(), line.end(), std::copy(kFilePrefix.begin(), kFilePrefix.end(), text.begin()));
    return AbsoluteIRI(text);
  }

  const std::u16string text = fl::filesystem::from_bytes(line);
  if (text.front() != u'/' && !foundation::storage::vfs::hasIRIPrefix(text)) {
    throw std::invalid_argument(QuotedName(text) + " is neither an absolute path nor an identifier");
  }
  return PathManagement::GetIRIFromString(text);
}

// A path that people can read and that says all of the identifier.
bool IsReadable(std::u16string_view path) {
  if (!path.starts_with(u'/') || path.ends_with(u' ')) return false;
  for (std::size_t i = 0; i < path.size(); ++i) {
    const char16_t unit = path[i];
    if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == u'\u2028' || unit == u'\u2029') return false;
    if (unit < 0xD800 || unit > 0xDFFF) continue;
    const bool isPair = unit < 0xDC00 && i + 1 < path.size() && path[i + 1] >= 0xDC00 && path[i + 1] <= 0xDFFF;
    if (!isPair) return false;  // a byte that is no UTF-8
    ++i;
  }
  return true;
}

std::string IdentifierLine(const AbsoluteIRI& folder) {
  if (!folder.isRootless()) return fl::filesystem::to_bytes(folder.toString());
  throw foundation::storage::vfs::Exception("keep", folder, std::make_error_code(std::errc::invalid_argument),
                                            "it is relative to no folder");
}

std::string LineOf(const AbsoluteIRI& folder) {
  if (!folder.toString().starts_with(kFilePrefix)) return IdentifierLine(folder);
  try {
    const std::u16string path = PathManagement::GetStringFromIRI(folder);
    if (IsReadable(path)) return fl::filesystem::to_bytes(path);
  } catch (const foundation::storage::vfs::Exception&) {  // NOLINT(bugprone-empty-catch): no path says it
  }
  return IdentifierLine(folder);
}

void AppendLine(std::string& bytes, const AbsoluteIRI& folder) {
  const std::u16string_view text = folder.toString();
  const std::u16string_view path = text.substr(std::min(kFilePrefix.size(), text.size()));
  if (text.starts_with(kFilePrefix) && IsPlainPath(path)) {
    const std::size_t length = bytes.size();
    bytes.resize(length + path.size());
    std::transform(path.begin(), path.end(), bytes.begin() + static_cast<std::ptrdiff_t>(length),
                   [](char16_t unit) { return static_cast<char>(unit); });
  } else {
    bytes += LineOf(folder);
  }
  bytes.push_back('\n');
}

bool IsComment(std::string_view line) {
  return line.starts_with('#') ||
         std::all_of(line.begin(), line.end(), [](char byte) { return byte == ' ' || byte == '\t'; });
}

// Takes the next line off `rest`, without its end.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  if (end == std::string_view::npos)
    throw std::invalid_argument("it does not end with a newline, so it may be cut off");
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

void RequireNoControlCharacter(std::string_view line) {
  const auto isStray = [](char byte) {
    return (static_cast<unsigned char>(byte) < 0x20 && byte != '\t') || byte == 0x7F;
  };
  if (std::any_of(line.begin(), line.end(), isStray)) throw std::invalid_argument("it holds a control character");
}

void RequireFirstLine(std::string_view line) {
  if (line == kFirstLine) return;
  throw std::invalid_argument("it should be \"" + std::string(kFirstLine) + "\"");
}

// Of the lines above the first folder, those as far as the last blank one move to the beginning.
void MoveBeginning(std::string& beginning, std::string& lines) {
  const std::size_t length = ('\n' + lines).rfind("\n\n") + 1;  // npos + 1 is 0
  beginning += lines.substr(0, length);
  lines.erase(0, length);
}

}  // namespace

SavedPathText::SavedPathText() : beginning_(std::string(kFirstLine) + '\n' + std::string(kExplanation) + "\n\n") {}

SavedPathText SavedPathText::Parse(std::string_view bytes) {
  SavedPathText path;
  path.folders_.reserve(static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')));
  std::string& pending = path.end_;  // the comments since the last folder
  std::size_t number = 1;
  const auto takeFirstLine = [&] {
    RequireFirstLine(TakeLine(bytes));
    path.beginning_ = std::string(kFirstLine) + '\n';
  };
  const auto takeLine = [&] {
    const std::string_view line = TakeLine(bytes);
    RequireNoControlCharacter(line);
    if (IsComment(line)) {
      pending.append(line).push_back('\n');
      return;
    }
    AbsoluteIRI folder = FolderIn(line);
    if (path.folders_.empty()) MoveBeginning(path.beginning_, pending);
    if (!pending.empty()) path.comments_.emplace(path.folders_.size(), std::exchange(pending, {}));
    path.folders_.push_back(std::move(folder));
  };
  try {
    takeFirstLine();
    for (++number; !bytes.empty(); ++number) takeLine();
    if (path.folders_.empty()) MoveBeginning(path.beginning_, pending);
  } catch (const std::invalid_argument& reason) {
    throw SavedPathError(number, reason.what());
  } catch (const foundation::storage::vfs::Exception& reason) {
    throw SavedPathError(number, reason.what());
  }
  return path;
}

SavedPathText SavedPathText::WithFolders(Folders folders) const {
  boost::unordered_flat_map<AbsoluteIRI, const std::string*> comments;
  for (const auto& [place, lines] : comments_) comments.emplace(folders_[place], &lines);

  SavedPathText path;
  path.beginning_ = beginning_;
  path.end_ = end_;
  path.folders_ = std::move(folders);
  for (std::size_t i = 0; i < path.folders_.size() && !comments.empty(); ++i) {
    const auto found = comments.find(path.folders_[i]);
    if (found == comments.end()) continue;
    path.comments_.emplace(i, *found->second);
    comments.erase(found);
  }
  return path;
}

std::string SavedPathText::ToBytes() const {
  constexpr std::size_t usualLine = 48;
  std::string bytes;
  bytes.reserve(beginning_.size() + end_.size() + folders_.size() * usualLine);
  bytes += beginning_;
  auto comment = comments_.begin();
  for (std::size_t i = 0; i < folders_.size(); ++i) {
    if (comment != comments_.end() && comment->first == i) bytes += (comment++)->second;
    AppendLine(bytes, folders_[i]);
  }
  return bytes + end_;
}

}  // namespace Quorvex::PathEnvironment
