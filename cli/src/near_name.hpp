#pragma once

#include <boost/optional/optional.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/path_problem.hpp>
#include <string>

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
  InUnreadableFolder,       ///< it may stand in a folder that could not be read
};

/// A file that is nearly meant, or a folder where it may stand.
struct NearName {
  Obstacle obstacle;
  foundation::storage::vfs::AbsoluteIRI location;
  std::size_t number;                                              ///< of its folder of the path, from 1
  std::u16string otherName;                                        ///< the name that means it; empty when there is none
  boost::optional<foundation::storage::vfs::AbsoluteIRI> askFrom;  ///< the folder from which the name means it
  std::string reason;                                              ///< why the folder could not be read; else empty
};

}  // namespace vornixpath
