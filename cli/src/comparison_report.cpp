#include "comparison_report.hpp"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>

#include "folder_numbers.hpp"
#include "json_parts.hpp"
#include "output.hpp"
#include "path_troubles.hpp"
#include "terminal.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using fl::filesystem::to_displayed_text;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::PathEntryType;

bool IsOfFolderOfPath(const FolderChange& change) {
  return (change.after ? change.after : change.before)->GetEntryType() == PathEntryType::Main;
}

void WriteLine(ChangeKind kind, const std::string& line, bool isColoured) {
  WriteSafeResult(isColoured ? Coloured(kind, line) : line, OutputForm::Lines);
}

void WriteFiles(const FolderChange& change, bool isColoured) {
  const auto write = [&](ChangeKind kind, const std::u16string& file) {
    WriteLine(kind, std::string("  ") + MarkOf(kind) + ' ' + to_displayed_text(file), isColoured);
  };
  const ChangedFiles files = FilesChangedBy(change);
  for (const std::u16string& file : files.added) write(ChangeKind::Added, file);
  for (const std::u16string& file : files.removed) write(ChangeKind::Removed, file);
}

// Of folders of the path, only what is told within them, if they were told already.
void WriteChanges(const std::vector<FolderChange>& changes, bool isDeep, bool areFoldersTold, bool isColoured) {
  for (const FolderChange& change : changes) {
    const ChangedFiles files = isDeep ? FilesChangedBy(change) : ChangedFiles{};
    const bool hasFiles = !files.added.empty() || !files.removed.empty();
    if (areFoldersTold && IsOfFolderOfPath(change) && !hasFiles) continue;
    WriteLine(change.kind, InWords(change), isColoured);
    if (isDeep) WriteFiles(change, isColoured);
  }
}

void WriteNames(const PathComparison& comparison) {
  if (!comparison.names) return;
  for (const ChangedName& name : *comparison.names) WriteSafeResult(InWords(name), OutputForm::Lines);
}

json::array NamesToJson(const std::vector<std::u16string>& names) {
  json::array array;
  for (const std::u16string& name : names) array.emplace_back(to_displayed_text(name));
  return array;
}

json::value FileToJson(const std::optional<AbsoluteIRI>& file) {
  return file ? json::value(ToJson(*file)) : json::value(nullptr);
}

json::object ChangeToJson(const FolderChange& change, const FolderNumbers& before, const FolderNumbers& after,
                          bool isDeep) {
  json::object object = ToJson(change.after ? *change.after : *change.before);
  object["change"] = NameOf(change.kind);
  if (change.before) object["oldPosition"] = before.NumberOf(*change.before) - 1;
  if (change.after) object["position"] = after.NumberOf(*change.after) - 1;
  if (isDeep && change.kind == ChangeKind::Refreshed) {
    const ChangedFiles files = FilesChangedBy(change);
    object["filesAdded"] = NamesToJson(files.added);
    object["filesRemoved"] = NamesToJson(files.removed);
  }
  return object;
}

}  // namespace

void WriteAsLines(const PathComparison& comparison, bool isDeep) {
  WriteChanges(comparison.changes, isDeep, false, false);
  WriteNames(comparison);
}

void WriteForPeople(const PathComparison& comparison, bool isDeep) {
  const auto terminal = LayoutOfTerminal();
  if (!terminal || comparison.changes.empty()) return WriteAsLines(comparison, isDeep);

  for (const std::string& line : LayOut(RowsOf(comparison), *terminal)) WriteSafeResult(line, OutputForm::Lines);
  WriteChanges(comparison.changes, isDeep, true, terminal->isColoured);
  WriteNames(comparison);
}

void WriteAsJson(const PathComparison& comparison, bool isDeep) {
  const FolderNumbers before(*comparison.before);
  const FolderNumbers after(*comparison.after);
  json::array changes;
  for (const FolderChange& change : comparison.changes) {
    changes.push_back(ChangeToJson(change, before, after, isDeep));
  }
  json::object document = {{"changes", std::move(changes)}};
  if (comparison.names) {
    json::array names;
    for (const ChangedName& name : *comparison.names) {
      names.push_back({{"name", to_displayed_text(name.name)},
                       {"before", FileToJson(name.before)},
                       {"after", FileToJson(name.after)}});
    }
    document["names"] = std::move(names);
  }
  document["oldProblems"] = ToJson(TroublesOf(*comparison.before));
  document["problems"] = ToJson(TroublesOf(*comparison.after));
  std::cout << json::serialize(document) << '\n';
}

}  // namespace vornixpath
