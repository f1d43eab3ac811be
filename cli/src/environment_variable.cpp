#include "environment_variable.hpp"

#include <cstdlib>

namespace vornixpath {

std::optional<std::string> Variable(const char* name) {
  const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets variables
  if (value == nullptr || *value == '\0') return std::nullopt;
  return value;
}

}  // namespace vornixpath
