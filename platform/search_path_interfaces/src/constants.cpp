#include <search_path_interfaces/constants.hpp>

namespace Quorvex::PathManagement::Constants {

#ifdef _WIN32
const std::u16string VornixPathsepStr = u";";
const std::u16string PathnameSeparatorStr = u"/\\";
#else
const std::u16string VornixPathsepStr = u":";
const std::u16string PathnameSeparatorStr = u"/";
#endif
const std::u16string PrivateFolderStr = u"private";
const std::u16string ResourcesFolderStr = u"resources";

}  // namespace Quorvex::PathManagement::Constants
