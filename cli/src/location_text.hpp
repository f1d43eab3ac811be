#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <string>

namespace vornixpath {

/// The text of `location`; the identifier as it is, where no text can express it.
[[nodiscard]] std::u16string TextOf(const foundation::storage::vfs::AbsoluteIRI& location);

/// The same, safe for a terminal.
[[nodiscard]] std::string ShownText(const foundation::storage::vfs::AbsoluteIRI& location);

/// "@Shape/area.vnx" for what stands in `folder`, however deep.
[[nodiscard]] std::u16string PlaceWithin(const foundation::storage::vfs::AbsoluteIRI& folder,
                                         const foundation::storage::vfs::AbsoluteIRI& location);

}  // namespace vornixpath
