#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "path_findings.hpp"

namespace vornixpath {

/// A file, and the number of the folder of the path that it stands in, from 1.
struct MeantFile {
  std::size_t number;
  std::u16string place;  ///< within the folder

  friend bool operator==(const MeantFile&, const MeantFile&) = default;
};

/// A name that the path offers.
struct MeantName {
  std::u16string name;              ///< as people type it
  std::optional<MeantFile> file;    ///< the one that `which` gives
  std::vector<std::size_t> alsoIn;  ///< the numbers of folders in which that file hides something of the name, rising

  friend bool operator==(const MeantName&, const MeantName&) = default;
};

/// Every name of a file with one of the extensions, called as `shadows` calls it, by name. One lookup for each.
[[nodiscard]] std::vector<MeantName> NamesOf(const KnownPath& known);

[[nodiscard]] std::string NamesHtml(const std::vector<MeantName>& names);

}  // namespace vornixpath
