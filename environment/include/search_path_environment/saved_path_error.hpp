#pragma once

#include <cstddef>
#include <search_path_environment/export.hpp>
#include <stdexcept>
#include <string>

namespace Quorvex::PathEnvironment {

/// What stands where a saved path should is damaged or something else. It was left as it is.
class SEARCH_PATH_ENVIRONMENT_EXPORT SavedPathError : public std::runtime_error {
 public:
  /// "line 3: "x" is neither an absolute path nor an identifier".
  SavedPathError(std::size_t line, const std::string& reason);
  /// The same of the file `file`, which is shown as it is.
  SavedPathError(const std::string& file, const SavedPathError& error);
  SavedPathError(const SavedPathError&) noexcept = default;
  SavedPathError& operator=(const SavedPathError&) noexcept = default;
  ~SavedPathError() override;

  /// Counted from 1.
  [[nodiscard]] std::size_t GetLine() const noexcept { return line_; }

 private:
  std::size_t line_;
};

}  // namespace Quorvex::PathEnvironment
