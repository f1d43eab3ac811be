// The least that a program has to do to edit or to list a saved path:
//
//     bare_edit edit FILE    reads the file, makes one hash set of its lines, writes it once, and flushes it once
//     bare_edit list FILE    reads the file, makes one hash set of its lines, and asks for the status of each folder

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unordered_set>

namespace {

using Lines = std::unordered_set<std::string>;

void Require(bool isDone) {
  if (isDone) return;
  std::perror("bare_edit");
  std::exit(1);
}

std::string Read(const std::string& name) {
  const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status = {};
  Require(::fstat(file, &status) == 0);
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  Require(::read(file, bytes.data(), bytes.size()) == status.st_size);
  ::close(file);
  return bytes;
}

void WriteAndFlush(const std::string& name, const std::string& bytes) {
  const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  Require(::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  Require(::fsync(file) == 0);
  ::close(file);
}

Lines LinesOf(std::string_view bytes) {
  Lines lines;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    lines.emplace(bytes.substr(0, end));
    bytes.remove_prefix(end + 1);
  }
  return lines;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string name = argv[2];
  const std::string bytes = Read(name);
  const Lines lines = LinesOf(bytes);
  if (std::string_view(argv[1]) == "edit") {
    WriteAndFlush(name + ".bare", bytes);
    return 0;
  }
  std::size_t folders = 0;
  for (const std::string& line : lines) {
    struct statx status = {};
    if (::statx(AT_FDCWD, line.c_str(), 0, STATX_BASIC_STATS, &status) == 0) ++folders;
  }
  std::printf("%zu\n", folders);
  return 0;
}
