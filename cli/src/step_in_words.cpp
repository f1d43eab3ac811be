#include "step_in_words.hpp"

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>

#include "file_location.hpp"
#include "location_text.hpp"
#include "looked_for.hpp"
#include "output.hpp"

namespace vornixpath {

using fl::filesystem::to_displayed_text;
using Quorvex::PathManagement::IPathEntry;

namespace {

// More are told on a miss, each with its reason.
constexpr std::size_t kUnreadNamedInAStep = 3;

}  // namespace

StepInWords::StepInWords(const Explanation& explanation, const FolderNumbers& numbers)
    : explanation_(explanation), numbers_(numbers) {
  for (const UnreadFolder& folder : explanation.unread) unread_.insert(folder.location);
}

std::string StepInWords::operator()(const AskedForEntry& step) const {
  if (!step.answer) {
    return "asked from " + ShownText(step.folder) +
           (IsMasked(step.folder) ? ": it is masked" : ": it is not on the path");
  }
  return "asked from " + Numbered(*step.answer);
}

std::string StepInWords::operator()(const AskedForPrivateFolder& step) const {
  return "private folder of " + ShownText(step.folder->GetAbsoluteIRI()) + ": " +
         (step.answer ? ShownText(step.answer->GetAbsoluteIRI()) : "none") + IfUnread(*step.folder);
}

std::string StepInWords::operator()(const AskedForClassFolders& step) const {
  std::string folders;
  for (const EntryPtr& entry : step.answer) folders += (folders.empty() ? "" : ", ") + Numbered(*entry);
  return "class folders @" + to_displayed_text(step.name) + ": " + (folders.empty() ? "none" : folders) +
         ListUnread(false);
}

std::string StepInWords::operator()(const AskedInFolder& step) const {
  return "in " + ShownText(step.folder->GetAbsoluteIRI()) + ": " +
         (step.answer ? to_displayed_text(step.answer->baseName + step.answer->extension) : "none") +
         IfUnread(*step.folder);
}

std::string StepInWords::operator()(const AskedInScope& step) const {
  const std::string where =
      step.onlyPlainFolders ? "plain folders: " : "folders that match " + Quoted(WrittenFolders()) + ": ";
  const std::string answer = step.answer ? ShownText(LocationOf(*step.answer)) + NumberIn(*step.answer->GetPathEntry())
                                         : "none, " + std::to_string(CountRead(step.searched)) + " searched";
  return where + answer + ListUnread(!step.onlyPlainFolders);
}

std::string StepInWords::operator()(const AskedForOrder& step) const {
  const std::size_t first = numbers_.NumberOf(*step.first);
  const std::size_t second = numbers_.NumberOf(*step.second);
  const std::string places =
      first == second ? "both stand in folder " + std::to_string(first)
                      : "they stand in folder " + std::to_string(first) + " and folder " + std::to_string(second);
  return "does " + ShownText(step.first->GetAbsoluteIRI()) + " stand before " +
         ShownText(step.second->GetAbsoluteIRI()) + " on the path? " + (step.answer ? "Yes, " : "No, ") + places;
}

std::u16string StepInWords::WrittenFolders() const {
  const std::u16string folders = FolderPartOf(explanation_.question.name);
  return folders.size() > 1 ? folders.substr(0, folders.size() - 1) : folders;
}

std::string StepInWords::NumberIn(const IPathEntry& entry) const {
  return " (folder " + std::to_string(numbers_.NumberOf(entry)) + " of the path)";
}

std::string StepInWords::Numbered(const IPathEntry& entry) const {
  return ShownText(entry.GetAbsoluteIRI()) + NumberIn(entry);
}

bool StepInWords::IsMasked(const foundation::storage::vfs::AbsoluteIRI& folder) const {
  const auto& masked = explanation_.maskedFolders;
  return std::any_of(masked.begin(), masked.end(),
                     [&folder](const EntryPtr& entry) { return entry->GetAbsoluteIRI() == folder; });
}

bool StepInWords::IsUnread(const IPathEntry& entry) const { return unread_.count(entry.GetAbsoluteIRI()) != 0; }

std::ptrdiff_t StepInWords::CountRead(const std::vector<EntryPtr>& entries) const {
  return std::count_if(entries.begin(), entries.end(), [this](const EntryPtr& entry) { return !IsUnread(*entry); });
}

std::string StepInWords::IfUnread(const IPathEntry& entry) const {
  return IsUnread(entry) ? "; it could not be read" : "";
}

// The folders in which the answer may stand as well.
std::string StepInWords::ListUnread(bool alsoWithinFoldersOfPath) const {
  std::vector<std::string> folders;
  for (const UnreadFolder& folder : explanation_.unread) {
    if (!folder.isFolderOfPath && !alsoWithinFoldersOfPath) continue;
    folders.push_back(folder.isFolderOfPath ? "folder " + std::to_string(folder.number) : ShownText(folder.location));
  }
  if (folders.empty()) return {};
  if (folders.size() > kUnreadNamedInAStep) return "; " + std::to_string(folders.size()) + " folders could not be read";
  std::string list;
  for (const std::string& folder : folders) list += (list.empty() ? "; " : ", ") + folder;
  return list + " could not be read";
}

}  // namespace vornixpath
