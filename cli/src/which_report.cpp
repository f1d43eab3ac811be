#include "which_report.hpp"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>
#include <search_path_utilities/path_editing.hpp>

#include "output.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::GetStringFromIRI;
using Quorvex::PathManagement::PathEntryType;

AbsoluteIRI LocationOf(const FoundItem& found) {
  const auto item = found.GetPathItem();
  return item->folderIRI.getChild(item->baseName + item->extension);
}

std::string ShownText(const AbsoluteIRI& iri) { return fl::filesystem::to_displayed_text(GetStringFromIRI(iri)); }

const char* NameOf(PathEntryType kind) {
  switch (kind) {
    case PathEntryType::Main:
      return "main";
    case PathEntryType::Package:
      return "package";
    case PathEntryType::Class:
      return "class";
    case PathEntryType::Private:
      return "private";
    case PathEntryType::Auxiliary:
      return "auxiliary";
    case PathEntryType::Resources:
      return "resources";
  }
  return "unknown";
}

json::object ToJson(const FoundItem& found) {
  const AbsoluteIRI location = LocationOf(found);
  return {{"path", ShownText(location)},
          {"iri", ExactText(location)},
          {"folder", NameOf(found.GetPathEntry()->GetEntryType())}};
}

json::object ToJson(const Answer& answer) {
  json::array files;
  for (const FoundItem& found : answer.files) files.push_back(ToJson(found));
  return {{"name", fl::filesystem::to_displayed_text(answer.name)}, {"files", std::move(files)}};
}

json::object ToJson(const PathProblem& problem) {
  return {{"path", ShownText(problem.location)},
          {"iri", ExactText(problem.location)},
          {"position", problem.position},
          {"reason", ReasonOf(problem)}};
}

}  // namespace

void WriteAsLines(const std::vector<Answer>& answers, OutputForm form) {
  for (const Answer& answer : answers) {
    for (const FoundItem& found : answer.files) WriteResult(GetStringFromIRI(LocationOf(found)), form);
  }
}

void WriteAsJson(const std::vector<Answer>& answers, const std::vector<PathProblem>& problems) {
  json::array results;
  for (const Answer& answer : answers) results.push_back(ToJson(answer));
  json::array reported;
  for (const PathProblem& problem : problems) reported.push_back(ToJson(problem));

  const json::object document = {{"results", std::move(results)}, {"problems", std::move(reported)}};
  std::cout << json::serialize(document) << '\n';
}

}  // namespace vornixpath
