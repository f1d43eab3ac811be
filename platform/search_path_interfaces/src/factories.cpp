#include <search_path_interfaces/factories.hpp>

namespace Quorvex::PathManagement {

IPathEntryFactory::~IPathEntryFactory() = default;
IPathFactory::~IPathFactory() = default;

}  // namespace Quorvex::PathManagement
