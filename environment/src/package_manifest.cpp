#include <algorithm>
#include <array>
#include <cmath>
#include <fl/filesystem/path.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <initializer_list>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_environment/package_manifest.hpp>
#include <search_path_interfaces/constants.hpp>
#include <utility>

#include "manifest_json.hpp"
#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using PackageRegistry::PackagePathFolder;
using PackageRegistry::PackageProperty;

namespace {

[[noreturn]] void Refuse(std::size_t line, const std::string& reason) { throw ManifestError(line, 0, reason); }

std::string KindOf(const JsonValue& value) {
  // As the alternatives of the content.
  constexpr std::array kinds = {"null", "a boolean", "a number", "a number", "a string", "an array", "an object"};
  return kinds[value.content.index()];
}

template <class Kind>
const Kind& As(const JsonValue& value, const std::string& what, const std::string& wanted) {
  const Kind* const content = std::get_if<Kind>(&value.content);
  if (content == nullptr) Refuse(value.line, what + " is " + KindOf(value) + ", not " + wanted);
  return *content;
}

const std::u16string& NonEmptyText(const JsonValue& value, const std::string& what) {
  const auto& text = As<std::u16string>(value, what, "a string");
  if (text.empty()) Refuse(value.line, what + " is empty");
  return text;
}

/// The members of the object that a manifest is.
class Fields {
 public:
  Fields(const JsonValue& document, std::initializer_list<std::u16string_view> known)
      : members_(As<JsonValue::Object>(document, "the manifest", "an object")), line_(document.line) {
    for (const JsonMember& member : members_) {
      if (std::find(known.begin(), known.end(), member.name) == known.end()) {
        Refuse(member.line, "there is no field " + QuotedName(member.name));
      }
    }
  }

  /// Null when there is none.
  [[nodiscard]] const JsonMember* Find(std::u16string_view name) const {
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [name](const JsonMember& member) { return member.name == name; });
    return found == members_.end() ? nullptr : &*found;
  }
  [[nodiscard]] const JsonMember& Require(std::u16string_view name) const {
    const JsonMember* const found = Find(name);
    if (found == nullptr) Refuse(line_, "the field " + QuotedName(name) + " is missing");
    return *found;
  }
  [[nodiscard]] std::size_t GetLine() const { return line_; }

 private:
  const JsonValue::Object& members_;
  std::size_t line_;
};

bool Flag(const JsonMember& field) { return As<bool>(field.value, QuotedName(field.name), "a boolean"); }

const std::u16string& NonEmptyText(const JsonMember& field) {
  return NonEmptyText(field.value, QuotedName(field.name));
}

AbsoluteIRI LocationIn(const std::u16string& text, const AbsoluteIRI& base, std::size_t line) {
  try {
    return LocationFromText(text, base.toString());
  } catch (const foundation::storage::vfs::Exception& failure) {
    Refuse(line, failure.what());
  }
}

// By its text: what stands in the folders, links too, is the package's own affair.
bool IsBelowItsRoot(std::u16string_view folder) {
  if (foundation::storage::vfs::hasIRIPrefix(std::u16string(folder))) return false;
  if (!fl::filesystem::detail::extract_root_path(std::u16string(folder)).empty()) return false;
  const std::u16string& separators = PathManagement::Constants::PathnameSeparatorStr;
  for (std::size_t begin = 0; begin <= folder.size();) {
    const std::size_t end = std::min(folder.find_first_of(separators, begin), folder.size());
    if (folder.substr(begin, end - begin) == u"..") return false;
    begin = end + 1;
  }
  return true;
}

std::vector<PackagePathFolder> PathFoldersFrom(const JsonMember& field, const AbsoluteIRI& root) {
  std::vector<PackagePathFolder> folders;
  for (const JsonValue& element : As<JsonValue::Array>(field.value, QuotedName(field.name), "an array")) {
    const std::u16string& folder = NonEmptyText(element, "a path folder");
    if (!IsBelowItsRoot(folder)) {
      Refuse(element.line, "the path folder " + QuotedName(folder) + " is not named from the root down");
    }
    folders.push_back({LocationIn(folder, root, element.line)});
  }
  return folders;
}

PackageProperty PropertyFrom(const JsonMember& member) {
  const std::string what = "the property " + QuotedName(member.name);
  const auto& content = member.value.content;
  if (const auto* const flag = std::get_if<bool>(&content)) return *flag;
  if (const auto* const number = std::get_if<std::int64_t>(&content)) return *number;
  if (const auto* const text = std::get_if<std::u16string>(&content)) return *text;
  if (const auto* const number = std::get_if<double>(&content)) {
    if (!std::isfinite(*number)) Refuse(member.value.line, what + " is too large a number");
    return *number;
  }
  Refuse(member.value.line, what + " is " + KindOf(member.value) + ", not a boolean, a number or a string");
}

std::map<std::u16string, PackageProperty, std::less<>> PropertiesFrom(const JsonMember& field) {
  std::map<std::u16string, PackageProperty, std::less<>> properties;
  for (const JsonMember& member : As<JsonValue::Object>(field.value, QuotedName(field.name), "an object")) {
    properties.emplace(member.name, PropertyFrom(member));
  }
  return properties;
}

// A package is of one kind or the other.
void RequireOneKind(const Fields& fields, const JsonMember* pathFolders, bool isRootFolderPackage) {
  if (pathFolders != nullptr && isRootFolderPackage) {
    Refuse(pathFolders->line, "a root-folder package has no \"pathFolders\"");
  }
  if (pathFolders == nullptr && !isRootFolderPackage) {
    Refuse(fields.GetLine(), "there is neither \"pathFolders\" nor a \"rootFolderPackage\" that is true");
  }
}

}  // namespace

ManifestError::ManifestError(std::size_t line, std::size_t column, const std::string& reason)
    : std::runtime_error(reason), line_(line), column_(column) {}

ManifestError::~ManifestError() = default;

PackageManifest PackageManifest::Parse(std::string_view bytes, const AbsoluteIRI& folder) {
  const JsonValue document = ParseJson(bytes);
  const Fields fields(document,
                      {u"component", u"enabled", u"root", u"rootFolderPackage", u"pathFolders", u"properties"});
  const JsonMember& component = fields.Require(u"component");
  const JsonMember& root = fields.Require(u"root");
  PackageManifest manifest{VornixComponents::ComponentIdentifier(NonEmptyText(component)),
                           component.value.line,
                           Flag(fields.Require(u"enabled")),
                           false,
                           LocationIn(NonEmptyText(root), folder, root.value.line),
                           {},
                           {}};
  if (const JsonMember* const isRootFolderPackage = fields.Find(u"rootFolderPackage")) {
    manifest.isRootFolderPackage = Flag(*isRootFolderPackage);
  }
  const JsonMember* const pathFolders = fields.Find(u"pathFolders");
  RequireOneKind(fields, pathFolders, manifest.isRootFolderPackage);
  if (pathFolders != nullptr) manifest.pathFolders = PathFoldersFrom(*pathFolders, manifest.rootFolder);
  if (const JsonMember* const properties = fields.Find(u"properties"))
    manifest.properties = PropertiesFrom(*properties);
  return manifest;
}

}  // namespace Quorvex::PathEnvironment
