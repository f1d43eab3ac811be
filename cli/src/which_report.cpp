#include "which_report.hpp"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>

#include "file_location.hpp"
#include "json_parts.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using Quorvex::PathManagement::FoundItem;

json::object ResultFor(const Answer& answer) {
  json::array files;
  for (const FoundItem& found : answer.files) files.push_back(ToJson(found));
  return {{"name", fl::filesystem::to_displayed_text(answer.name)}, {"files", std::move(files)}};
}

}  // namespace

void WriteAsLines(const std::vector<Answer>& answers, OutputForm form) {
  for (const Answer& answer : answers) {
    for (const FoundItem& found : answer.files) {
      WriteResult(TextOf(LocationOf(found)), form);
    }
  }
}

void WriteAsJson(const std::vector<Answer>& answers, const std::vector<Quorvex::PathEnvironment::PathProblem>& problems,
                 const Packages& packages) {
  json::array results;
  for (const Answer& answer : answers) results.push_back(ResultFor(answer));

  json::array reported = ToJson(problems);
  for (auto& problem : ProblemsToJson(packages)) reported.push_back(std::move(problem));
  const json::object document = {{"results", std::move(results)}, {"problems", std::move(reported)}};
  std::cout << json::serialize(document) << '\n';
}

}  // namespace vornixpath
