#pragma once

#include <cstdint>

namespace Quorvex::PathManagement {

/// What kind of folder an entry of a search path is.
enum class PathEntryType : std::uint32_t {
  Main = 0,       ///< a plain folder
  Package = 1,    ///< a folder whose base name begins with '+'
  Class = 2,      ///< a folder whose base name begins with '@'
  Private = 3,    ///< the folder named `Constants::PrivateFolderStr`
  Auxiliary = 4,  ///< a special subfolder that its base name does not reveal
  Resources = 5,  ///< the folder named `Constants::ResourcesFolderStr`
};

}  // namespace Quorvex::PathManagement
