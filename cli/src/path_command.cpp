// The folders of the path, and what became of them. None is listed: storage is asked once about each.

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <search_path_environment/distinct_folders.hpp>
#include <vector>

#include "commands.hpp"
#include "folder_state.hpp"
#include "json_parts.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "packages.hpp"
#include "path_source.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::SameFolder;

// Calls `tell(folder)` for each kept or dropped folder, in the order of the list.
template <class Tell>
void ForEachFolder(const DistinctFolders& folders, const Tell& tell) {
  auto dropped = folders.GetDropped().begin();
  const auto end = folders.GetDropped().end();
  for (const KeptFolder& kept : folders.GetKept()) {
    for (; dropped != end && dropped->position < kept.position; ++dropped) tell(*dropped);
    tell(kept);
  }
  for (; dropped != end; ++dropped) tell(*dropped);
}

// What is asked about: all folders as they stand, or those that are distinct.
template <class Tell>
void ForEachListed(const DistinctFolders& folders, bool onlyDistinct, const Tell& tell) {
  if (!onlyDistinct) return ForEachFolder(folders, tell);
  for (const KeptFolder& folder : folders.GetKept()) tell(folder);
}

void WriteAsLines(const DistinctFolders& folders, bool onlyDistinct) {
  constexpr std::size_t kWidth = std::string_view("unreadable").size() + 2;
  ForEachListed(folders, onlyDistinct, [](const auto& folder) {
    const std::string word = StateOf(folder).word;
    WriteSafeResult(word + std::string(kWidth - word.size(), ' ') + ShownText(folder.location), OutputForm::Lines);
  });
}

const char* NameOf(SameFolder reason) {
  switch (reason) {
    case SameFolder::ByText:
      return "text";
    case SameFolder::ByIdentity:
      return "identity";
    case SameFolder::ByCanonicalLocation:
      return "canonical-location";
  }
  return "unknown";
}

json::object WithPosition(const AbsoluteIRI& location, std::size_t position) {
  json::object object = ToJson(location);
  object["position"] = position;
  return object;
}

template <class AnyFolder>
json::object FolderToJson(const AnyFolder& folder) {
  const FolderState state = StateOf(folder);
  json::object result = WithPosition(folder.location, folder.position);
  result["state"] = state.word;
  if (!state.reason.empty()) result["reason"] = state.reason;
  return result;
}

json::object ResultFor(const KeptFolder& folder) { return FolderToJson(folder); }

json::object ResultFor(const DroppedFolder& folder) {
  json::object result = FolderToJson(folder);
  result["same"] = NameOf(folder.reason);
  result["stays"] = WithPosition(folder.staying, folder.stayingPosition);
  return result;
}

void WriteAsJson(const DistinctFolders& folders, const PathListOptions& options, const Packages& packages) {
  json::array results;
  ForEachListed(folders, options.onlyDistinct,
                [&results](const auto& folder) { results.push_back(ResultFor(folder)); });
  json::object document = {{"folders", std::move(results)}};
  if (options.onlyDistinct) {
    json::array leftOut;
    for (const DroppedFolder& folder : folders.GetDropped()) leftOut.push_back(ResultFor(folder));
    document["leftOut"] = std::move(leftOut);
  }
  if (options.path.packages) document["problems"] = ProblemsToJson(packages);
  std::cout << json::serialize(document) << '\n';
}

void TellWhatIsLeftOut(const DistinctFolders& folders) {
  for (const DroppedFolder& folder : folders.GetDropped()) {
    WriteMessage(Quoted(TextOf(folder.location)) + ", folder " + std::to_string(folder.position + 1) +
                 " of the path, is left out: " + ReasonOf(folder));
  }
}

}  // namespace

ExitStatus RunPath(const PathListOptions& options) {
  std::vector<AbsoluteIRI> listed = FoldersFor(options.path);
  const Packages packages = PackagesFor(options.path);
  const std::vector<AbsoluteIRI> added = FoldersOf(packages);
  listed.insert(listed.end(), added.begin(), added.end());
  if (options.form == OutputForm::NulTerminated && !options.onlyDistinct) {
    for (const AbsoluteIRI& folder : listed) WriteResult(TextOf(folder), options.form);
    return ExitStatus::Yes;
  }

  const DistinctFolders folders(listed, foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference(),
                                Quorvex::PathEnvironment::FolderQuestion::CanItBeListed);
  if (options.onlyDistinct) TellWhatIsLeftOut(folders);
  if (options.json) {
    WriteAsJson(folders, options, packages);
  } else if (options.form == OutputForm::NulTerminated) {
    for (const KeptFolder& folder : folders.GetKept()) WriteResult(TextOf(folder.location), options.form);
  } else {
    WriteAsLines(folders, options.onlyDistinct);
  }
  return ExitStatus::Yes;
}

}  // namespace vornixpath
