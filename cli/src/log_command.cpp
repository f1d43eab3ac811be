// The edits of the session's path that are kept, the last one first, and what each changed.

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <iostream>
#include <optional>
#include <search_path_environment/utc_time.hpp>

#include "commands.hpp"
#include "edit_kind.hpp"
#include "folder_changes.hpp"
#include "json_parts.hpp"
#include "output.hpp"
#include "session.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using Quorvex::PathEnvironment::EditKind;
using Quorvex::PathEnvironment::PathVersion;
using Quorvex::PathEnvironment::SavedPathFile;
using Quorvex::PathEnvironment::SavedPathText;

struct LoggedEdit {
  PathVersion version;
  std::optional<std::vector<FolderChange>> changes;  // none where it is not known what the edit led to
};

// An edit led to the path that the next one found, the last edit to the path that stands there now.
std::vector<LoggedEdit> EditsOf(const SavedPathFile& session) {
  std::optional<SavedPathText> after = session.Read();
  std::vector<PathVersion> versions = session.GetVersions();
  std::vector<LoggedEdit> edits;
  for (auto version = versions.rbegin(); version != versions.rend(); ++version) {
    if (version->damage) {
      edits.push_back({std::move(*version), std::nullopt});
      after.reset();
      continue;
    }
    std::optional<std::vector<FolderChange>> changes;
    if (after) changes = ChangesBetween(version->before.GetFolders(), after->GetFolders());
    after = version->before;
    edits.push_back({std::move(*version), std::move(changes)});
  }
  return edits;
}

void WriteAsLines(const std::vector<LoggedEdit>& edits) {
  for (const LoggedEdit& edit : edits) {
    const PathVersion& version = edit.version;
    if (version.damage) {
      WriteWarning(version.damage->what());
      continue;
    }
    std::string line = std::to_string(version.number) + "  " + Quorvex::PathEnvironment::ToText(version.time) + "  " +
                       NameOf(version.kind);
    if (version.kind == EditKind::Undo) line += " of " + std::to_string(version.undone);
    WriteSafeResult(line, OutputForm::Lines);
    if (!edit.changes) continue;
    for (const FolderChange& change : *edit.changes) WriteSafeResult("  " + InWords(change), OutputForm::Lines);
  }
}

json::array ChangesToJson(const std::vector<FolderChange>& changes) {
  json::array array;
  for (const FolderChange& change : changes) {
    json::object object = ToJson(change.folder);
    object["change"] = NameOf(change.kind);
    array.push_back(std::move(object));
  }
  return array;
}

json::object EditToJson(const LoggedEdit& edit) {
  if (edit.version.damage) return {{"number", edit.version.number}, {"damage", edit.version.damage->what()}};
  json::object object = {{"number", edit.version.number},
                         {"time", Quorvex::PathEnvironment::ToText(edit.version.time)},
                         {"kind", NameOf(edit.version.kind)}};
  if (edit.version.kind == EditKind::Undo) object["undone"] = edit.version.undone;
  if (edit.changes) object["changes"] = ChangesToJson(*edit.changes);
  return object;
}

void WriteAsJson(const std::vector<LoggedEdit>& edits) {
  json::array results;
  for (const LoggedEdit& edit : edits) results.push_back(EditToJson(edit));
  std::cout << json::serialize(json::object{{"edits", std::move(results)}}) << '\n';
}

}  // namespace

ExitStatus RunLog(const LogOptions& options) {
  const std::vector<LoggedEdit> edits = EditsOf(SessionFile(options.session));
  if (options.json) {
    WriteAsJson(edits);
  } else {
    WriteAsLines(edits);
  }
  return ExitStatus::Yes;
}

}  // namespace vornixpath
