// Tells shells and readers of manuals about vornixpath. Runs while that is built, and is not installed.

#include <array>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include "descriptions.hpp"

namespace {

struct Form {
  std::string_view name;
  std::string (*describe)(const vornixpath::DescribedProgram&);
};

constexpr std::array<Form, 4> kForms = {{{"man", vornixpath::ManPage},
                                         {"bash", vornixpath::BashCompletion},
                                         {"zsh", vornixpath::ZshCompletion},
                                         {"fish", vornixpath::FishCompletion}}};

int Describe(std::string_view asked) {
  for (const Form& form : kForms) {
    if (form.name != asked) continue;
    std::cout << form.describe(vornixpath::DescribedVornixpath()) << std::flush;
    return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
  }
  std::cerr << "usage: vornixpath-describe man|bash|zsh|fish\n";
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Describe(argc == 2 ? argv[1] : "");
  } catch (const std::exception& error) {
    std::cerr << "vornixpath-describe: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
