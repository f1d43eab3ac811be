#include <support/fake_working_folder.hpp>

namespace Quorvex::PathManagement::support {

using current_working_folder::FailedToAbsolutizeException;
using foundation::storage::vfs::AbsoluteIRI;

FakeWorkingFolder::FakeWorkingFolder(const AbsoluteIRI& folder) : folder_(folder) {}

AbsoluteIRI FakeWorkingFolder::absolutize(const std::u16string& name) const {
  names_.push_back(name);
  const auto failure = failures_.find(name);
  if (failure != failures_.end()) std::rethrow_exception(failure->second);

  const std::u16string root = folder_.getScheme() + u"://";
  return AbsoluteIRI(name.starts_with(u'/') ? root + name : folder_.toString() + u'/' + name);
}

void FakeWorkingFolder::Reject(const std::u16string& name, int code) {
  FailWith(name, std::make_exception_ptr(FailedToAbsolutizeException(code)));
}

void FakeWorkingFolder::FailWith(const std::u16string& name, const std::exception_ptr& failure) {
  failures_[name] = failure;
}

}  // namespace Quorvex::PathManagement::support
