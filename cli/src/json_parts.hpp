// What the JSON documents of several commands are made of. Texts in them are safe for a terminal.
#pragma once

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <search_path_environment/path_problem.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <vector>

namespace vornixpath {

/// "main", "package", "class", "private", "auxiliary" or "resources".
[[nodiscard]] const char* NameOf(Quorvex::PathManagement::PathEntryType kind);

/// `path`, as shown, and `iri`, exact.
[[nodiscard]] boost::json::object ToJson(const foundation::storage::vfs::AbsoluteIRI& location);

/// A file's location, and in `folder` the kind of its folder.
[[nodiscard]] boost::json::object ToJson(const Quorvex::PathManagement::FoundItem& found);

/// A folder's location, and in `folder` its kind.
[[nodiscard]] boost::json::object ToJson(const Quorvex::PathManagement::IPathEntry& entry);

[[nodiscard]] boost::json::array ToJson(const std::vector<Quorvex::PathEnvironment::PathProblem>& problems);

}  // namespace vornixpath
