#pragma once

#include <search_path_interfaces/export.hpp>
#include <string>

/// Texts that every part of the system shares. They exist once per process.
namespace Quorvex::PathManagement::Constants {

/// Each character separates folders in a path string (beside ';', which always does): ":", on Windows ";".
extern SEARCH_PATH_INTERFACES_EXPORT const std::u16string VornixPathsepStr;

/// Each character separates the components of a pathname: "/", on Windows "/\".
extern SEARCH_PATH_INTERFACES_EXPORT const std::u16string PathnameSeparatorStr;

/// The base name of the private special subfolder: "private".
extern SEARCH_PATH_INTERFACES_EXPORT const std::u16string PrivateFolderStr;

/// The base name of the resources special subfolder: "resources".
extern SEARCH_PATH_INTERFACES_EXPORT const std::u16string ResourcesFolderStr;

}  // namespace Quorvex::PathManagement::Constants
