#include "folders_below.hpp"

#include <foundation/storage/vfs/storage_system.hpp>
#include <string>

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;

namespace {

// Everything below a folder begins like this.
std::u16string BeginningBelow(const AbsoluteIRI& folder) {
  const std::u16string& text = folder.toString();
  return text.ends_with(u'/') ? text : text + u'/';
}

// What is below `from`, at the same place below `to`.
AbsoluteIRI Moved(const AbsoluteIRI& location, const AbsoluteIRI& from, const AbsoluteIRI& to) {
  if (location == from) return to;
  return AbsoluteIRI(BeginningBelow(to) + location.toString().substr(BeginningBelow(from).size()));
}

}  // namespace

AbsoluteIRI FoldersBelow::operator()(const AbsoluteIRI& location) {
  for (AbsoluteIRI around = location;; around = around.getParent()) {
    if (CanonicalOnce(around) == folder_) return Moved(location, around, folder_);
    if (around == around.getParent()) break;
  }
  const AbsoluteIRI& canonical = CanonicalOnce(location);
  return canonical.toString().starts_with(BeginningBelow(folder_)) ? canonical : location;
}

const AbsoluteIRI& FoldersBelow::CanonicalOnce(const AbsoluteIRI& location) {
  const auto known = canonical_.find(location);
  if (known != canonical_.end()) return known->second;
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference().ProviderFor(location);
  return canonical_.emplace(location, storage->CanonicalLocation(location)).first->second;
}

}  // namespace vornixpath
