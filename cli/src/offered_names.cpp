#include "offered_names.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <search_path_environment/folder_entry.hpp>

namespace vornixpath {

using fl::filesystem::fold_case;

std::u16string_view FolderName(const NamePlace& place) {
  const std::u16string_view folders = place.folders;
  return folders.substr(0, folders.size() - std::min<std::size_t>(folders.size(), 1));
}

void ForEachName(const Quorvex::PathManagement::IPathEntry& folder,
                 const std::function<void(std::u16string_view, std::u16string_view)>& visit) {
  if (const auto* const read = dynamic_cast<const Quorvex::PathEnvironment::FolderEntry*>(&folder)) {
    return read->ForEachName(visit);
  }
  const auto items = folder.GetItems();
  for (const auto& item : *items) visit(item->baseName, item->extension);
}

LetterCase LetterCaseIn(const Quorvex::PathManagement::IPathEntry& folder) {
  const auto matches = folder.GetFilenameComparator(Quorvex::PathManagement::FilenameMatchingPolicy::Native);
  return (*matches)(u"a", u"A") ? LetterCase::MakesNoDifference : LetterCase::Counts;
}

bool AnswersForClass(const NamePlace& place, std::u16string_view baseName, LetterCase letterCase) {
  if (!IsClassInNoPackage(place)) return false;
  const std::u16string_view className = FolderName(place);
  return letterCase == LetterCase::Counts ? className == baseName : fold_case(className) == fold_case(baseName);
}

void ForEachOffer(const NamePlace& place, TypedNames& typed,
                  const std::function<void(std::u16string_view, bool)>& visit) {
  const LetterCase letterCase = LetterCaseIn(*place.entry);
  ForEachName(*place.entry, [&](std::u16string_view baseName, std::u16string_view extension) {
    const std::u16string_view name = typed.NameFor(baseName, extension, letterCase);
    if (!name.empty()) visit(name, AnswersForClass(place, baseName, letterCase));
  });
}

std::u16string OfferedName(const NamePlace& place, std::u16string_view name, bool isForClass) {
  std::u16string folders = isForClass ? std::u16string() : place.folders;
  return folders.append(name);
}

}  // namespace vornixpath
