// The folders of the path, and what became of them. None is listed: storage is asked once about each.

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <search_path_environment/path_problem.hpp>
#include <unordered_set>
#include <vector>

#include "commands.hpp"
#include "json_parts.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "path_source.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathEnvironment::ProblemKind;

struct Standing {
  std::string word;
  std::string reason;  // empty for a folder that is present
};

Standing StandingAfter(const std::error_code& error, const AbsoluteIRI& folder) {
  if (error == std::errc::no_such_file_or_directory)
    return {"missing", ReasonOf(PathProblem{folder, ProblemKind::Missing, error})};
  if (error == std::errc::not_a_directory)
    return {"missing", ReasonOf(PathProblem{folder, ProblemKind::NotAFolder, error})};
  const bool isLoop = error == std::errc::too_many_symbolic_link_levels;
  return {isLoop ? "missing" : "unreadable", ReasonOf(PathProblem{folder, ProblemKind::Unreadable, error})};
}

Standing StandingOf(const AbsoluteIRI& folder) {
  try {
    VornixStorageSystem::GetStorageSystemReference().ProviderFor(folder)->CheckFolder(folder);
    return {"present", ""};
  } catch (const foundation::storage::vfs::Exception& failure) {
    return StandingAfter(failure.GetError(), folder);
  }
}

// Calls `tell(folder, standing)` for each folder in order.
template <class Tell>
void ForEachStanding(const std::vector<AbsoluteIRI>& folders, const Tell& tell) {
  std::unordered_set<AbsoluteIRI> seen;
  for (const AbsoluteIRI& folder : folders) {
    const bool isFirst = seen.insert(folder).second;
    tell(folder,
         isFirst ? StandingOf(folder) : Standing{"repeated", ReasonOf(PathProblem{folder, ProblemKind::Repeated, {}})});
  }
}

void WriteAsLines(const std::vector<AbsoluteIRI>& folders) {
  constexpr std::size_t kWidth = std::string_view("unreadable").size() + 2;
  ForEachStanding(folders, [](const AbsoluteIRI& folder, const Standing& standing) {
    const std::string gap(kWidth - standing.word.size(), ' ');
    WriteSafeResult(standing.word + gap + ShownText(folder), OutputForm::Lines);
  });
}

void WriteAsJson(const std::vector<AbsoluteIRI>& folders) {
  json::array results;
  ForEachStanding(folders, [&results](const AbsoluteIRI& folder, const Standing& standing) {
    json::object result = ToJson(folder);
    result["state"] = standing.word;
    if (!standing.reason.empty()) result["reason"] = standing.reason;
    results.push_back(std::move(result));
  });
  std::cout << json::serialize(json::object{{"folders", std::move(results)}}) << '\n';
}

}  // namespace

ExitStatus RunPath(const PathListOptions& options) {
  const std::vector<AbsoluteIRI> folders = FoldersFor(options.path);
  if (options.json) {
    WriteAsJson(folders);
  } else if (options.form == OutputForm::NulTerminated) {
    for (const AbsoluteIRI& folder : folders) WriteResult(TextOf(folder), options.form);
  } else {
    WriteAsLines(folders);
  }
  return ExitStatus::Yes;
}

}  // namespace vornixpath
