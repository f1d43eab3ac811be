#include <search_path_environment/toolbox_cache_error.hpp>

namespace Quorvex::PathEnvironment {

ToolboxCacheError::ToolboxCacheError(CacheRefusal refusal, const std::string& reason)
    : std::runtime_error(reason), refusal_(refusal) {}

ToolboxCacheError::~ToolboxCacheError() = default;

}  // namespace Quorvex::PathEnvironment
