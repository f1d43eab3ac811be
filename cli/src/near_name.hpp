#pragma once

#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>
#include <vector>

namespace vornixpath {

/// What is in the way of a file that is nearly meant. Likelier ones come first.
enum class Obstacle {
  OtherLetterCase,          ///< its name differs in letter case
  OtherLetterCaseOfFolder,  ///< it is in reach but for the letter case of a folder's name
  OtherExtension,           ///< it has the base name, but none of the extensions looked for
  InPrivateFolder,          ///< it is seen by code in the folder around its private folder only
  InPackage,                ///< it stands in a package that was not named
  InClassFolder,            ///< it stands in the folder of a class that was not named
  InOtherFolder,            ///< it stands in a plain folder that the folders written do not match
  InResources,              ///< resources are no program files
  InPlainSubfolder,         ///< it stands in a plain subfolder of a folder of the path, which itself is not on it
};

/// A file that is nearly meant.
struct NearName {
  std::vector<Obstacle> obstacles;  ///< one, or that of its place and that of its name
  foundation::storage::vfs::AbsoluteIRI location;
  std::size_t number;                                              ///< of its folder of the path, from 1
  std::u16string otherName;                                        ///< a name that means it; empty when none was found
  boost::optional<foundation::storage::vfs::AbsoluteIRI> askFrom;  ///< the folder from which the name means it
  bool needsNoExtension = false;                                   ///< it means it when no extension is tried
};

}  // namespace vornixpath
