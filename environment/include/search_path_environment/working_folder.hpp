// Folder names as people type them, made absolute against a working folder that was told once: not the process's own,
// which may change.
//
// A name that is an identifier is taken as one; any other is a path, and a relative one lies below the working folder.
// A name keeps its spelling: links are not resolved, and nothing is changed but what an identifier's normal form wants.
#pragma once

#include <current_working_folder/current_working_folder.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <optional>
#include <search_path_environment/export.hpp>
#include <string>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// The code of a FailedToAbsolutizeException.
enum class AbsolutizeError : int {
  Malformed = 0,         ///< the name is empty, holds a NUL, or is no path and no well-formed identifier
  StorageFailure = 1,    ///< storage failed for another reason than those below, or none serves the scheme
  NoWorkingFolder = 2,   ///< the name is relative, and there is nothing to take it from
  PermissionDenied = 3,  ///< the folder may not be listed
  Missing = 4,           ///< there is no such folder
  NotAFolder = 5,        ///< something else stands there, or in the middle of the way there
  DanglingLink = 6,      ///< a link stands there, and leads nowhere
  LinkLoop = 7,          ///< links lead in a circle
  Reserved = 8,          ///< never thrown
  NameTooLong = 9,       ///< longer than the storage takes
};

/// The failure, with a text for people. A value, copied without throwing.
class SEARCH_PATH_ENVIRONMENT_EXPORT WorkingFolderException final
    : public current_working_folder::FailedToAbsolutizeException {
 public:
  /// `reason` must be safe for a terminal already.
  WorkingFolderException(AbsolutizeError error, std::u16string_view name, std::string_view reason);
  WorkingFolderException(const WorkingFolderException&) noexcept;
  WorkingFolderException& operator=(const WorkingFolderException&) noexcept;
  ~WorkingFolderException() override;

  /// `cannot use the folder "b": cannot check "file:///a/b": Permission denied`: UTF-8 in which nothing is dangerous to
  /// a terminal.
  [[nodiscard]] const char* what() const noexcept override;

 private:
  std::shared_ptr<const std::string> text_;
};

/// Makes names absolute by text alone, so that a folder that has vanished can still be named. A value, never changed
/// but by assignment, safe to read from many threads.
class SEARCH_PATH_ENVIRONMENT_EXPORT TextualWorkingFolder final : public current_working_folder::ICurrentWorkingFolder {
 public:
  /// `folder` is an absolute path or an identifier; anything else is none.
  explicit TextualWorkingFolder(std::optional<std::u16string> folder);
  TextualWorkingFolder(const TextualWorkingFolder&);
  TextualWorkingFolder& operator=(const TextualWorkingFolder&);
  ~TextualWorkingFolder() override;

  /// Touches no storage, and does not care whether the folder exists. Throws WorkingFolderException: Malformed or
  /// NoWorkingFolder. O(n).
  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI absolutize(const std::u16string& name) const override;

 private:
  std::optional<std::u16string> folder_;
};

/// Makes absolute the names of folders that exist and can be listed. A value, never changed but by assignment, safe to
/// use from many threads.
class SEARCH_PATH_ENVIRONMENT_EXPORT WorkingFolder final : public current_working_folder::ICurrentWorkingFolder {
 public:
  /// `folder` is an absolute path or an identifier; anything else is none.
  WorkingFolder(std::optional<std::u16string> folder, foundation::storage::vfs::StorageSystemReference storage);
  WorkingFolder(const WorkingFolder&);
  WorkingFolder& operator=(const WorkingFolder&);
  ~WorkingFolder() override;

  /// Throws WorkingFolderException, with any error but Reserved. Asks storage once and lists nothing, but that it lists
  /// the folder around a missing one to tell whether a link stands there.
  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI absolutize(const std::u16string& name) const override;

 private:
  TextualWorkingFolder names_;
  foundation::storage::vfs::StorageSystemReference storage_;
};

}  // namespace Quorvex::PathEnvironment
