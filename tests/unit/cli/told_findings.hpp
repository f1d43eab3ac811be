#pragma once

// What `doctor` finds on a path, as texts.

#include <fl/filesystem/displayed_text.hpp>
#include <memory>
#include <search_path_environment/folder_path.hpp>
#include <string>
#include <vector>

#include "finding.hpp"

namespace vornixpath {

/// A path that is looked at, with all that is needed for it.
class Examination {
 public:
  explicit Examination(std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> path,
                       std::vector<std::u16string> extensions = {u".vnx"})
      : path_(std::move(path)), numbers_(*path_), examined_{*path_, numbers_, std::move(extensions)} {}
  Examination(const Examination&) = delete;
  Examination& operator=(const Examination&) = delete;

  [[nodiscard]] const ExaminedPath& Get() const { return examined_; }
  [[nodiscard]] const Quorvex::PathEnvironment::FolderPath& GetPath() const { return *path_; }

 private:
  std::shared_ptr<const Quorvex::PathEnvironment::FolderPath> path_;
  FolderNumbers numbers_;
  ExaminedPath examined_;
};

/// "warning letter-case-twins: /a/f.vnx (1), /b/F.vnx (2)".
inline std::string InWords(const Finding& finding) {
  std::string text = std::string(NameOf(finding.severity)) + ' ' + std::string(NameOf(finding.kind));
  for (const FindingPlace& place : finding.places) {
    text += &place == &finding.places.front() ? ": " : ", ";
    text += fl::filesystem::to_displayed_text(place.location.getPath()) + " (" + std::to_string(place.number) + ')';
  }
  return text;
}

inline std::vector<std::string> InWords(const std::vector<Finding>& findings) {
  std::vector<std::string> texts;
  for (const Finding& finding : findings) texts.push_back(InWords(finding));
  return texts;
}

}  // namespace vornixpath
