#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <iterator>
#include <support/texts_of.hpp>

namespace Quorvex::PathManagement::support {

namespace {

const std::string kNone = "none";

}  // namespace

std::string LocationOf(const std::shared_ptr<const IPathEntry>& entry) {
  return entry ? fl::filesystem::to_bytes(entry->GetAbsoluteIRI().getPath()) : kNone;
}

std::vector<std::string> LocationsOf(const std::vector<std::shared_ptr<const IPathEntry>>& entries) {
  std::vector<std::string> locations;
  std::transform(entries.begin(), entries.end(), std::back_inserter(locations), LocationOf);
  return locations;
}

std::string FileOf(const FoundItem& found) {
  const auto item = found.GetPathItem();
  return fl::filesystem::to_bytes(item->folderIRI.getPath() + u'/' + item->baseName + item->extension);
}

std::string FileOf(const boost::optional<FoundItem>& found) { return found ? FileOf(*found) : kNone; }

std::vector<std::string> FilesOf(const std::vector<FoundItem>& found) {
  std::vector<std::string> files;
  for (const FoundItem& item : found) files.push_back(FileOf(item));
  return files;
}

}  // namespace Quorvex::PathManagement::support
