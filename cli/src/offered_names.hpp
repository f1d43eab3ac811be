// What the places of a path offer, and under which names.
#pragma once

#include <functional>
#include <search_path_interfaces/path_entry.hpp>
#include <string>
#include <string_view>

#include "name_places.hpp"
#include "typed_name.hpp"

namespace vornixpath {

/// Calls `visit` with the base name and the extension of each item; the texts are valid until it returns.
void ForEachName(const Quorvex::PathManagement::IPathEntry& folder,
                 const std::function<void(std::u16string_view, std::u16string_view)>& visit);

/// Whether letter case tells names in `folder` apart.
[[nodiscard]] LetterCase LetterCaseIn(const Quorvex::PathManagement::IPathEntry& folder);

/// The name of the place's folder itself: "geometry/Point"; empty for a folder of the path. Lives as long as `place`.
[[nodiscard]] std::u16string_view FolderName(const NamePlace& place);

/// Whether the file of this base name answers for its class, as that of its name does of a class in no package.
[[nodiscard]] bool AnswersForClass(const NamePlace& place, std::u16string_view baseName, LetterCase letterCase);

/// Calls `visit` with each name to be typed for a file in `place`, without the folders before it, and whether it
/// answers for a class; the text is valid until it returns.
void ForEachOffer(const NamePlace& place, TypedNames& typed,
                  const std::function<void(std::u16string_view name, bool isForClass)>& visit);

/// What people type for one of them.
[[nodiscard]] std::u16string OfferedName(const NamePlace& place, std::u16string_view name, bool isForClass);

}  // namespace vornixpath
