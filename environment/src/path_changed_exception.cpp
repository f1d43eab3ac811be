#include <search_path_environment/path_changed_exception.hpp>

namespace Quorvex::PathEnvironment {

PathChangedException::PathChangedException()
    : std::runtime_error("the search path has changed since it was read: read it again, and edit what it is now") {}

PathChangedException::~PathChangedException() = default;

}  // namespace Quorvex::PathEnvironment
