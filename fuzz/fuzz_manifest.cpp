// A manifest from any bytes: it is understood or refused with a line, and what is understood is JSON to another reader
// as well, which finds the same in it.
#include <algorithm>
#include <boost/json/parse.hpp>
#include <cstddef>
#include <cstdint>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_environment/package_manifest.hpp>
#include <string_view>

#include "require.hpp"

namespace {

using fl::filesystem::to_bytes;
using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::ManifestError;
using Quorvex::PathEnvironment::PackageManifest;

bool IsBelow(const AbsoluteIRI& location, const AbsoluteIRI& root) {
  const auto names = location.getSegments();
  const auto enclosing = root.getSegments();
  return location.getScheme() == root.getScheme() && location.getHost() == root.getHost() &&
         names.size() >= enclosing.size() && std::equal(enclosing.begin(), enclosing.end(), names.begin());
}

void RequireTheSame(const PackageManifest& manifest, const boost::json::object& document) {
  Require(document.at("component").as_string() == to_bytes(manifest.component.GetText()));
  Require(!manifest.component.GetText().empty());
  Require(document.at("enabled").as_bool() == manifest.isEnabled);
  Require(!document.at("root").as_string().empty());

  const auto* const isRootFolderPackage = document.if_contains("rootFolderPackage");
  Require((isRootFolderPackage != nullptr && isRootFolderPackage->as_bool()) == manifest.isRootFolderPackage);
  const auto* const pathFolders = document.if_contains("pathFolders");
  Require((pathFolders == nullptr) == manifest.isRootFolderPackage);
  Require((pathFolders == nullptr ? 0 : pathFolders->as_array().size()) == manifest.pathFolders.size());

  const auto* const properties = document.if_contains("properties");
  Require((properties == nullptr ? 0 : properties->as_object().size()) == manifest.properties.size());
  for (const auto& [name, value] : manifest.properties) {
    const auto& property = properties->as_object().at(to_bytes(name));
    if (const bool* const flag = std::get_if<bool>(&value)) Require(property.as_bool() == *flag);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
  try {
    const auto manifest = PackageManifest::Parse(bytes, AbsoluteIRI(u"memory:///packages"));
    Require(manifest.componentLine >= 1 && manifest.componentLine <= lines);
    for (const auto& record : manifest.pathFolders) Require(IsBelow(record.folder, manifest.rootFolder));
    RequireTheSame(manifest, boost::json::parse({bytes.data(), bytes.size()}).as_object());
  } catch (const ManifestError& error) {
    Require(error.GetLine() >= 1 && error.GetLine() <= lines);
    Require(error.GetColumn() <= size + 1);
    Require(error.what()[0] != '\0');
  }
  return 0;
}
