#pragma once

#include <filesystem>

namespace Quorvex::PathManagement::support {

/// A new, empty, real folder, spelled canonically, which goes with all that is in it when this object goes.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  [[nodiscard]] const std::filesystem::path& GetPath() const noexcept { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace Quorvex::PathManagement::support
