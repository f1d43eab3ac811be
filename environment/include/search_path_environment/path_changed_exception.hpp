#pragma once

#include <search_path_environment/export.hpp>
#include <stdexcept>

namespace Quorvex::PathEnvironment {

/// A path was made from what the saved one no longer is: keeping it would undo somebody else's change.
class SEARCH_PATH_ENVIRONMENT_EXPORT PathChangedException : public std::runtime_error {
 public:
  PathChangedException();
  PathChangedException(const PathChangedException&) noexcept = default;
  PathChangedException& operator=(const PathChangedException&) noexcept = default;
  ~PathChangedException() override;
};

}  // namespace Quorvex::PathEnvironment
