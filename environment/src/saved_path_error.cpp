#include <search_path_environment/saved_path_error.hpp>

namespace Quorvex::PathEnvironment {

SavedPathError::SavedPathError(std::size_t line, const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

SavedPathError::SavedPathError(const std::string& file, const SavedPathError& error)
    : std::runtime_error("the saved path \"" + file + "\" cannot be used and was left as it is: " + error.what()),
      line_(error.line_) {}

SavedPathError::~SavedPathError() = default;

}  // namespace Quorvex::PathEnvironment
