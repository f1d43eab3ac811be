#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <map>
#include <search_path_environment/distinct_folders.hpp>

#include "cache_standing.hpp"
#include "cached_loading.hpp"
#include "commands.hpp"
#include "folder_state.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "path_origin.hpp"
#include "path_source.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;

using Counts = std::map<std::string, std::size_t>;

Counts CountStates(const DistinctFolders& folders) {
  Counts counts = {{"present", 0}, {"missing", 0}, {"unreadable", 0}, {"repeated", 0}};
  for (const KeptFolder& folder : folders.GetKept()) ++counts[StateOf(folder).word];
  for (const DroppedFolder& folder : folders.GetDropped()) ++counts[StateOf(folder).word];
  return counts;
}

std::string UseOf(const CacheStanding& standing) {
  if (standing.count == 0 && !standing.isIndexUsed) return "no: " + InWords(standing);
  return std::string(standing.isIndexUsed ? "yes" : "in part") + ": " + InWords(standing) + "; " +
         Counted(standing.proven, "folder") + " proven, " + Counted(standing.readAnew.size(), "folder") + " read anew";
}

std::string UseWhenRequired(const FolderList& list, const foundation::storage::vfs::AbsoluteIRI& file) {
  const auto cache = ToolboxCache::Open(VornixStorageSystem::GetStorageSystemReference(), file,
                                        Quorvex::PathEnvironment::CacheTrust::Blind);
  if (cache.HoldsListFrom(list.GetOrigin()) || cache.HoldsList(list.GetFolders()) ||
      cache.HoldsAll(list.GetFolders())) {
    return "yes: --cache require, nothing is proven";
  }
  return "no: it does not hold all folders of the path";
}

// Whether, and why or why not.
std::string UseOf(const FolderList& list, const CacheChoice& choice) {
  if (choice.use == CacheUse::Off) return "no: --cache off";
  if (!choice.file) return "no: there is no place for it";
  try {
    const auto storage = VornixStorageSystem::GetStorageSystemReference();
    if (choice.use == CacheUse::Require) return UseWhenRequired(list, *choice.file);
    const auto cache = ToolboxCache::Open(storage, *choice.file, Quorvex::PathEnvironment::CacheTrust::Proven);
    return UseOf(StandingOf(list, cache));
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
  const std::string source = OriginOf(options.path).words;
  const std::string use = UseOf(list, choice);
  const std::string file = choice.file ? ShownText(*choice.file) : "none";
  if (options.json) {
    json::object states;
    for (const auto& [word, count] : counts) states[word] = count;
    std::cout << json::serialize(
                     json::object{{"path", source}, {"folders", std::move(states)}, {"cache", file}, {"used", use}})
              << '\n';
  } else {
    WriteLabelled("path", source);
    for (const char* word : {"present", "missing", "unreadable", "repeated"}) {
      WriteLabelled(word, Counted(counts.at(word), "folder"));
    }
    WriteLabelled("cache", file);
    WriteLabelled("used", use);
  }
  return counts.at("missing") + counts.at("unreadable") == 0 ? ExitStatus::Yes : ExitStatus::No;
}

}  // namespace vornixpath
