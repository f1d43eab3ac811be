#include "empty_folders.hpp"

#include <search_path_utilities/lookup.hpp>
#include <set>

#include "entry_ptr.hpp"
#include "offered_names.hpp"
#include "typed_name.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::PathProblem;

bool HoldsName(const EntryPtr& folder, TypedNames& typed) {
  return folder->ForEachEntryInScope(Quorvex::PathManagement::VisibleScope, [&typed](const EntryPtr& entry) {
    const LetterCase letterCase = LetterCaseIn(*entry);
    bool isAny = false;
    ForEachName(*entry, [&](std::u16string_view baseName, std::u16string_view extension) {
      isAny = isAny || !typed.NameFor(baseName, extension, letterCase).empty();
    });
    return isAny;
  });
}

}  // namespace

std::vector<Finding> EmptyFolders(const ExaminedPath& examined, const std::vector<PathProblem>& troubles,
                                  const FolderRemoval& removal) {
  std::set<std::size_t> unknown;
  for (const PathProblem& trouble : troubles) unknown.insert(trouble.position);

  TypedNames typed(examined.extensions);
  std::vector<Finding> findings;
  const auto folders = examined.path.GetMainEntries();
  for (const EntryPtr& folder : *folders) {
    const std::size_t number = examined.numbers.NumberOf(*folder);
    if (unknown.contains(number - 1) || HoldsName(folder, typed)) continue;
    findings.push_back({FindingKind::EmptyFolder,
                        Severity::Note,
                        "nothing in it could be found",
                        {{folder->GetAbsoluteIRI(), number}},
                        removal.Of(folder->GetAbsoluteIRI(), number - 1)});
  }
  return findings;
}

}  // namespace vornixpath
