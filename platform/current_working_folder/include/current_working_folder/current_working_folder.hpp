// The folder that relative names are taken against, as the environment knows it: not the process's own.
#pragma once

#include <current_working_folder/export.hpp>
#include <exception>
#include <foundation/core/except/exception.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <string>

namespace Quorvex::current_working_folder {

/// A name could not be made absolute. What a code means is up to the working folder that throws it.
class CURRENT_WORKING_FOLDER_EXPORT FailedToAbsolutizeException
    : public foundation::core::except::Exception<foundation::core::except::IInternalException> {
 public:
  /// `code` is the working folder's own.
  explicit FailedToAbsolutizeException(int code);
  FailedToAbsolutizeException(const FailedToAbsolutizeException&) noexcept;
  FailedToAbsolutizeException& operator=(const FailedToAbsolutizeException&) noexcept;
  ~FailedToAbsolutizeException() override;

  /// As it was given; the editing functions know what some mean.
  [[nodiscard]] int GetErrorCode() const noexcept { return code_; }
  /// "a folder name cannot be made absolute (code 4)"
  [[nodiscard]] const char* what() const noexcept override;

 private:
  int code_;
  std::shared_ptr<const std::string> text_;
};

/// Knows the current working folder. Threads: as the implementation says.
class CURRENT_WORKING_FOLDER_EXPORT ICurrentWorkingFolder {
 public:
  virtual ~ICurrentWorkingFolder();

  /// The identifier of the folder that `name` means, which must exist as far as the implementation requires it. Throws
  /// FailedToAbsolutizeException.
  [[nodiscard]] virtual foundation::storage::vfs::AbsoluteIRI absolutize(const std::u16string& name) const = 0;

 protected:
  ICurrentWorkingFolder() = default;
  ICurrentWorkingFolder(const ICurrentWorkingFolder&) = default;
  ICurrentWorkingFolder& operator=(const ICurrentWorkingFolder&) = default;
};

}  // namespace Quorvex::current_working_folder
