#include <fl/filesystem/path.hpp>
#include <search_path_utilities/lookup.hpp>

namespace Quorvex::PathManagement {

namespace {

std::u16string ExtensionOf(const std::u16string& name) {
  if (name.empty()) return {};
  return fl::filesystem::path(fl::filesystem::detail::make_native_form(name, true)).extension();
}

detail::SearchTarget SplitAtLastDot(const std::u16string& name) {
  const std::size_t cut = name.find_last_of(u"./");
  if (cut == std::u16string::npos || name[cut] == u'/') return detail::SearchTarget::Owning(name, u"");
  return detail::SearchTarget::Owning(name.substr(0, cut), name.substr(cut));
}

}  // namespace

detail::SearchTarget CreateSearchTargetWithExtensionInFilenamePreferred(const std::u16string& name,
                                                                        const std::vector<std::u16string>& extensions) {
  const bool hasExtension = !ExtensionOf(name).empty();
  const bool endsInDot = !name.empty() && name.back() == u'.';
  if (!hasExtension && !endsInDot && !extensions.empty()) return {name, extensions};
  return SplitAtLastDot(name);
}

}  // namespace Quorvex::PathManagement
