#pragma once

#include <cstddef>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_interfaces/path.hpp>
#include <vector>

#include "folder_numbers.hpp"
#include "loaded_path.hpp"
#include "shadow_baseline.hpp"
#include "shadow_grading.hpp"

namespace vornixpath {

/// A folder of the path with its number on it.
struct NumberedFolder {
  foundation::storage::vfs::AbsoluteIRI location;
  std::size_t number;

  friend bool operator==(const NumberedFolder&, const NumberedFolder&) = default;
};

/// What is hidden in one folder of the path by what is in another, or in the same.
struct ShadowPair {
  NumberedFolder hiding;
  NumberedFolder hidden;
  std::vector<GradedShadow> shadows;  ///< by name, those of one name in order of precedence
};

/// `shadows` pair by pair, in path order of the folder that hides, then of the hidden one.
[[nodiscard]] std::vector<ShadowPair> PairsOf(std::vector<GradedShadow> shadows,
                                              const Quorvex::PathManagement::IPath& path, const FolderNumbers& numbers);

/// How many names are told of the pair: one may stand for several things that are hidden.
[[nodiscard]] std::size_t CountNames(const ShadowPair& pair);

/// As a baseline remembers one of the pair.
[[nodiscard]] AcceptedShadow AcceptedFor(const ShadowPair& pair, const GradedShadow& shadow);

/// As a baseline remembers all.
[[nodiscard]] AcceptedShadows AcceptedFor(const std::vector<ShadowPair>& pairs);

/// `accepted` with the folders of `path` as that spells them; what is no folder of it stays as it is. Asks storage.
[[nodiscard]] AcceptedShadows SpelledAsOn(const LoadedPath& path, const AcceptedShadows& accepted);

/// What became of the entries of a baseline.
struct BaselineEffect {
  std::size_t leftOut = 0;  ///< findings that it holds
  AcceptedShadows gone;     ///< of its entries, those that no longer occur
};

/// Takes what `accepted`, with folders spelled as in `pairs`, holds out of `pairs`, and pairs of which nothing is left.
[[nodiscard]] BaselineEffect LeaveOut(const AcceptedShadows& accepted, std::vector<ShadowPair>& pairs);

}  // namespace vornixpath
