#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <optional>
#include <search_path_environment/path_snapshot.hpp>
#include <search_path_environment/utc_time.hpp>
#include <search_path_utilities/lookup.hpp>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "folder_names.hpp"
#include "folder_reader.hpp"
#include "former_entries.hpp"
#include "main_entries.hpp"
#include "quoted_name.hpp"
#include "special_subfolders.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PathManagement::PathEntryType;

namespace {

using FolderEntryPtr = std::shared_ptr<const FolderEntry>;

constexpr std::string_view kSnapshotFirstLine = "vornixpath-snapshot 1";
constexpr std::string_view kHexDigits = "0123456789abcdef";

struct NamedKind {
  std::string_view name;
  ProblemKind kind;
};
constexpr std::array kKinds = {
    NamedKind{"missing", ProblemKind::Missing},       NamedKind{"not-a-folder", ProblemKind::NotAFolder},
    NamedKind{"unreadable", ProblemKind::Unreadable}, NamedKind{"loop", ProblemKind::Loop},
    NamedKind{"too-deep", ProblemKind::TooDeep},
};

std::string ChecksumOf(std::string_view bytes) {
  const XXH64_hash_t hash = XXH3_64bits(bytes.data(), bytes.size());
  std::string text;
  for (unsigned shift = 64; shift > 0; shift -= 4) text.push_back(kHexDigits[(hash >> (shift - 4)) & 0xFU]);
  return text;
}

// Of the bytes of a name: those that would end or hide a line.
bool NeedsEscape(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F || byte == '%'; }

class SnapshotWriter {
 public:
  std::string Write(const PathSnapshot& snapshot) {
    Line(kSnapshotFirstLine);
    Line("taken", ToText(snapshot.taken));
    const auto entries = snapshot.path->GetMainEntries();
    for (std::size_t i = 0; i < entries->size(); ++i) {
      const auto& entry = static_cast<const FolderEntry&>(*(*entries)[i]);
      Line("folder", PlaceOf(snapshot.path->GetPositions()[i], entry.GetLocation()));
      Content(entry);
    }
    for (const PathProblem& problem : snapshot.path->GetProblems()) {
      if (problem.kind == ProblemKind::Repeated) Line("repeated", PlaceOf(problem.position, problem.location));
    }
    const std::string checksum = ChecksumOf(bytes_);
    Line("checksum", checksum);
    return std::move(bytes_);
  }

 private:
  void Line(std::string_view text) { bytes_.append(text).push_back('\n'); }
  void Line(std::string_view word, std::string_view rest) {
    bytes_.append(word).push_back(' ');
    Line(rest);
  }

  static std::string PlaceOf(std::size_t position, const AbsoluteIRI& location) {
    return std::to_string(position + 1) + ' ' + fl::filesystem::to_bytes(location.toString());
  }

  static std::string Escaped(std::u16string_view name) {
    std::string escaped;
    for (const char byte : fl::filesystem::to_bytes(name)) {
      if (!NeedsEscape(byte)) {
        escaped.push_back(byte);
        continue;
      }
      const auto value = static_cast<unsigned char>(byte);
      escaped.append({'%', kHexDigits[value >> 4U], kHexDigits[value & 0xFU]});
    }
    return escaped;
  }

  static std::string TextOf(const std::error_code& error) {
    if (!error) return "none";
    const bool isKnownElsewhere =
        error.category() == std::generic_category() || error.category() == std::system_category();
    if (!isKnownElsewhere) return TextOf(std::make_error_code(std::errc::io_error));
    return std::string(error.category().name()) + ':' + std::to_string(error.value());
  }

  void Problem(const PathProblem& problem) {
    const auto named =
        std::find_if(kKinds.begin(), kKinds.end(), [&](const NamedKind& known) { return known.kind == problem.kind; });
    Line("problem", std::string(named->name) + ' ' + TextOf(problem.error) + ' ' +
                        fl::filesystem::to_bytes(problem.location.toString()));
  }

  void Content(const FolderEntry& entry) {
    if (entry.GetCanonicalLocation() != entry.GetLocation()) {
      Line("canonical", fl::filesystem::to_bytes(entry.GetCanonicalLocation().toString()));
    }
    if (!entry.ComparesExactly(PathManagement::FilenameMatchingPolicy::Native)) Line("ignores-case");
    for (const PathProblem& problem : entry.GetProblems()) Problem(problem);
    const FolderNames::View& names = entry.GetNames().GetView();
    for (std::size_t i = 0; i < names.size(); ++i) Line("file", Escaped(names.FullName(i).ToString()));
    for (const FolderEntryPtr& child : entry.GetChildren()) {
      Line("subfolder", Escaped(child->GetLocation().getName()));
      Content(*child);
    }
    Line("end");
  }

  std::string bytes_;
};

// A line taken apart: "file greet.vnx" is the word "file" and the rest.
struct Entry {
  std::string_view word;
  std::string_view rest;
};

[[noreturn]] void Refuse(const std::string& reason) { throw std::invalid_argument(reason); }

std::string Quoted(std::string_view bytes) { return QuotedName(fl::filesystem::from_bytes(bytes)); }

class Lines {
 public:
  explicit Lines(std::string_view bytes) : rest_(bytes) { Next(); }

  [[nodiscard]] std::size_t Number() const noexcept { return number_; }
  [[nodiscard]] bool IsAtEnd() const noexcept { return isAtEnd_; }
  [[nodiscard]] const Entry& Current() const noexcept { return current_; }
  [[nodiscard]] bool Is(std::string_view word) const noexcept { return !isAtEnd_ && current_.word == word; }

  void Next() {
    ++number_;
    isAtEnd_ = rest_.empty();
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    const std::size_t blank = std::min(line.find(' '), line.size());
    current_ = {line.substr(0, blank), line.substr(std::min(blank + 1, line.size()))};
  }

  // What follows `word` on the current line, which is left behind.
  std::string_view Take(std::string_view word) {
    if (!Is(word)) Refuse(isAtEnd_ ? "it ends too early" : Quoted(current_.word) + " cannot stand here");
    const std::string_view rest = current_.rest;
    Next();
    return rest;
  }

 private:
  std::string_view rest_;
  std::size_t number_ = 0;
  bool isAtEnd_ = false;
  Entry current_;
};

template <class Number>
Number NumberFrom(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) Refuse(Quoted(text) + " is no number");
  return number;
}

// The part of `rest` before the first blank, taken off it.
std::string_view TakeWord(std::string_view& rest) {
  const std::size_t blank = rest.find(' ');
  if (blank == std::string_view::npos) Refuse("something is missing after " + Quoted(rest));
  const std::string_view word = rest.substr(0, blank);
  rest.remove_prefix(blank + 1);
  return word;
}

AbsoluteIRI LocationFrom(std::string_view text) {
  AbsoluteIRI location(fl::filesystem::from_bytes(text));
  if (location.isRootless()) Refuse(Quoted(text) + " is relative to no folder");
  return location;
}

std::u16string NameFrom(std::string_view escaped) {
  std::string bytes;
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] != '%') {
      bytes.push_back(escaped[i]);
      continue;
    }
    unsigned value = 0;
    const char* const digits = escaped.data() + i + 1;
    const char* const end = escaped.data() + std::min(i + 3, escaped.size());
    if (end - digits != 2 || std::from_chars(digits, end, value, 16).ptr != end)
      Refuse(Quoted(escaped) + " has a '%' too many");
    bytes.push_back(static_cast<char>(value));
    i += 2;
  }
  const bool isName = !bytes.empty() && bytes != "." && bytes != ".." && bytes.find('/') == std::string::npos &&
                      bytes.find('\0') == std::string::npos;
  if (!isName) Refuse(Quoted(escaped) + " is no file name");
  return fl::filesystem::from_bytes(bytes);
}

std::error_code ErrorFrom(std::string_view text) {
  if (text == "none") return {};
  for (const auto* const category : {&std::generic_category(), &std::system_category()}) {
    const std::string prefix = std::string(category->name()) + ':';
    if (!text.starts_with(prefix)) continue;
    const std::error_code error(NumberFrom<int>(text.substr(prefix.size())), *category);
    if (error) return error;
  }
  Refuse(Quoted(text) + " is no error");
}

ProblemKind KindFrom(std::string_view text) {
  const auto named =
      std::find_if(kKinds.begin(), kKinds.end(), [&](const NamedKind& known) { return known.name == text; });
  if (named == kKinds.end()) Refuse(Quoted(text) + " is no kind of problem");
  return named->kind;
}

// Positions of one list, which go up and are nobody else's.
class Positions {
 public:
  std::size_t Take(std::string_view& rest, std::unordered_set<std::size_t>& taken) {
    const auto number = NumberFrom<std::size_t>(TakeWord(rest));
    if (number <= last_ || !taken.insert(number).second) {
      Refuse(std::to_string(number) + " is not the place of a further folder");
    }
    last_ = number;
    return number - 1;
  }

 private:
  std::size_t last_ = 0;
};

class SnapshotReader {
 public:
  SnapshotReader(std::string_view bytes, const FolderPath* predecessor)
      : lines_(bytes), former_(predecessor == nullptr ? std::vector<FolderEntryPtr>() : MainEntriesOf(*predecessor)) {}

  [[nodiscard]] std::size_t LineNumber() const noexcept { return lines_.Number(); }

  PathSnapshot Read() {
    RequireFirstLine();
    const std::string time(lines_.Current().rest);
    const auto taken = TimeFromText(time);
    if (!taken) Refuse(Quoted(time) + " is no time");
    lines_.Take("taken");

    while (lines_.Is("folder")) ReadMain();
    while (lines_.Is("repeated")) ReadRepeat();
    lines_.Take("checksum");
    if (!lines_.IsAtEnd()) Refuse("something stands after the checksum");
    return {std::make_shared<const FolderPath>(folders_, std::move(problems_)), *taken};
  }

 private:
  void RequireFirstLine() {
    const Entry line = lines_.Current();
    if (line.word != "vornixpath-snapshot") Refuse("this is no snapshot of a path");
    if (line.rest != "1") Refuse("a snapshot of version " + Quoted(line.rest) + " is not understood here");
    lines_.Next();
  }

  void ReadMain() {
    std::string_view rest = lines_.Current().rest;
    const std::size_t position = mainPositions_.Take(rest, takenPositions_);
    const AbsoluteIRI location = LocationFrom(rest);
    if (!mains_.insert(location).second) Refuse(Quoted(rest) + " stands here already");
    lines_.Next();
    const FolderEntryPtr former = former_.Find(location);
    folders_.push_back({former_.FormerIfEqualTo(ReadFolder(location, PathEntryType::Main, former.get(), 0)), position});
  }

  void ReadRepeat() {
    std::string_view rest = lines_.Current().rest;
    const std::size_t position = repeatPositions_.Take(rest, takenPositions_);
    problems_.push_back({LocationFrom(rest), ProblemKind::Repeated, {}, position});
    lines_.Next();
  }

  FolderEntryPtr ReadFolder(const AbsoluteIRI& location, PathEntryType kind, const FolderEntry* former,
                            std::size_t depth) {
    FolderEntry::Contents contents{location, location, kind, true, {}, {}, {}};
    if (lines_.Is("canonical")) {
      contents.canonicalLocation = LocationFrom(lines_.Current().rest);
      lines_.Next();
    }
    if (lines_.Is("ignores-case")) {
      contents.comparesNamesExactly = false;
      lines_.Next();
    }
    for (; lines_.Is("problem"); lines_.Next()) contents.problems.push_back(ReadProblem());
    for (; lines_.Is("file"); lines_.Next()) contents.files.push_back(NameFrom(lines_.Current().rest));
    ReadSubfolders(contents, FormerEntries::Below(former), depth);
    lines_.Take("end");
    return FolderEntry::Create(std::move(contents));
  }

  void ReadSubfolders(FolderEntry::Contents& contents, const FormerEntries& former, std::size_t depth) {
    std::unordered_set<AbsoluteIRI> known;
    while (lines_.Is("subfolder")) {
      const std::string_view text = lines_.Current().rest;
      const std::u16string name = NameFrom(text);
      const PathEntryType kind = PathManagement::GetPathEntryTypeFromBaseName(name);
      const AbsoluteIRI location = contents.location.getChild(name);
      if (!MayHold(contents.kind, kind)) Refuse(Quoted(text) + " cannot be a subfolder here");
      if (!known.insert(location).second) Refuse(Quoted(text) + " stands here already");
      if (depth > kMaximumDepth) Refuse("folders are nested too deeply");
      lines_.Next();
      Place(former.FormerIfEqualTo(ReadFolder(location, kind, former.Find(location).get(), depth + 1)),
            contents.subfolders);
    }
    SortByName(contents.subfolders);
  }

  [[nodiscard]] PathProblem ReadProblem() const {
    std::string_view rest = lines_.Current().rest;
    const ProblemKind kind = KindFrom(TakeWord(rest));
    const std::error_code error = ErrorFrom(TakeWord(rest));
    return {LocationFrom(rest), kind, error};
  }

  Lines lines_;
  FormerEntries former_;
  std::vector<FolderPath::Folder> folders_;
  std::vector<PathProblem> problems_;
  std::unordered_set<AbsoluteIRI> mains_;
  Positions mainPositions_;
  Positions repeatPositions_;
  std::unordered_set<std::size_t> takenPositions_;
};

// Before anything is understood: most damage shows here, and what is read afterwards is what was written.
void RequireChecksum(std::string_view bytes) {
  constexpr std::string_view word = "\nchecksum ";
  const std::size_t place = bytes.rfind(word);
  if (place == std::string_view::npos) throw SnapshotError(1, "this is no snapshot of a path, or it was cut off");
  const std::string_view before = bytes.substr(0, place + 1);
  if (bytes.substr(place + word.size()) == ChecksumOf(before) + '\n') return;
  const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
  throw SnapshotError(line, "the checksum is that of something else: the snapshot is damaged");
}

}  // namespace

SnapshotError::SnapshotError(std::size_t line, const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

SnapshotError::SnapshotError(const std::string& file, const SnapshotError& error)
    : std::runtime_error("the snapshot \"" + file + "\" cannot be used: " + error.what()), line_(error.line_) {}

SnapshotError::~SnapshotError() = default;

std::string PathSnapshot::ToBytes() const { return SnapshotWriter().Write(*this); }

PathSnapshot PathSnapshot::Parse(std::string_view bytes, const FolderPath* predecessor) {
  RequireChecksum(bytes);
  SnapshotReader reader(bytes, predecessor);
  try {
    return reader.Read();
  } catch (const std::invalid_argument& reason) {
    throw SnapshotError(reader.LineNumber(), reason.what());
  } catch (const foundation::storage::vfs::Exception& reason) {
    throw SnapshotError(reader.LineNumber(), reason.what());
  }
}

}  // namespace Quorvex::PathEnvironment
