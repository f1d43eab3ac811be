#include <search_path_interfaces/constants.hpp>
#include <search_path_utilities/lookup.hpp>

namespace Quorvex::PathManagement {

PathEntryType GetPathEntryTypeFromBaseName(const std::u16string& baseName) {
  if (baseName.empty()) return PathEntryType::Main;

  // The first character decides, so the two constants must begin with these letters.
  switch (baseName.front()) {
    case u'+':
      return PathEntryType::Package;
    case u'@':
      return PathEntryType::Class;
    case u'p':
      return baseName == Constants::PrivateFolderStr ? PathEntryType::Private : PathEntryType::Main;
    case u'r':
      return baseName == Constants::ResourcesFolderStr ? PathEntryType::Resources : PathEntryType::Main;
    default:
      return PathEntryType::Main;
  }
}

}  // namespace Quorvex::PathManagement
