// Findings that somebody has accepted, as a text that can be kept beside the folders that it is about:
//
//     # shadowed names, version 1
//     # Grade, folder that hides, hidden one, name, what is hidden there: separated by tabs, sorted.
//     different	./base	./extras	greet	greet.vnx
//     kind	./base	file:///opt/toolbox	geometry/Point	+geometry/@Point
//
// The first line is as it stands here; other lines that begin with '#', and empty ones, count for nothing. A folder at
// or below that of the file is told by its identifier from there on: "." or "./extras". Names and places are UTF-8;
// '%', stray bytes and whatever a terminal would act on are percent-encoded. Each line ends with a newline, the last
// one, too.
#pragma once

#include <compare>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

#include "shadow_grade.hpp"

namespace vornixpath {

/// What makes a finding the same one tomorrow.
struct AcceptedShadow {
  foundation::storage::vfs::AbsoluteIRI hiding;  ///< the folders of the path
  foundation::storage::vfs::AbsoluteIRI hidden;
  std::u16string name;
  std::u16string place;  ///< of what is hidden, from its folder on: "+geometry/@Point/move.vnx"
  ShadowGrade grade;

  friend bool operator==(const AcceptedShadow&, const AcceptedShadow&) = default;
  friend bool operator<(const AcceptedShadow& left, const AcceptedShadow& right);
};

using AcceptedShadows = std::set<AcceptedShadow>;

/// The text for a file in `folder`: the same for the same tree at another place. Parsed there, it gives `shadows` back.
[[nodiscard]] std::string BaselineText(const AcceptedShadows& shadows,
                                       const foundation::storage::vfs::AbsoluteIRI& folder);

/// Throws std::runtime_error, `line 3: there is no grade "grave"`, for a text that is none.
[[nodiscard]] AcceptedShadows ParseBaseline(std::string_view text, const foundation::storage::vfs::AbsoluteIRI& folder);

/// Whether `text` begins as every baseline does, whatever follows.
[[nodiscard]] bool BeginsLikeABaseline(std::string_view text);

}  // namespace vornixpath
