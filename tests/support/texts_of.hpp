#pragma once

// What tests compare: entries, items and texts as the short texts that people read.

#include <boost/optional/optional.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::support {

/// The path text of the entry's folder, "/a/@Cls"; "none" for no entry.
[[nodiscard]] std::string LocationOf(const std::shared_ptr<const IPathEntry>& entry);
[[nodiscard]] std::vector<std::string> LocationsOf(const std::vector<std::shared_ptr<const IPathEntry>>& entries);

/// The path text of the file, "/a/@Cls/foo.vnx"; "none" when nothing was found.
[[nodiscard]] std::string FileOf(const FoundItem& found);
[[nodiscard]] std::string FileOf(const boost::optional<FoundItem>& found);
[[nodiscard]] std::vector<std::string> FilesOf(const std::vector<FoundItem>& found);

}  // namespace Quorvex::PathManagement::support
