#include <csignal>
#include <ios>
#include <string>
#include <vector>

#include "program.hpp"

int main(int argc, char** argv) {
  // A limit on the size of files is then an error of the write that meets it, and told as such.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  std::ios::sync_with_stdio(false);  // a hundred thousand lines go out in large pieces
  return static_cast<int>(vornixpath::RunProgram(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc)));
}
