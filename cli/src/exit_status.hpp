#pragma once

namespace vornixpath {

/// What the tool tells its caller.
enum class ExitStatus : int {
  Yes = 0,          ///< found, the same, done
  No = 1,           ///< not found, different, refused
  WrongUsage = 2,   ///< the command line says nothing that can be done
  Incomplete = 3,   ///< answered, but under --strict, and a folder could not be read
  CouldNotWork = 4  ///< something outside the command line was in the way
};

}  // namespace vornixpath
