#include "cache_report.hpp"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <chrono>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <search_path_environment/distinct_folders.hpp>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_environment/utc_time.hpp>

#include "json_parts.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::FolderEntry;
using Quorvex::PathEnvironment::RecordedFolder;
using Quorvex::PathEnvironment::Standing;
using Quorvex::PathEnvironment::ToolboxCache;
using Quorvex::PathEnvironment::ToolboxCacheError;

void WriteJson(const json::object& document) { std::cout << json::serialize(document) << '\n'; }

std::string TimeOf(const ToolboxCache& cache) {
  return Quorvex::PathEnvironment::ToText(std::chrono::floor<std::chrono::seconds>(cache.GetTimeOfWriting()));
}

// Of a folder that is not proven, in a word.
std::string WordFor(const RecordedFolder& folder) {
  if (!folder.canBeProven) return "unproven";
  return folder.standing == Standing::Changed ? "changed" : "another";
}

void WriteHoldings(const AbsoluteIRI& file, const ToolboxCache& cache) {
  WriteLabelled("cache", ShownText(file));
  WriteLabelled("written", TimeOf(cache) + ", " + Counted(cache.GetSize(), "byte"));
  WriteLabelled("root", ShownText(cache.GetRoot()));
  WriteLabelled("holds", Counted(cache.CountFolders(), "folder") + ", " +
                             Counted(cache.CountEntries() - cache.CountFolders(), "special folder") + " in them, " +
                             Counted(cache.CountNames(), "name"));
}

json::object HoldingsToJson(const AbsoluteIRI& file, const ToolboxCache& cache) {
  return {{"cache", ToJson(file)},           {"written", TimeOf(cache)},
          {"bytes", cache.GetSize()},        {"root", ToJson(cache.GetRoot())},
          {"folders", cache.CountFolders()}, {"specialFolders", cache.CountEntries() - cache.CountFolders()},
          {"names", cache.CountNames()}};
}

json::array ReadAnewToJson(const std::vector<RecordedFolder>& folders) {
  json::array array;
  for (const RecordedFolder& folder : folders) {
    json::object object = ToJson(folder.location);
    object["state"] = WordFor(folder);
    array.push_back(std::move(object));
  }
  return array;
}

}  // namespace

std::vector<VerifiedFolder> CompareWithDisk(const ToolboxCache& cache) {
  const auto storage = VornixStorageSystem::GetStorageSystemReference();
  const auto recorded = cache.GetMainEntries();
  std::vector<AbsoluteIRI> locations;
  locations.reserve(recorded.size());
  for (const auto& entry : recorded) locations.push_back(entry->GetLocation());
  const auto path = Quorvex::PathEnvironment::FolderPathFactory().CreateFolderPath(
      DistinctFolders(locations), Quorvex::PathEnvironment::FolderEntryFactory(storage));
  const auto read = path->GetMainEntries();

  std::vector<VerifiedFolder> folders;
  for (RecordedFolder& folder : cache.ExamineFolders()) {
    const std::size_t place = folders.size();
    const auto& now = static_cast<const FolderEntry&>(*read->at(place));
    folders.push_back({std::move(folder), recorded[place]->HoldsTheSameAs(now)});
  }
  return folders;
}

bool IsWrong(const VerifiedFolder& folder) { return !folder.isTheSame && folder.recorded.standing == Standing::Proven; }

bool IsAnyWrong(const std::vector<VerifiedFolder>& folders) {
  return std::any_of(folders.begin(), folders.end(), IsWrong);
}

void ReportWritten(const AbsoluteIRI& file, const ToolboxCache& cache, bool json) {
  if (json) return WriteJson(HoldingsToJson(file, cache));
  WriteHoldings(file, cache);
}

void ReportRefused(const AbsoluteIRI& file, const ToolboxCacheError& error, bool json) {
  if (json) return WriteJson({{"cache", ToJson(file)}, {"refused", error.what()}});
  WriteLabelled("cache", ShownText(file));
  WriteLabelled("not used", error.what());
}

void ReportStatus(const AbsoluteIRI& file, const ToolboxCache& cache, const CacheStanding& standing, bool json) {
  if (json) {
    json::object document = HoldingsToJson(file, cache);
    document["holdsThisPath"] = standing.holdsList;
    document["usesIndex"] = standing.isIndexUsed;
    document["proven"] = standing.proven;
    document["readAnew"] = ReadAnewToJson(standing.readAnew);
    return WriteJson(document);
  }
  WriteHoldings(file, cache);
  WriteLabelled("path", InWords(standing));
  WriteLabelled("proven", Counted(standing.proven, "folder"));
  WriteLabelled("read anew", Counted(standing.readAnew.size(), "folder"));
  for (const RecordedFolder& folder : standing.readAnew) {
    WriteLabelled("  " + WordFor(folder), ShownText(folder.location));
  }
}

void ReportVerified(const AbsoluteIRI& file, const ToolboxCache& cache, const std::vector<VerifiedFolder>& folders,
                    bool json) {
  const auto count = [&folders](const auto& isMeant) {
    return static_cast<std::size_t>(std::count_if(folders.begin(), folders.end(), isMeant));
  };
  const std::size_t same = count([](const VerifiedFolder& folder) { return folder.isTheSame; });
  const std::size_t wrong = count(IsWrong);
  if (json) {
    json::object document = HoldingsToJson(file, cache);
    document["same"] = same;
    document["changed"] = folders.size() - same - wrong;
    document["wrong"] = wrong;
    return WriteJson(document);
  }
  WriteHoldings(file, cache);
  WriteLabelled("same", Counted(same, "folder"));
  WriteLabelled("changed", Counted(folders.size() - same - wrong, "folder"));
  WriteLabelled("wrong", Counted(wrong, "folder"));
  for (const VerifiedFolder& folder : folders) {
    if (IsWrong(folder)) WriteLabelled("  wrong", ShownText(folder.recorded.location));
  }
}

}  // namespace vornixpath
