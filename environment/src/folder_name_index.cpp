#include "folder_name_index.hpp"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "folder_matcher.hpp"

namespace Quorvex::PathEnvironment {

namespace {

using foundation::storage::vfs::AbsoluteIRI;

// The text whose last name a partial pathname is compared with. A location that is no path of its storage can still be
// named by its whole path.
std::u16string ComparedTextOf(const AbsoluteIRI& location) {
  try {
    return PathManagement::GetStringFromIRI(location);
  } catch (const foundation::storage::vfs::Exception&) {
    return location.getPath();
  }
}

std::uint64_t KeyOf(std::u16string_view name) {
  name.remove_prefix(std::min(name.find_first_not_of(u"+@"), name.size()));
  const std::u16string folded = fl::filesystem::fold_case(name);
  return XXH3_64bits(folded.data(), folded.size() * sizeof(char16_t));
}

}  // namespace

FolderNameIndex::FolderNameIndex(const std::vector<LocationTable::Slot>& slots) {
  entries_.reserve(slots.size());
  for (Ordinal ordinal = 0; ordinal < slots.size(); ++ordinal) {
    const auto names = SplitIntoComponents(ComparedTextOf(slots[ordinal].entry->GetLocation()));
    if (!names.empty()) entries_[KeyOf(names.back())].push_back(ordinal);
  }
}

std::span<const Ordinal> FolderNameIndex::Find(const std::u16string& name) const {
  const auto found = entries_.find(KeyOf(name));
  if (found == entries_.end()) return {};
  return {found->second.data(), found->second.size()};
}

}  // namespace Quorvex::PathEnvironment
