// A search path as the text in which it is kept, for people to read, to edit and to put under version control:
//
//     # search path, version 1
//     # One folder a line, the first one before the others. Lines that begin with '#' are comments.
//
//     # what every project needs
//     /opt/toolbox/base
//     memory://tree/extras
//
// The first line is as it stands here. A folder is an absolute path, or an identifier where a path would not do. A line
// ends with a newline, the last one, too, so that a text which was cut off within a line is noticed.
#pragma once

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <map>
#include <search_path_environment/export.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Quorvex::PathEnvironment {

/// A value. The comments and blank lines before a folder are that folder's, and go where it goes; what stands above the
/// first folder, as far as a blank line, and what stands below the last one, stay where they are.
class SEARCH_PATH_ENVIRONMENT_EXPORT SavedPathText {
 public:
  /// In path order.
  using Folders = std::vector<foundation::storage::vfs::AbsoluteIRI>;

  /// No folder.
  SavedPathText();

  /// Throws SavedPathError with the first line that does not belong in such a text, and why. O(n).
  [[nodiscard]] static SavedPathText Parse(std::string_view bytes);

  /// In path order; a folder may stand there more than once.
  [[nodiscard]] const Folders& GetFolders() const& noexcept { return folders_; }
  /// The same, taken out of a text that is about to go.
  [[nodiscard]] Folders GetFolders() && noexcept { return std::move(folders_); }

  /// The same text for other folders. The comments of a folder that is no longer there are left out.
  [[nodiscard]] SavedPathText WithFolders(Folders folders) const;

  /// Parse gives it back, equal folder by folder. UTF-8, without control characters. Throws the storage layer's
  /// Exception for a folder whose identifier is relative.
  [[nodiscard]] std::string ToBytes() const;

 private:
  std::string beginning_;
  Folders folders_;
  std::map<std::size_t, std::string> comments_;  // by the place of the folder that they precede
  std::string end_;
};

}  // namespace Quorvex::PathEnvironment
