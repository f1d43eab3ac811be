#include "former_entries.hpp"

namespace Quorvex::PathEnvironment {

std::shared_ptr<const FolderEntry> FormerIfEqual(const std::shared_ptr<const FolderEntry>& former,
                                                 const std::shared_ptr<const FolderEntry>& entry) {
  if (!former || !former->HoldsTheSameAs(*entry)) return entry;
  former->RenewProofs(*entry);
  return former;
}

FormerEntries::FormerEntries(const std::vector<EntryPtr>& entries) {
  for (const EntryPtr& entry : entries) entries_.emplace(entry->GetLocation(), entry);
}

FormerEntries FormerEntries::Below(const FolderEntry* entry) {
  return FormerEntries(entry == nullptr ? std::vector<EntryPtr>() : entry->GetChildren());
}

FormerEntries::EntryPtr FormerEntries::Find(const foundation::storage::vfs::AbsoluteIRI& location) const {
  const auto known = entries_.find(location);
  return known == entries_.end() ? nullptr : known->second;
}

FormerEntries::EntryPtr FormerEntries::FormerIfEqualTo(const EntryPtr& entry) const {
  return FormerIfEqual(Find(entry->GetLocation()), entry);
}

}  // namespace Quorvex::PathEnvironment
