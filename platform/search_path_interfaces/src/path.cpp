#include <search_path_interfaces/path.hpp>

namespace Quorvex::PathManagement {

IPath::~IPath() = default;

}  // namespace Quorvex::PathManagement
