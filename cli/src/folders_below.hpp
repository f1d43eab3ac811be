#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <unordered_map>

namespace vornixpath {

/// Spells folders from another one on, wherever links lead through to them. Asks storage about each folder once. Not
/// safe from several threads.
class FoldersBelow {
 public:
  using AbsoluteIRI = foundation::storage::vfs::AbsoluteIRI;

  /// `folder` is a canonical location.
  explicit FoldersBelow(const AbsoluteIRI& folder) : folder_(folder) {}

  /// `location` with the folder's own text at its beginning, when it stands at or below the folder, as it is spelled
  /// or with all links followed; else `location` itself. Links below the folder stay as they are spelled. Throws the
  /// storage layer's Exception.
  [[nodiscard]] AbsoluteIRI operator()(const AbsoluteIRI& location);

 private:
  [[nodiscard]] const AbsoluteIRI& CanonicalOnce(const AbsoluteIRI& location);

  AbsoluteIRI folder_;
  std::unordered_map<AbsoluteIRI, AbsoluteIRI> canonical_;
};

}  // namespace vornixpath
