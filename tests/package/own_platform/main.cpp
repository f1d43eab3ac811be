// Tells which folders a path in one text names, one a line:  own_platform PATH

#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <iostream>
#include <search_path_utilities/path_editing.hpp>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  for (const auto& folder : Quorvex::PathManagement::SplitVornixPath(fl::filesystem::from_bytes(argv[1]))) {
    std::cout << fl::filesystem::to_displayed_text(folder) << '\n';
  }
}
