#include "shadow_baseline.hpp"

#include <algorithm>
#include <array>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <tuple>
#include <vector>

#include "encoded_text.hpp"
#include "output.hpp"

namespace vornixpath {

using fl::filesystem::from_bytes;
using foundation::storage::vfs::AbsoluteIRI;

namespace {

constexpr std::string_view kFirstLine = "# shadowed names, version 1";
constexpr std::string_view kExplanation =
    "# Grade, folder that hides, hidden one, name, what is hidden there: separated by tabs, sorted.";

enum Field : std::size_t { kGrade, kHiding, kHidden, kName, kPlace, kFields };
using Line = std::array<std::string, kFields>;

// Everything below a folder begins like this.
std::string ExactBeginningBelow(const AbsoluteIRI& folder) {
  const std::string text = ExactText(folder);
  return text.ends_with('/') ? text : text + '/';
}

std::string FolderText(const AbsoluteIRI& location, const AbsoluteIRI& folder) {
  if (location == folder) return ".";
  const std::string text = ExactText(location);
  const std::string beginning = ExactBeginningBelow(folder);
  return text.starts_with(beginning) ? "./" + text.substr(beginning.size()) : text;
}

std::vector<std::string_view> SplitAt(char separator, std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(separator, begin), text.size());
    parts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

// What a line of people's text is in a message.
std::string InMessage(std::string_view text) { return Quoted(from_bytes(text)); }

// An identifier would read some of these as another folder, even one above.
bool IsNameOfFolder(std::string_view segment) {
  const auto name = DecodedText(segment);
  return name && !name->empty() && name != u"." && name != u"..";
}

AbsoluteIRI FolderFrom(std::string_view text, const AbsoluteIRI& folder) {
  if (text == ".") return folder;
  if (!text.starts_with("./")) return AbsoluteIRI(from_bytes(text));
  const std::string_view rest = text.substr(2);
  const auto names = SplitAt('/', rest);
  if (!std::all_of(names.begin(), names.end(), IsNameOfFolder)) {
    throw std::invalid_argument(InMessage(text) + " is no folder below");
  }
  return AbsoluteIRI(from_bytes(ExactBeginningBelow(folder).append(rest)));
}

std::u16string Decoded(std::string_view field, const std::string& complaint) {
  auto text = DecodedText(field);
  if (!text || text->empty()) throw std::invalid_argument(InMessage(field) + complaint);
  return *std::move(text);
}

AcceptedShadow ShadowIn(std::string_view line, const AbsoluteIRI& folder) {
  const std::vector<std::string_view> fields = SplitAt('\t', line);
  if (fields.size() != kFields) {
    throw std::invalid_argument("it should hold a grade, two folders, a name and a place, separated by tabs");
  }
  const auto grade = ShadowGradeFrom(fields[kGrade]);
  if (!grade) throw std::invalid_argument("there is no grade " + InMessage(fields[kGrade]));
  return {FolderFrom(fields[kHiding], folder), FolderFrom(fields[kHidden], folder),
          Decoded(fields[kName], " is no name"), Decoded(fields[kPlace], " is no place"), *grade};
}

bool IsControlByte(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return (value < 0x20 && byte != '\t') || value == 0x7F;
}

// Takes the next line off `rest`, without its end.
std::string_view TakeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  if (end == std::string_view::npos) {
    throw std::invalid_argument("it does not end with a newline, so it may be cut off");
  }
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (std::any_of(line.begin(), line.end(), IsControlByte)) {
    throw std::invalid_argument("it holds a control character other than a tab");
  }
  return line;
}

void TakeFirstLine(std::string_view& rest) {
  if (TakeLine(rest) == kFirstLine) return;
  throw std::invalid_argument("it should be \"" + std::string(kFirstLine) + '"');
}

}  // namespace

bool operator<(const AcceptedShadow& left, const AcceptedShadow& right) {
  return std::tie(left.hiding, left.hidden, left.name, left.place, left.grade) <
         std::tie(right.hiding, right.hidden, right.name, right.place, right.grade);
}

std::string BaselineText(const AcceptedShadows& shadows, const AbsoluteIRI& folder) {
  std::vector<Line> lines;
  for (const AcceptedShadow& shadow : shadows) {
    lines.push_back({std::string(NameOf(shadow.grade)), FolderText(shadow.hiding, folder),
                     FolderText(shadow.hidden, folder), EncodedText(shadow.name), EncodedText(shadow.place)});
  }
  // By what is written: the identifiers depend on the place of the tree.
  std::sort(lines.begin(), lines.end(), [](const Line& left, const Line& right) {
    return std::tie(left[kHiding], left[kHidden], left[kName], left[kPlace], left[kGrade]) <
           std::tie(right[kHiding], right[kHidden], right[kName], right[kPlace], right[kGrade]);
  });

  std::string text = std::string(kFirstLine) + '\n' + std::string(kExplanation) + '\n';
  for (const Line& line : lines) {
    for (const std::string& field : line) text.append(field).append(1, '\t');
    text.back() = '\n';
  }
  return text;
}

AcceptedShadows ParseBaseline(std::string_view text, const AbsoluteIRI& folder) {
  if (text.empty()) throw std::runtime_error("it is empty");
  AcceptedShadows shadows;
  std::size_t number = 1;
  try {
    TakeFirstLine(text);
    for (++number; !text.empty(); ++number) {
      const std::string_view line = TakeLine(text);
      if (!line.empty() && line.front() != '#') shadows.insert(ShadowIn(line, folder));
    }
  } catch (const std::invalid_argument& reason) {
    throw std::runtime_error("line " + std::to_string(number) + ": " + reason.what());
  } catch (const foundation::storage::vfs::Exception& reason) {
    throw std::runtime_error("line " + std::to_string(number) + ": " + reason.what());
  }
  return shadows;
}

bool BeginsLikeABaseline(std::string_view text) {
  const std::string_view firstLine = text.substr(0, text.find('\n'));
  return firstLine == kFirstLine || firstLine == std::string(kFirstLine) + '\r';
}

}  // namespace vornixpath
