#pragma once

// What hides what on a path, as texts.

#include <fl/filesystem/displayed_text.hpp>
#include <string>
#include <vector>

#include "file_location.hpp"
#include "location_text.hpp"
#include "shadow.hpp"

namespace vornixpath {

/// "greet: /a/greet.vnx hides /b/greet.vnx", and for things that are more unlike than that "(letter case)" or "(kind)".
inline std::string InWords(const Shadow& shadow) {
  const auto path = [](const foundation::storage::vfs::AbsoluteIRI& location) {
    return fl::filesystem::to_displayed_text(location.getPath());
  };
  std::string text = fl::filesystem::to_displayed_text(shadow.name) + ": " + path(LocationOf(shadow.winner)) +
                     " hides " + path(shadow.hidden);
  if (shadow.likeness == Likeness::OtherLetterCase) text += " (letter case)";
  if (shadow.likeness == Likeness::OtherKind) text += " (kind)";
  return text;
}

inline std::vector<std::string> Hidden(const Quorvex::PathManagement::IPath& path,
                                       const std::vector<std::u16string>& extensions = {u".vnx"}) {
  std::vector<std::string> texts;
  for (const Shadow& shadow : FindShadows(path, extensions)) texts.push_back(InWords(shadow));
  return texts;
}

}  // namespace vornixpath
