// The folders of the path that a partial pathname of folder names matches.

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <iostream>
#include <search_path_utilities/lookup.hpp>

#include "all_kinds.hpp"
#include "commands.hpp"
#include "json_parts.hpp"
#include "location_text.hpp"
#include "looked_for.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "standpoint.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::IPathEntry;
using Entries = std::vector<std::shared_ptr<const IPathEntry>>;

// Whatever matches strictly matches leniently, too.
Entries KeepStrictMatches(Entries entries, const std::u16string& partial, FilenameMatchingPolicy policy) {
  const std::vector<std::u16string> names = FolderNamesIn(partial);
  const auto isLoose = [&](const std::shared_ptr<const IPathEntry>& entry) {
    return !Quorvex::PathManagement::DoesPartialPathnameStrictlyMatchPathEntryIRI(names, *entry, policy);
  };
  entries.erase(std::remove_if(entries.begin(), entries.end(), isLoose), entries.end());
  return entries;
}

Entries MatchesOf(const std::u16string& partial, const IPath& path, FilenameMatchingPolicy policy, bool strict) {
  Entries entries = path.GetPartiallyMatchingEntries(AllKinds(), partial, policy);
  return strict ? KeepStrictMatches(std::move(entries), partial, policy) : entries;
}

void WriteAsJson(const std::u16string& partial, const Entries& entries, const std::vector<PathProblem>& troubles) {
  json::array results;
  for (const auto& entry : entries) results.push_back(ToJson(*entry));
  const json::object document = {{"partial", fl::filesystem::to_displayed_text(partial)},
                                 {"results", std::move(results)},
                                 {"problems", ToJson(troubles)}};
  std::cout << json::serialize(document) << '\n';
}

}  // namespace

ExitStatus RunMatch(const MatchOptions& options) {
  const LoadedPath path = LoadPath(options.path);
  const std::vector<PathProblem> troubles = TroublesOf(path);
  Warn(troubles);

  const std::u16string partial = fl::filesystem::from_bytes(options.partial);
  const Entries entries = MatchesOf(partial, path.GetView(), PolicyFor(options.ignoreCase), options.strict);
  if (options.json) {
    WriteAsJson(partial, entries, troubles);
  } else {
    for (const auto& entry : entries) {
      WriteResult(TextOf(entry->GetAbsoluteIRI()), options.form);
    }
  }
  if (!entries.empty()) return ExitStatus::Yes;

  WriteMessage(Quoted(partial) + " matches no folder on the path");
  return ExitStatus::No;
}

}  // namespace vornixpath
