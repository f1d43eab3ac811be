#include "wanted_name.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>

#include "looked_for.hpp"

namespace vornixpath {

using fl::filesystem::fold_case;

namespace {

bool Contains(const std::vector<std::u16string>& texts, const std::u16string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// "greet" and "greet.tar.gz" have the base name "greet".
bool BeginsWithBaseName(const std::u16string& fileName, const std::u16string& baseName) {
  if (baseName.empty() || fileName.compare(0, baseName.size(), baseName) != 0) return false;
  return fileName.size() == baseName.size() || fileName[baseName.size()] == u'.';
}

}  // namespace

WantedName::WantedName(const Quorvex::PathManagement::detail::SearchTarget& target, bool ignoringCase)
    : ignoringCase_(ignoringCase),
      baseName_(target.GetBaseName().substr(FolderPartOf(target.GetBaseName()).size())),
      foldedBaseName_(fold_case(baseName_)) {
  for (const std::u16string& extension : target.GetExtensions()) {
    names_.push_back(baseName_ + extension);
    foldedNames_.push_back(fold_case(names_.back()));
  }
}

NameMatch WantedName::MatchOf(const std::u16string& fileName) const {
  if (baseName_.empty()) return NameMatch::None;
  if (Contains(names_, fileName)) return NameMatch::Exact;
  if (Contains(foldedNames_, fold_case(fileName))) return ignoringCase_ ? NameMatch::Exact : NameMatch::OtherLetterCase;
  return HasOtherExtension(fileName) ? NameMatch::OtherExtension : NameMatch::None;
}

bool WantedName::HasOtherExtension(const std::u16string& fileName) const {
  if (ignoringCase_) return BeginsWithBaseName(fold_case(fileName), foldedBaseName_);
  return BeginsWithBaseName(fileName, baseName_);
}

}  // namespace vornixpath
