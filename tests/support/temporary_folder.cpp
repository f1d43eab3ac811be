#include <stdlib.h>

#include <cerrno>
#include <string>
#include <support/temporary_folder.hpp>
#include <system_error>

namespace Quorvex::PathManagement::support {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "spu-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace Quorvex::PathManagement::support
