#include <algorithm>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <map>
#include <search_path_environment/cached_path.hpp>
#include <search_path_environment/distinct_folders.hpp>

#include "cache_report.hpp"
#include "cached_loading.hpp"
#include "commands.hpp"
#include "folder_state.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "session.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::RecordedFolder;
using Quorvex::PathEnvironment::Standing;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;

std::string SourceOf(const PathOptions& options) {
  if (options.file) return "the path file " + *options.file;
  if (options.text) return "--path";
  if (!options.session && PathVariable()) return "VORNIX_PATH";
  return "the session " + ShownText(SessionFile(options.session).GetLocation());
}

using Counts = std::map<std::string, std::size_t>;

Counts CountStates(const DistinctFolders& folders) {
  Counts counts = {{"present", 0}, {"missing", 0}, {"unreadable", 0}, {"repeated", 0}};
  for (const KeptFolder& folder : folders.GetKept()) ++counts[StateOf(folder).word];
  for (const DroppedFolder& folder : folders.GetDropped()) ++counts[StateOf(folder).word];
  return counts;
}

std::string UseOf(const FolderList& list, const ToolboxCache& cache) {
  const bool isOfThisList = cache.HoldsListFrom(list.GetOrigin()) || cache.HoldsList(list.GetFolders());
  const auto folders = cache.ExamineFolders();
  const auto count = [&folders](Standing standing) {
    return static_cast<std::size_t>(
        std::count_if(folders.begin(), folders.end(),
                      [standing](const RecordedFolder& folder) { return folder.standing == standing; }));
  };
  const std::size_t others = count(Standing::Another);
  const std::string proven = Counted(count(Standing::Proven), "folder") + " proven, " +
                             Counted(count(Standing::Changed) + others, "folder") + " read anew";
  if (!isOfThisList) return "in part: it holds another path, so its folders are used and its index is not; " + proven;
  if (others > 0)
    return "in part: folders came, went or were put in another's place, so its index is not used; " + proven;
  return "yes: " + proven;
}

// Whether, and why or why not.
std::string UseOf(const FolderList& list, const CacheChoice& choice) {
  if (choice.use == CacheUse::Off) return "no: --cache off";
  if (!choice.file) return "no: there is no place for it";
  try {
    const auto storage = VornixStorageSystem::GetStorageSystemReference();
    if (choice.use == CacheUse::Require) {
      static_cast<void>(ToolboxCache::Open(storage, *choice.file, Quorvex::PathEnvironment::CacheTrust::Blind));
      return "yes: --cache require, nothing is proven";
    }
    return UseOf(list, ToolboxCache::Open(storage, *choice.file, Quorvex::PathEnvironment::CacheTrust::Proven));
  } catch (const ToolboxCacheError& error) {
    return std::string("no: ") + error.what();
  }
}

}  // namespace

ExitStatus RunStatus(const StatusOptions& options) {
  const FolderList list = ListFor(options.path);
  const DistinctFolders folders(list.GetFolders(), VornixStorageSystem::GetStorageSystemReference(),
                                Quorvex::PathEnvironment::FolderQuestion::CanItBeListed);
  const Counts counts = CountStates(folders);
  const CacheChoice choice(options.path);
  const std::string source = SourceOf(options.path);
  const std::string use = UseOf(list, choice);
  const std::string file = choice.file ? ShownText(*choice.file) : "none";
  if (options.json) {
    json::object states;
    for (const auto& [word, count] : counts) states[word] = count;
    std::cout << json::serialize(
                     json::object{{"path", source}, {"folders", std::move(states)}, {"cache", file}, {"used", use}})
              << '\n';
  } else {
    WriteSafeResult("path       " + source, OutputForm::Lines);
    for (const char* word : {"present", "missing", "unreadable", "repeated"}) {
      WriteSafeResult(
          std::string(word) + std::string(11 - std::string_view(word).size(), ' ') + Counted(counts.at(word), "folder"),
          OutputForm::Lines);
    }
    WriteSafeResult("cache      " + file, OutputForm::Lines);
    WriteSafeResult("used       " + use, OutputForm::Lines);
  }
  return counts.at("missing") + counts.at("unreadable") == 0 ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
