#include <search_path_interfaces/path_entry.hpp>

namespace Quorvex::PathManagement {

IPathEntry::~IPathEntry() = default;

}  // namespace Quorvex::PathManagement
