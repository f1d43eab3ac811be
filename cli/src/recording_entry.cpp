#include "recording_entry.hpp"

#include <utility>

namespace vornixpath {

using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::PathItem;
using Quorvex::PathManagement::SearchScope;
using Quorvex::PathManagement::detail::SearchTarget;

EntryPtr RecordingEntry::Around(EntryPtr entry, std::shared_ptr<LookupSteps> steps) {
  if (!entry) return nullptr;
  return std::make_shared<const RecordingEntry>(std::move(entry), std::move(steps));
}

RecordingEntry::RecordingEntry(EntryPtr entry, std::shared_ptr<LookupSteps> steps)
    : entry_(std::move(entry)), steps_(std::move(steps)) {}

Quorvex::PathManagement::PathEntryType RecordingEntry::GetEntryType() const { return entry_->GetEntryType(); }

std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>> RecordingEntry::GetItems() const {
  return entry_->GetItems();
}

foundation::storage::vfs::AbsoluteIRI RecordingEntry::GetAbsoluteIRI() const { return entry_->GetAbsoluteIRI(); }

EntryPtr RecordingEntry::GetPrivateEntry() const {
  EntryPtr answer = entry_->GetPrivateEntry();
  steps_->push_back(AskedForPrivateFolder{entry_, answer});
  return Around(std::move(answer), steps_);
}

EntryPtr RecordingEntry::GetSecondSingleEntry() const { return entry_->GetSecondSingleEntry(); }
RecordingEntry::EntryGroup RecordingEntry::GetFirstEntryGroup() const { return entry_->GetFirstEntryGroup(); }
RecordingEntry::EntryGroup RecordingEntry::GetSecondEntryGroup() const { return entry_->GetSecondEntryGroup(); }
RecordingEntry::EntryGroup RecordingEntry::GetThirdEntryGroup() const { return entry_->GetThirdEntryGroup(); }

std::shared_ptr<const PathItem> RecordingEntry::FindFirst(const SearchTarget& target,
                                                          FilenameMatchingPolicy policy) const {
  auto answer = entry_->FindFirst(target, policy);
  steps_->push_back(AskedInFolder{entry_, answer});
  return answer;
}

bool RecordingEntry::ForEachEntryInScope(SearchScope scope,
                                         const Quorvex::PathManagement::PathEntryCallback& callback) const {
  return entry_->ForEachEntryInScope(scope, callback);
}

std::shared_ptr<const Quorvex::PathManagement::FilenameComparator> RecordingEntry::GetFilenameComparator(
    FilenameMatchingPolicy policy) const {
  return entry_->GetFilenameComparator(policy);
}

EntryPtr OriginalOf(const EntryPtr& entry) {
  const auto* const recording = dynamic_cast<const RecordingEntry*>(entry.get());
  return recording != nullptr ? recording->GetOriginal() : entry;
}

const IPathEntry& OriginalOf(const IPathEntry& entry) {
  const auto* const recording = dynamic_cast<const RecordingEntry*>(&entry);
  return recording != nullptr ? *recording->GetOriginal() : entry;
}

}  // namespace vornixpath
