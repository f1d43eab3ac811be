// Names to folders. Which failures the user hears about, and which are the caller's trouble, is one table.

#include <array>
#include <iterator>
#include <search_path_utilities/path_editing.hpp>

namespace Quorvex::PathManagement {

namespace {

using current_working_folder::FailedToAbsolutizeException;
using current_working_folder::ICurrentWorkingFolder;
using foundation::core::except::Notification;
using foundation::core::except::NotificationMessage;
using foundation::storage::vfs::AbsoluteIRI;

constexpr const char* kIdentifier = "VORNIX:mpath";

// By error code. What has no key is no matter for the user: the caller gets the exception itself.
constexpr std::array<const char*, 10> kKeys = {"invalidLocation",
                                               nullptr,
                                               nullptr,
                                               "directoryPermissionDenied",
                                               "nameNonexistentOrNotADirectory",
                                               "nameNonexistentOrNotADirectory",
                                               "nameNonexistentOrNotADirectory",
                                               "nameNonexistentOrNotADirectory",
                                               nullptr,
                                               "directoryNameTooLong"};

// As an unsigned number, so that a negative code lies beyond the table.
const char* KeyOf(int code) {
  const auto place = static_cast<unsigned>(code);
  return place < kKeys.size() ? kKeys[place] : nullptr;
}

}  // namespace

boost::optional<AbsoluteIRI> ConvertUstringToAbsoluteIRI(const std::u16string& name,
                                                         const ICurrentWorkingFolder& workingFolder,
                                                         Notification& warnings) {
  try {
    return workingFolder.absolutize(name);
  } catch (const FailedToAbsolutizeException& failure) {
    const char* const key = KeyOf(failure.GetErrorCode());
    if (key == nullptr) throw;
    warnings.Add(NotificationMessage::About(name, kIdentifier, key));
    return boost::none;
  }
}

std::vector<AbsoluteIRI> ConvertUstringRangeToAbsoluteIRIs(const detail::AnyRangeAdapter<std::u16string>& names,
                                                           const ICurrentWorkingFolder& workingFolder,
                                                           Notification& warnings) {
  std::vector<AbsoluteIRI> folders;
  folders.reserve(static_cast<std::size_t>(std::distance(names.begin(), names.end())));
  for (const std::u16string& name : names) {
    if (auto folder = ConvertUstringToAbsoluteIRI(name, workingFolder, warnings)) folders.push_back(*folder);
  }
  return folders;
}

}  // namespace Quorvex::PathManagement
