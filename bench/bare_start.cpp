// The least that a program has to do to tell where a name stands:
//
//     bare_start NAMES NAME          maps NAMES, lines of one length, sorted, and finds NAME among them
//     bare_start NAMES NAME FOLDERS  and asks for the status of each folder, a line each

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace {

std::string_view Map(const char* name) {
  const int file = ::open(name, O_RDONLY | O_CLOEXEC);
  struct stat status = {};
  if (::fstat(file, &status) != 0) {
    std::perror("bare_start");
    std::exit(1);
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  void* const bytes = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  ::close(file);
  return {static_cast<const char*>(bytes), size};
}

std::size_t LineOf(std::string_view names, std::string_view name) {
  const std::size_t length = name.size() + 1;
  std::size_t first = 0;
  std::size_t last = names.size() / length;
  while (last - first > 1) {
    const std::size_t middle = first + (last - first) / 2;
    (names.substr(middle * length, name.size()) <= name ? first : last) = middle;
  }
  return first;
}

std::size_t CountFolders(std::string_view lines) {
  std::size_t count = 0;
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    const std::string folder(lines.substr(0, end));
    struct statx status = {};
    if (::statx(AT_FDCWD, folder.c_str(), 0, STATX_BASIC_STATS, &status) == 0) ++count;
    lines.remove_prefix(end + 1);
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::cout << LineOf(Map(argv[1]), argv[2]) << '\n';
  if (argc > 3) std::cout << CountFolders(Map(argv[3])) << '\n';
  return 0;
}
