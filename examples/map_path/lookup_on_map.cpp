// Asks a path that is made of a map what a few names mean.

#include <fl/filesystem/displayed_text.hpp>
#include <iostream>
#include <search_path_utilities/lookup.hpp>

#include "map_path.hpp"

using fl::filesystem::to_displayed_text;

int main() {
  const map_path::FolderMap contents = {{u"/base", {u"greet.vnx"}},
                                        {u"/base/+geometry", {u"area.vnx"}},
                                        {u"/base/@Shape", {u"Shape.vnx"}},
                                        {u"/extras", {u"greet.vnx", u"Shape.vnx", u"farewell.vnx"}}};
  const map_path::MapPath path({u"/base", u"/extras"}, contents);

  const std::vector<std::u16string> extensions = {u".vnx"};
  for (const std::u16string name : {u"greet", u"Shape", u"geometry/area", u"farewell", u"area"}) {
    const map_path::SearchTarget target(name, extensions);
    const auto found = FindFirstFileVisibleOnPath(path, target, map_path::FilenameMatchingPolicy::Native);
    const std::u16string where = found ? found->GetPathItem()->folderIRI.getPath() : u"nowhere";
    std::cout << to_displayed_text(name) << ": " << to_displayed_text(where) << '\n';
  }
}
