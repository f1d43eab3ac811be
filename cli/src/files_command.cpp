// Every file of the path that has one of some extensions, whether something hides it or not.

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <iostream>
#include <search_path_utilities/lookup.hpp>

#include "commands.hpp"
#include "each_location_once.hpp"
#include "extension_list.hpp"
#include "file_location.hpp"
#include "json_parts.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "scope_name.hpp"
#include "standpoint.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathManagement::FoundItem;

std::vector<std::u16string> ExtensionsFrom(const std::vector<std::string>& texts) {
  std::vector<std::u16string> extensions;
  for (const std::string& text : texts) {
    const auto listed = ExtensionsFromText(fl::filesystem::from_bytes(text));
    extensions.insert(extensions.end(), listed.begin(), listed.end());
  }
  return extensions;
}

void WriteAsJson(const std::vector<std::u16string>& extensions, const std::vector<FoundItem>& files,
                 const std::vector<PathProblem>& troubles) {
  json::array wanted;
  for (const auto& extension : extensions) wanted.emplace_back(fl::filesystem::to_displayed_text(extension));
  json::array results;
  for (const FoundItem& file : files) results.push_back(ToJson(file));
  const json::object document = {
      {"extensions", std::move(wanted)}, {"files", std::move(results)}, {"problems", ToJson(troubles)}};
  std::cout << json::serialize(document) << '\n';
}

void ReportNone(const std::vector<std::u16string>& extensions) {
  std::string texts;
  for (const std::u16string& extension : extensions) texts += (texts.empty() ? "" : " or ") + Quoted(extension);
  WriteMessage("no file has the extension " + texts);
}

}  // namespace

ExitStatus RunFiles(const FilesOptions& options) {
  const LoadedPath path = LoadPath(options.path);
  const std::vector<PathProblem> troubles = TroublesOf(path);
  Warn(troubles);

  const std::vector<std::u16string> extensions = ExtensionsFrom(options.extensions);
  std::vector<FoundItem> files = Quorvex::PathManagement::FindFilesByExtensions(
      path.GetView(), ScopeFromName(options.scope), extensions, PolicyFor(options.ignoreCase));
  KeepEachLocationOnce(files);  // an extension that is asked for twice lists its files twice, too

  if (options.json) {
    WriteAsJson(extensions, files, troubles);
  } else {
    for (const FoundItem& file : files) WriteResult(TextOf(LocationOf(file)), options.form);
  }
  if (files.empty()) ReportNone(extensions);
  if (options.strict && !troubles.empty()) return ExitStatus::Incomplete;
  return files.empty() ? ExitStatus::No : ExitStatus::Yes;
}

}  // namespace vornixpath
