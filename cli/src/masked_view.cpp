#include "masked_view.hpp"

#include <search_path_environment/folder_entry.hpp>
#include <utility>

#include "looked_for.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::FolderPath;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::SearchScope;
using Quorvex::PathManagement::detail::SearchTarget;

MaskedView::MaskedView(const std::shared_ptr<const FolderPath>& path, std::vector<EntryPtr> maskedFolders)
    : MultiMaskedPath(path, std::move(maskedFolders)), path_(path) {}

MaskedView::~MaskedView() = default;

boost::optional<FoundItem> MaskedView::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  const auto found = MultiMaskedPath::FindFirstInScope(scope, target, policy);
  if (!found) return boost::none;
  // The class takes the first of a list of all files, which goes by name within a folder.
  const std::u16string name = target.GetBaseName().substr(FolderPartOf(target.GetBaseName()).size());
  const EntryPtr entry = found->GetPathEntry();
  return FoundItem(entry->FindFirst(SearchTarget(name, target.GetExtensions()), policy), entry);
}

EntryPtr MaskedView::GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& location, FilenameMatchingPolicy policy) const {
  EntryPtr answer = path_->GetPathEntryFromAbsoluteIRI(location, policy);
  return answer && IsMasked(*answer) ? GetRest().GetPathEntryFromAbsoluteIRI(location, policy) : answer;
}

EntryPtr MaskedView::GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& location) const {
  EntryPtr answer = path_->GetPathEntryFromAbsoluteIRI(location);
  return answer && IsMasked(*answer) ? GetRest().GetPathEntryFromAbsoluteIRI(location) : answer;
}

// Made only for whoever asks about the place of a masked folder, which is seldom done.
const FolderPath& MaskedView::GetRest() const {
  std::call_once(restOnce_, [this] {
    std::vector<FolderPath::Folder> folders;
    for (const EntryPtr& entry : *GetMainEntries()) {
      folders.push_back({std::dynamic_pointer_cast<const FolderEntry>(entry), folders.size()});
    }
    rest_ = std::make_shared<const FolderPath>(folders, std::vector<Quorvex::PathEnvironment::PathProblem>());
  });
  return *rest_;
}

}  // namespace vornixpath
