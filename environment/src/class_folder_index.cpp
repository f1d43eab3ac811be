#include "class_folder_index.hpp"

#include <fl/filesystem/case_folding.hpp>

namespace Quorvex::PathEnvironment {

ClassFolderIndex::ClassFolderIndex(const std::vector<LocationTable::Slot>& slots, Keys keys) : keys_(keys) {
  for (Ordinal ordinal = 0; ordinal < slots.size(); ++ordinal) {
    if (slots[ordinal].kind != PathManagement::PathEntryType::Class) continue;
    const std::u16string name = slots[ordinal].location.getName().substr(1);
    filter_.Add(name);
    folders_[KeyOf(name)].push_back(ordinal);
  }
}

std::u16string ClassFolderIndex::KeyOf(const std::u16string& name) const {
  return keys_ == Keys::Exact ? name : fl::filesystem::fold_case(name);
}

std::span<const Ordinal> ClassFolderIndex::FindByHash(const std::u16string& name) const {
  const auto found = folders_.find(KeyOf(name));
  if (found == folders_.end()) return {};
  return found->second;
}

}  // namespace Quorvex::PathEnvironment
