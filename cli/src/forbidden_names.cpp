#include "forbidden_names.hpp"

#include <search_path_utilities/lookup.hpp>
#include <unordered_set>
#include <utility>

#include "entry_ptr.hpp"
#include "offered_names.hpp"
#include "output.hpp"
#include "typed_name.hpp"
#include "windows_name.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;

class ForbiddenSearch {
 public:
  explicit ForbiddenSearch(const ExaminedPath& examined) : examined_(examined), typed_(examined.extensions) {}

  std::vector<Finding> Run() && {
    examined_.path.ForEachEntry(Quorvex::PathManagement::VisibleScope, [this](const EntryPtr& folder) {
      Visit(*folder);
      return false;
    });
    return std::move(findings_);
  }

 private:
  void Visit(const Quorvex::PathManagement::IPathEntry& folder) {
    const AbsoluteIRI location = folder.GetAbsoluteIRI();
    const std::size_t number = examined_.numbers.NumberOf(folder);
    AddIfForbidden(location.getName(), {location, number});

    const LetterCase letterCase = LetterCaseIn(folder);
    ForEachName(folder, [&](std::u16string_view baseName, std::u16string_view extension) {
      if (typed_.NameFor(baseName, extension, letterCase).empty()) return;
      std::u16string name(baseName);
      name += extension;
      if (!ReasonAgainst(name).empty()) AddIfForbidden(name, {location.getChild(name), number});
    });
  }

  void AddIfForbidden(const std::u16string& name, const FindingPlace& place) {
    const std::string reason = ReasonAgainst(name);
    if (reason.empty() || !told_.insert(place.location).second) return;
    findings_.push_back({FindingKind::ForbiddenName,
                         Severity::Note,
                         "Windows does not allow the name " + Quoted(name) + ": " + reason,
                         {place},
                         {"rename it"}});
  }

  const ExaminedPath& examined_;
  TypedNames typed_;
  std::unordered_set<AbsoluteIRI> told_;
  std::vector<Finding> findings_;
};

}  // namespace

std::vector<Finding> ForbiddenNames(const ExaminedPath& examined) { return ForbiddenSearch(examined).Run(); }

}  // namespace vornixpath
