// An explanation as people read it.

#include <search_path_utilities/lookup.hpp>

#include "file_location.hpp"
#include "location_text.hpp"
#include "looked_for.hpp"
#include "output.hpp"
#include "step_in_words.hpp"
#include "why_report.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;

void Tell(const std::string& line) { WriteSafeResult(line, OutputForm::Lines); }

std::string InWords(HidingReason reason) {
  switch (reason) {
    case HidingReason::LaterExtension:
      return "its extension stands later in the list";
    case HidingReason::OtherLetterCase:
      return "another letter case; the exact name wins";
    case HidingReason::LaterByName:
      return "another letter case, like the winner's, and later in name order";
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
      return "the folders written do not match";
    case Obstacle::InResources:
      return "among resources, which no name reaches";
    case Obstacle::InPlainSubfolder:
      return "in a plain subfolder, which is not on the path";
  }
  return "unknown obstacle";
}

// How the near name can be meant.
std::string WayTo(const NearName& name) {
  if (name.otherName.empty()) return {};
  const std::string place = name.askFrom ? "from " + ShownText(*name.askFrom) + " " : std::string();
  return "; " + place + Quoted(name.otherName) + " means it" + (name.needsNoExtension ? " with --ext ''" : "");
}

std::string InWords(const std::vector<Obstacle>& obstacles) {
  std::string words;
  for (const Obstacle obstacle : obstacles) words += (words.empty() ? "" : ", and ") + std::string(InWords(obstacle));
  return words;
}

// The first words of the line about a file or folder.
std::string Entitled(const AbsoluteIRI& location, std::size_t number) {
  return "  " + ShownText(location) + ", folder " + std::to_string(number);
}

std::string Entitled(const FoundItem& file, const FolderNumbers& numbers) {
  return Entitled(LocationOf(file), numbers.NumberOf(*file.GetPathEntry()));
}

const char* LetterCaseOf(const Explanation& explanation) {
  if (explanation.policy != FilenameMatchingPolicy::CaseInsensitive) {
    return ", letter case counts where the storage tells it apart";
  }
  const bool namesFolders = Quorvex::PathManagement::IsPartialPathname(explanation.question.name);
  return namesFolders ? ", folder and file names in any letter case" : ", file names in any letter case";
}

void WriteQuestion(const Explanation& explanation) {
  Tell(Quoted(explanation.question.name) + ": looked for " + ListLookedFor(explanation.question.Target()) +
       LetterCaseOf(explanation));
}

void WriteMasked(const Explanation& explanation, const FolderNumbers& numbers) {
  if (explanation.maskedFolders.empty()) return;
  Tell("Masked");
  for (const EntryPtr& folder : explanation.maskedFolders) {
    Tell(Entitled(folder->GetAbsoluteIRI(), numbers.NumberOf(*folder)));
  }
  if (explanation.maskedFiles.empty()) {
    Tell(explanation.winner ? "Without masks it would mean the same" : "Without masks it would mean nothing either");
    return;
  }
  Tell("Without masks it could mean");
  for (const FoundItem& file : explanation.maskedFiles) Tell(Entitled(file, numbers));
}

void WriteSteps(const Explanation& explanation, const FolderNumbers& numbers) {
  const StepInWords inWords(explanation, numbers);
  std::size_t count = 0;
  for (const LookupStep& step : explanation.steps) Tell(std::to_string(++count) + ". " + std::visit(inWords, step));
}

void WriteWinner(const Explanation& explanation, const FolderNumbers& numbers) {
  Tell("It means");
  Tell(Entitled(*explanation.winner, numbers));
  if (explanation.hidden.empty()) {
    Tell("It hides nothing");
    return;
  }
  Tell("It hides");
  for (const HiddenFile& hidden : explanation.hidden) {
    Tell(Entitled(hidden.file, numbers) + ": " + InWords(hidden.reason));
  }
}

void WriteMiss(const Explanation& explanation) {
  if (!NamesAFile(explanation.question.Target())) {
    Tell("It names no file: it has no base name");
    return;
  }
  Tell("It means no file on the path");
  Tell(explanation.near.empty() ? "Nothing is near it" : "Near it");
  for (const NearName& name : explanation.near) {
    Tell(Entitled(name.location, name.number) + ": " + InWords(name.obstacles) + WayTo(name));
  }
  if (explanation.furtherNear != 0) Tell("  and " + std::to_string(explanation.furtherNear) + " more");
  if (explanation.unread.empty()) return;
  Tell("It may stand where nothing could be read");
  for (const UnreadFolder& folder : explanation.unread) {
    Tell(Entitled(folder.location, folder.number) + ": " + folder.reason);
  }
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
  WriteMasked(explanation, numbers);
}

}  // namespace vornixpath
