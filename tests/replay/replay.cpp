// Hands every file of a folder, the argument, to a fuzz target: what was found once is tried again wherever tests run.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    std::ifstream file(entry.path(), std::ios_base::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    std::cout << entry.path().filename().string() << std::endl;  // the last one is told when the target aborts
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++count;
  }
  return count == 0 ? 1 : 0;
}
