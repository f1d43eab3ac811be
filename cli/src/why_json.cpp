// An explanation as programs read it. Positions on the path count from 0, as in the other documents.

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>

#include "file_location.hpp"
#include "json_parts.hpp"
#include "looked_for.hpp"
#include "why_report.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using fl::filesystem::to_displayed_text;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::IPathEntry;

const char* NameOf(HidingReason reason) {
  switch (reason) {
    case HidingReason::LaterExtension:
      return "later-extension";
    case HidingReason::OtherLetterCase:
      return "other-letter-case";
    case HidingReason::LaterByName:
      return "later-by-name";
    case HidingReason::PrivateFolderFirst:
      return "private-folder-first";
    case HidingReason::ClassFoldersFirst:
      return "class-folders-first";
    case HidingReason::ClassFolderLater:
      return "class-folder-later";
    case HidingReason::ClassFolderNotEarlier:
      return "class-folder-not-earlier";
    case HidingReason::PlainFileLater:
      return "plain-file-later";
    case HidingReason::LaterOnPath:
      return "later-on-path";
    case HidingReason::LaterInTheSameFolder:
      return "later-in-the-same-folder";
  }
  return "unknown";
}

const char* NameOf(Obstacle obstacle) {
  switch (obstacle) {
    case Obstacle::OtherLetterCase:
      return "other-letter-case";
    case Obstacle::OtherLetterCaseOfFolder:
      return "other-letter-case-of-folder";
    case Obstacle::OtherExtension:
      return "other-extension";
    case Obstacle::InPrivateFolder:
      return "in-private-folder";
    case Obstacle::InPackage:
      return "in-package";
    case Obstacle::InClassFolder:
      return "in-class-folder";
    case Obstacle::InOtherFolder:
      return "in-other-folder";
    case Obstacle::InResources:
      return "in-resources";
    case Obstacle::InPlainSubfolder:
      return "in-plain-subfolder";
  }
  return "unknown";
}

/// Makes the parts of the document that say where something stands on the path.
class PartsOf {
 public:
  explicit PartsOf(const FolderNumbers& numbers) : numbers_(numbers) {}

  json::object Folder(const IPathEntry& entry) const { return WithPosition(ToJson(entry), entry); }
  json::value FolderOrNull(const EntryPtr& entry) const { return entry ? json::value(Folder(*entry)) : nullptr; }
  json::object File(const FoundItem& found) const { return WithPosition(ToJson(found), *found.GetPathEntry()); }

  json::value FileOrNull(const boost::optional<FoundItem>& found) const {
    return found ? json::value(File(*found)) : nullptr;
  }

  json::object operator()(const AskedForEntry& step) const {
    return {{"asked", "entry"}, {"of", ToJson(step.folder)}, {"answer", FolderOrNull(step.answer)}};
  }
  json::object operator()(const AskedForPrivateFolder& step) const {
    return {{"asked", "private-folder"}, {"of", Folder(*step.folder)}, {"answer", FolderOrNull(step.answer)}};
  }
  json::object operator()(const AskedForClassFolders& step) const {
    json::array folders;
    for (const EntryPtr& entry : step.answer) folders.push_back(Folder(*entry));
    return {{"asked", "class-folders"}, {"name", to_displayed_text(step.name)}, {"answer", std::move(folders)}};
  }
  json::object operator()(const AskedInFolder& step) const {
    const auto found = step.answer ? boost::make_optional(FoundItem(step.answer, step.folder)) : boost::none;
    return {{"asked", "file-in-folder"}, {"in", Folder(*step.folder)}, {"answer", FileOrNull(found)}};
  }
  json::object operator()(const AskedInScope& step) const {
    return {{"asked", step.onlyPlainFolders ? "file-in-plain-folders" : "file-in-matching-folders"},
            {"folders", step.searched.size()},
            {"answer", FileOrNull(step.answer)}};
  }
  json::object operator()(const AskedForOrder& step) const {
    return {{"asked", "is-before"},
            {"first", Folder(*step.first)},
            {"second", Folder(*step.second)},
            {"answer", step.answer}};
  }

 private:
  json::object WithPosition(json::object object, const IPathEntry& entry) const {
    object["position"] = numbers_.NumberOf(entry) - 1;
    return object;
  }

  const FolderNumbers& numbers_;
};

json::object NearToJson(const NearName& name) {
  json::object object = ToJson(name.location);
  object["position"] = name.number - 1;
  json::array obstacles;
  for (const Obstacle obstacle : name.obstacles) obstacles.emplace_back(NameOf(obstacle));
  object["obstacles"] = std::move(obstacles);
  if (!name.otherName.empty()) object["name"] = to_displayed_text(name.otherName);
  if (name.askFrom) object["from"] = ToJson(*name.askFrom);
  if (name.needsNoExtension) object["ext"] = "";
  return object;
}

json::array LookedForToJson(const Question& question) {
  json::array names;
  for (const std::u16string& name : NamesLookedFor(question.Target())) names.emplace_back(to_displayed_text(name));
  return names;
}

json::array HiddenToJson(const std::vector<HiddenFile>& files, const PartsOf& parts) {
  json::array hidden;
  for (const HiddenFile& file : files) {
    json::object object = parts.File(file.file);
    object["reason"] = NameOf(file.reason);
    hidden.push_back(std::move(object));
  }
  return hidden;
}

json::object MaskedToJson(const Explanation& explanation, const PartsOf& parts) {
  json::array folders;
  for (const EntryPtr& folder : explanation.maskedFolders) folders.push_back(parts.Folder(*folder));
  json::array files;
  for (const FoundItem& file : explanation.maskedFiles) files.push_back(parts.File(file));
  return {{"folders", std::move(folders)}, {"files", std::move(files)}};
}

}  // namespace

void WriteAsJson(const Explanation& explanation, const FolderNumbers& numbers,
                 const std::vector<Quorvex::PathEnvironment::PathProblem>& problems) {
  const PartsOf parts(numbers);
  json::array steps;
  for (const LookupStep& step : explanation.steps) steps.push_back(std::visit(parts, step));
  json::array near;
  for (const NearName& name : explanation.near) near.push_back(NearToJson(name));

  const bool ignoresCase = explanation.policy == FilenameMatchingPolicy::CaseInsensitive;
  const json::object document = {{"name", to_displayed_text(explanation.question.name)},
                                 {"lookedFor", LookedForToJson(explanation.question)},
                                 {"namesAFile", NamesAFile(explanation.question.Target())},
                                 {"letterCase", ignoresCase ? "ignored" : "native"},
                                 {"steps", std::move(steps)},
                                 {"winner", parts.FileOrNull(explanation.winner)},
                                 {"hidden", HiddenToJson(explanation.hidden, parts)},
                                 {"near", std::move(near)},
                                 {"furtherNear", explanation.furtherNear},
                                 {"masked", MaskedToJson(explanation, parts)},
                                 {"problems", ToJson(problems)}};
  std::cout << json::serialize(document) << '\n';
}

}  // namespace vornixpath
