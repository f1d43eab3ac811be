#include "alive_entries.hpp"

#include <algorithm>
#include <utility>

#include "former_entries.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;

AliveEntries::EntryPtr AliveEntries::Find(const AbsoluteIRI& location) const {
  const std::scoped_lock lock(mutex_);
  const auto known = entries_.find(location);
  return known == entries_.end() ? nullptr : known->second.lock();
}

AliveEntries::EntryPtr AliveEntries::Settle(EntryPtr entry) {
  // Compared outside the lock: entries never change, and a large one takes its time.
  EntryPtr settled = FormerIfEqual(Find(entry->GetLocation()), entry);
  if (settled != entry) return settled;

  const std::scoped_lock lock(mutex_);
  if (entries_.size() >= sizeToSweepAt_) SweepOutTheDead();
  entries_[entry->GetLocation()] = entry;
  return entry;
}

std::vector<AliveEntries::EntryPtr> AliveEntries::GetAll() const {
  const std::scoped_lock lock(mutex_);
  std::vector<EntryPtr> entries;
  for (const auto& [location, known] : entries_) {
    if (EntryPtr entry = known.lock()) entries.push_back(std::move(entry));
  }
  return entries;
}

std::size_t AliveEntries::GetSize() const {
  const std::scoped_lock lock(mutex_);
  return entries_.size();
}

void AliveEntries::SweepOutTheDead() {
  boost::unordered::erase_if(entries_, [](const auto& known) { return known.second.expired(); });
  // Rare enough that sweeping costs each entry that comes in a constant.
  sizeToSweepAt_ = std::max(kFewestToSweep, 2 * entries_.size());
}

}  // namespace Quorvex::PathEnvironment
