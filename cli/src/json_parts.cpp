#include "json_parts.hpp"

#include "file_location.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

namespace json = boost::json;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathManagement::PathEntryType;

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

json::object ToJson(const AbsoluteIRI& location) {
  return {{"path", ShownText(location)}, {"iri", ExactText(location)}};
}

json::object ToJson(const Quorvex::PathManagement::FoundItem& found) {
  json::object object = ToJson(LocationOf(found));
  object["folder"] = NameOf(found.GetPathEntry()->GetEntryType());
  return object;
}

json::object ToJson(const Quorvex::PathManagement::IPathEntry& entry) {
  json::object object = ToJson(entry.GetAbsoluteIRI());
  object["folder"] = NameOf(entry.GetEntryType());
  return object;
}

json::array ToJson(const std::vector<PathProblem>& problems) {
  json::array reported;
  for (const PathProblem& problem : problems) {
    json::object object = ToJson(problem.location);
    object["position"] = problem.position;
    object["reason"] = ReasonOf(problem);
    reported.push_back(std::move(object));
  }
  return reported;
}

}  // namespace vornixpath
