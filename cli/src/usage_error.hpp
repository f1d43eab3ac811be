#pragma once

#include <stdexcept>

namespace vornixpath {

/// The command line says nothing that can be done. The message names the offending text, safely for a terminal.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace vornixpath
