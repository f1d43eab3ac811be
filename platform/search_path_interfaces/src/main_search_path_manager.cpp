#include <search_path_interfaces/main_search_path_manager.hpp>

namespace Quorvex::PathManagement {

IMainSearchPathManager::~IMainSearchPathManager() = default;

}  // namespace Quorvex::PathManagement
