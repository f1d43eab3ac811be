#pragma once

// A folder on disk for one test, made of plain system calls so that names may be any bytes.

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <string>
#include <support/temporary_folder.hpp>
#include <system_error>

namespace Quorvex::PathEnvironment {

/// A new, empty folder, removed with all it holds when it goes.
class DiskFolder {
 public:
  /// The bytes of the path of `name` in this folder; without a name, of the folder itself.
  [[nodiscard]] std::string PathOf(const std::string& name = {}) const {
    return name.empty() ? path_ : path_ + "/" + name;
  }
  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI LocationOf(const std::string& name = {}) const {
    return foundation::storage::vfs::toAbsoluteIRI(u"file",
                                                   fl::filesystem::path(fl::filesystem::from_bytes(PathOf(name))));
  }

  /// The folders on the way must exist.
  void AddFile(const std::string& name) const {
    const int file = ::open(PathOf(name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    Require(file != -1, name);
    Require(::close(file) == 0, name);
  }
  void AddFolder(const std::string& name) const { Require(::mkdir(PathOf(name).c_str(), 0777) == 0, name); }
  void AddLink(const std::string& name, const std::string& target) const {
    Require(::symlink(target.c_str(), PathOf(name).c_str()) == 0, name);
  }
  void AddFifo(const std::string& name) const { Require(::mkfifo(PathOf(name).c_str(), 0666) == 0, name); }
  void AddSocket(const std::string& name) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = PathOf(name);
    Require(path.size() < sizeof(address.sun_path), name);
    path.copy(address.sun_path, path.size());
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    Require(server != -1, name);
    const bool isBound = ::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    Require(::close(server) == 0 && isBound, name);
  }

  /// Folders called `name`, each in the one before. They may lie deeper than a path text can reach.
  void AddNestedFolders(const std::string& name, int count) const {
    int folder = ::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < count; ++depth) {
      Require(folder != -1 && ::mkdirat(folder, name.c_str(), 0777) == 0, name);
      const int inner = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      ::close(folder);
      folder = inner;
    }
    Require(folder != -1 && ::close(folder) == 0, name);
  }

 private:
  static void Require(bool succeeded, const std::string& name) {
    if (!succeeded) throw std::system_error(errno, std::generic_category(), name);
  }

  PathManagement::support::TemporaryFolder folder_;
  std::string path_ = folder_.GetPath().string();
};

}  // namespace Quorvex::PathEnvironment
