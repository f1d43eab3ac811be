#include "process.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace bench {

void Run(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  int status = -1;
  if (posix_spawn(&process, words.front().c_str(), &actions, nullptr, arguments.data(), environ) == 0)
    waitpid(process, &status, 0);
  posix_spawn_file_actions_destroy(&actions);
  if (status != 0) throw std::runtime_error(words.front() + " failed");
}

}  // namespace bench
