#include "changed_names.hpp"

#include <fl/filesystem/displayed_text.hpp>
#include <search_path_environment/folder_entry.hpp>
#include <search_path_utilities/lookup.hpp>
#include <set>
#include <utility>

#include "file_location.hpp"
#include "location_text.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::PathEntryType;

const std::vector<std::u16string> kExtensions = {u".vnx"};
using Names = std::set<std::u16string>;

// What people type for the file. One with a dot in it is typed with its extension: the dot would begin another one.
std::u16string NameToType(const std::u16string& baseName) {
  return baseName.find(u'.') == std::u16string::npos ? baseName : baseName + kExtensions.front();
}

// Alone, the name of a class means its file; in a package the class folder has to be named, too.
std::u16string NameOfClass(const std::u16string& qualifier, const std::u16string& name) {
  return qualifier.empty() ? NameToType(name) : qualifier + name + u"/" + NameToType(name);
}

// `qualifier` names the packages around the folder: "outer/inner/".
void CollectNames(const FolderEntry& folder, const std::u16string& qualifier, Names& names) {
  const auto items = folder.GetItems();
  for (const auto& item : *items) {
    if (item->extension == kExtensions.front()) names.insert(qualifier + NameToType(item->baseName));
  }
  for (const auto& child : folder.GetChildren()) {
    const PathEntryType kind = child->GetEntryType();
    const std::u16string bareName = child->GetLocation().getName().substr(1);
    if (kind == PathEntryType::Package) CollectNames(*child, qualifier + bareName + u"/", names);
    if (kind == PathEntryType::Class) names.insert(NameOfClass(qualifier, bareName));
  }
}

void CollectNamesAt(const AbsoluteIRI& folder, const FolderPath& path, Names& names) {
  const auto entry = path.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::Native);
  if (const auto read = std::dynamic_pointer_cast<const FolderEntry>(entry)) CollectNames(*read, u"", names);
}

std::optional<AbsoluteIRI> FileFor(const std::u16string& name, const FolderPath& path) {
  const auto target = Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, kExtensions);
  const auto found = Quorvex::PathManagement::FindFirstFileVisibleOnPath(path, target, FilenameMatchingPolicy::Native);
  if (!found) return std::nullopt;
  return LocationOf(*found);
}

}  // namespace

std::vector<ChangedName> ChangedNames(const FolderPath& before, const FolderPath& after,
                                      const std::vector<FolderChange>& changes) {
  Names names;
  for (const FolderChange& change : changes) {
    CollectNamesAt(change.folder, change.kind == ChangeKind::Removed ? before : after, names);
  }

  std::vector<ChangedName> changed;
  for (const std::u16string& name : names) {
    ChangedName candidate{name, FileFor(name, before), FileFor(name, after)};
    if (candidate.before != candidate.after) changed.push_back(std::move(candidate));
  }
  return changed;
}

std::string InWords(const ChangedName& change) {
  const auto inWords = [](const std::optional<AbsoluteIRI>& file) { return file ? ShownText(*file) : "nothing"; };
  return fl::filesystem::to_displayed_text(change.name) + ": " + inWords(change.before) + " -> " +
         inWords(change.after);
}

}  // namespace vornixpath
