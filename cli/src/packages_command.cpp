// What the installed packages put on the path, or why not, manifest by manifest.

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>
#include <string>

#include "commands.hpp"
#include "json_parts.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "packages.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using foundation::storage::vfs::AbsoluteIRI;

const char* NameOf(PackageState state) {
  switch (state) {
    case PackageState::Adds:
      return "adds";
    case PackageState::Disabled:
      return "disabled";
    case PackageState::Unmarked:
      return "unmarked";
    case PackageState::Empty:
      return "empty";
    case PackageState::Unclear:
      return "unclear";
    case PackageState::Refused:
      return "refused";
  }
  return "unknown";
}

std::string SubjectOf(const Package& package) {
  return package.state == PackageState::Refused ? PlaceOf(package)
                                                : fl::filesystem::to_displayed_text(package.component);
}

void WriteAsLines(const Package& package) {
  constexpr std::size_t kWidth = std::string_view("disabled").size() + 2;
  std::string line = NameOf(package.state);
  line.resize(kWidth, ' ');
  line += SubjectOf(package);
  if (package.state != PackageState::Adds) line += ": " + ReasonOf(package);
  WriteSafeResult(line, OutputForm::Lines);
  for (const AbsoluteIRI& folder : package.folders) WriteSafeResult("  " + ShownText(folder), OutputForm::Lines);
}

json::object PackageToJson(const Package& package) {
  json::object object = {{"state", NameOf(package.state)}, {"manifest", ToJson(package.manifest)}};
  if (package.state != PackageState::Refused) {
    object["component"] = fl::filesystem::to_displayed_text(package.component);
  }
  json::array folders;
  for (const AbsoluteIRI& folder : package.folders) folders.push_back(ToJson(folder));
  object["folders"] = std::move(folders);
  return object;
}

void WriteAsJson(const Packages& packages) {
  json::array listed;
  for (const Package& package : packages) listed.push_back(PackageToJson(package));
  const json::object document = {{"packages", std::move(listed)}, {"problems", ProblemsToJson(packages)}};
  std::cout << json::serialize(document) << '\n';
}

}  // namespace

ExitStatus RunPackages(const PackagesOptions& options) {
  const Packages packages = PackagesIn(options.folder);
  if (options.json) {
    WriteAsJson(packages);
  } else {
    for (const Package& package : packages) WriteAsLines(package);
  }
  return options.strict && AnyInDoubt(packages) ? ExitStatus::Incomplete : ExitStatus::Yes;
}

}  // namespace vornixpath
