#include "timed_reading.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;

std::shared_ptr<const Quorvex::PathManagement::IPathEntry> TimedEntryFactory::CreateMainEntry(
    const AbsoluteIRI& folder) const {
  const std::scoped_lock lock(mutex_);
  const auto begin = clock_();
  auto entry = entries_.CreateMainEntry(folder);
  times_[folder] = clock_() - begin;
  return entry;
}

void TimedEntryFactory::WriteToolboxCache(std::ostream& out, const AbsoluteIRI& toolboxRoot) const {
  entries_.WriteToolboxCache(out, toolboxRoot);
}

std::chrono::nanoseconds TimedEntryFactory::TimeOf(const AbsoluteIRI& folder) const {
  const std::scoped_lock lock(mutex_);
  const auto known = times_.find(folder);
  return known == times_.end() ? std::chrono::nanoseconds::zero() : known->second;
}

}  // namespace vornixpath
