#pragma once

// A working folder that makes names absolute by text alone, and rejects those that a test wants rejected.

#include <current_working_folder/current_working_folder.hpp>
#include <exception>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <map>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::support {

/// Not safe from several threads.
class FakeWorkingFolder final : public current_working_folder::ICurrentWorkingFolder {
 public:
  explicit FakeWorkingFolder(const foundation::storage::vfs::AbsoluteIRI& folder);

  /// The folder `name` below this one or, for a name with a leading '/', below the root of this one's storage.
  [[nodiscard]] foundation::storage::vfs::AbsoluteIRI absolutize(const std::u16string& name) const override;

  /// From now on `name` fails with FailedToAbsolutizeException and `code`.
  void Reject(const std::u16string& name, int code);
  /// From now on `name` fails with the very object that `failure` holds.
  void FailWith(const std::u16string& name, const std::exception_ptr& failure);

  /// The names asked for, in order and as they were given.
  [[nodiscard]] const std::vector<std::u16string>& GetNames() const noexcept { return names_; }

 private:
  foundation::storage::vfs::AbsoluteIRI folder_;
  std::map<std::u16string, std::exception_ptr> failures_;
  mutable std::vector<std::u16string> names_;
};

}  // namespace Quorvex::PathManagement::support
