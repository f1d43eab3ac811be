#include "typed_name.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>

namespace vornixpath {

using fl::filesystem::fold_case;

TypedNames::TypedNames(const std::vector<std::u16string>& extensions) : extensions_(extensions) {
  for (const std::u16string& extension : extensions) folded_.push_back(fold_case(extension));
}

std::u16string_view TypedNames::NameFor(std::u16string_view baseName, std::u16string_view extension,
                                        LetterCase letterCase) {
  if (baseName.find(u'.') == std::u16string::npos && IsListed(extension, letterCase)) return baseName;

  // An extension may hold several dots: then the item is cut at another place. A dot in front begins none.
  room_.assign(baseName).append(extension);
  const std::size_t dot = std::min(room_.find(u'.', 1), room_.size());
  const std::u16string_view fullName = room_;
  const std::u16string_view name = fullName.substr(0, dot);
  if (name != u"." && IsListed(fullName.substr(dot), letterCase)) return name;
  return EndsInListed(fullName, letterCase) ? fullName : std::u16string_view();
}

bool TypedNames::IsListed(std::u16string_view extension, LetterCase letterCase) const {
  if (std::find(extensions_.begin(), extensions_.end(), extension) != extensions_.end()) return true;
  if (letterCase == LetterCase::Counts) return false;
  return std::find(folded_.begin(), folded_.end(), fold_case(extension)) != folded_.end();
}

bool TypedNames::EndsInListed(std::u16string_view fullName, LetterCase letterCase) const {
  const auto endsInOneOf = [](std::u16string_view name, const std::vector<std::u16string>& extensions) {
    return std::any_of(extensions.begin(), extensions.end(), [&](const std::u16string& extension) {
      return !extension.empty() && name.size() > extension.size() && name.ends_with(extension);
    });
  };
  if (endsInOneOf(fullName, extensions_)) return true;
  return letterCase == LetterCase::MakesNoDifference && endsInOneOf(fold_case(fullName), folded_);
}

}  // namespace vornixpath
