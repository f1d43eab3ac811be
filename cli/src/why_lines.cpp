// An explanation as people read it.

#include <fl/filesystem/displayed_text.hpp>
#include <search_path_utilities/path_editing.hpp>

#include "file_location.hpp"
#include "looked_for.hpp"
#include "output.hpp"
#include "why_report.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::to_displayed_text;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPathEntry;

std::string Shown(const AbsoluteIRI& location) {
  return to_displayed_text(Quorvex::PathManagement::GetStringFromIRI(location));
}

void WriteLine(const std::string& line) { WriteSafeResult(line, OutputForm::Lines); }

/// Puts each step into words.
class StepInWords {
 public:
  StepInWords(const Explanation& explanation, const FolderNumbers& numbers)
      : explanation_(explanation), numbers_(numbers) {}

  std::string operator()(const AskedForEntry& step) const {
    if (!step.answer) return "asked from " + Shown(step.folder) + ": it is not on the path";
    return "asked from " + Numbered(*step.answer);
  }

  std::string operator()(const AskedForPrivateFolder& step) const {
    return "private folder of " + Shown(step.folder->GetAbsoluteIRI()) + ": " +
           (step.answer ? Shown(step.answer->GetAbsoluteIRI()) : "none");
  }

  std::string operator()(const AskedForClassFolders& step) const {
    std::string folders;
    for (const EntryPtr& entry : step.answer) folders += (folders.empty() ? "" : ", ") + Numbered(*entry);
    return "class folders @" + to_displayed_text(step.name) + ": " + (folders.empty() ? "none" : folders);
  }

  std::string operator()(const AskedInFolder& step) const {
    return "in " + Shown(step.folder->GetAbsoluteIRI()) + ": " +
           (step.answer ? to_displayed_text(step.answer->baseName + step.answer->extension) : "none");
  }

  std::string operator()(const AskedInScope& step) const {
    const std::string where =
        step.onlyPlainFolders ? "plain folders" : "folders that match " + Quoted(WrittenFolders());
    if (!step.answer) return where + ": none";
    return where + ": " + Shown(LocationOf(*step.answer)) + NumberIn(*step.answer->GetPathEntry());
  }

  std::string operator()(const AskedForOrder& step) const {
    const std::size_t first = numbers_.NumberOf(*step.first);
    const std::size_t second = numbers_.NumberOf(*step.second);
    const std::string places =
        first == second ? "both stand in folder " + std::to_string(first)
                        : "they stand in folder " + std::to_string(first) + " and folder " + std::to_string(second);
    return "does " + Shown(step.first->GetAbsoluteIRI()) + " stand before " + Shown(step.second->GetAbsoluteIRI()) +
           " on the path? " + (step.answer ? "Yes, " : "No, ") + places;
  }

 private:
  std::u16string WrittenFolders() const {
    const std::u16string folders = FolderPartOf(explanation_.question.name);
    return folders.size() > 1 ? folders.substr(0, folders.size() - 1) : folders;
  }

  std::string NumberIn(const IPathEntry& entry) const {
    return " (folder " + std::to_string(numbers_.NumberOf(entry)) + " of the path)";
  }

  std::string Numbered(const IPathEntry& entry) const { return Shown(entry.GetAbsoluteIRI()) + NumberIn(entry); }

  const Explanation& explanation_;
  const FolderNumbers& numbers_;
};

std::string InWords(HidingReason reason) {
  switch (reason) {
    case HidingReason::LaterExtension:
      return "its extension stands later in the list";
    case HidingReason::OtherLetterCase:
      return "another letter case; the exact name wins";
    case HidingReason::LaterByName:
      return "no exact name either, and later in name order";
    case HidingReason::PrivateFolderFirst:
      return "the private folder comes first";
    case HidingReason::ClassFoldersFirst:
      return "a plain file; from a folder, class folders come first";
    case HidingReason::ClassFolderLater:
      return "its class folder stands later on the path than the plain folder";
    case HidingReason::ClassFolderNotEarlier:
      return "its class folder does not stand earlier on the path than the plain folder";
    case HidingReason::PlainFileLater:
      return "a plain file; the class folder stands earlier on the path";
    case HidingReason::LaterOnPath:
      return "stands later on the path";
    case HidingReason::LaterInTheSameFolder:
      return "stands in a later special folder of the same folder of the path";
  }
  return "unknown reason";
}

std::string InWords(Obstacle obstacle) {
  switch (obstacle) {
    case Obstacle::OtherLetterCase:
      return "another letter case";
    case Obstacle::OtherLetterCaseOfFolder:
      return "its folder has another letter case";
    case Obstacle::OtherExtension:
      return "another extension";
    case Obstacle::InPrivateFolder:
      return "in a private folder";
    case Obstacle::InPackage:
      return "in a package";
    case Obstacle::InClassFolder:
      return "in a class folder";
    case Obstacle::InOtherFolder:
      return "in a plain folder that was not named";
    case Obstacle::InResources:
      return "among resources, which no name reaches";
    case Obstacle::InPlainSubfolder:
      return "in a plain subfolder, which is not on the path";
    case Obstacle::InUnreadableFolder:
      return "could not be searched";
  }
  return "unknown obstacle";
}

// How the near name can be meant.
std::string WayTo(const NearName& name) {
  if (!name.reason.empty()) return ", since " + name.reason;
  if (name.askFrom) return "; from " + Shown(*name.askFrom) + " " + Quoted(name.otherName) + " means it";
  return name.otherName.empty() ? std::string() : "; " + Quoted(name.otherName) + " means it";
}

void WriteQuestion(const Explanation& explanation) {
  const bool ignoresCase = explanation.policy == FilenameMatchingPolicy::CaseInsensitive;
  WriteLine(Quoted(explanation.question.name) + ": looked for " + ListLookedFor(explanation.question.Target()) +
            (ignoresCase ? ", in any letter case" : ", letter case as each folder has it"));
}

void WriteSteps(const Explanation& explanation, const FolderNumbers& numbers) {
  std::size_t count = 0;
  for (const LookupStep& step : explanation.steps) {
    WriteLine(std::to_string(++count) + ". " + std::visit(StepInWords(explanation, numbers), step));
  }
}

void WriteWinner(const Explanation& explanation, const FolderNumbers& numbers) {
  WriteLine("It means");
  WriteLine("  " + Shown(LocationOf(*explanation.winner)));
  if (explanation.hidden.empty()) {
    WriteLine("It hides nothing");
    return;
  }
  WriteLine("It hides");
  for (const HiddenFile& hidden : explanation.hidden) {
    WriteLine("  " + Shown(LocationOf(hidden.file)) + ": " + InWords(hidden.reason) + " (folder " +
              std::to_string(numbers.NumberOf(*hidden.file.GetPathEntry())) + ")");
  }
}

void WriteMiss(const Explanation& explanation) {
  WriteLine("It means no file on the path");
  if (explanation.near.empty()) return;
  WriteLine("Near it");
  for (const NearName& name : explanation.near) {
    WriteLine("  " + Shown(name.location) + ": " + InWords(name.obstacle) + WayTo(name) + " (folder " +
              std::to_string(name.number) + ")");
  }
  if (explanation.furtherNear != 0) WriteLine("  and " + std::to_string(explanation.furtherNear) + " more");
}

}  // namespace

void WriteAsLines(const Explanation& explanation, const FolderNumbers& numbers) {
  WriteQuestion(explanation);
  WriteSteps(explanation, numbers);
  if (explanation.winner) {
    WriteWinner(explanation, numbers);
  } else {
    WriteMiss(explanation);
  }
}

}  // namespace vornixpath
