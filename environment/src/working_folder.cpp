#include <algorithm>
#include <array>
#include <fl/filesystem/case_folding.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <search_path_environment/location_from_text.hpp>
#include <search_path_environment/working_folder.hpp>
#include <system_error>
#include <utility>

#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FolderListing;
using foundation::storage::vfs::ListedEntry;
using foundation::storage::vfs::StorageSystemReference;
using StorageException = foundation::storage::vfs::Exception;

struct Translation {
  std::errc error;
  AbsolutizeError meaning;
};

// Whatever is not here is a failure of storage.
constexpr std::array<Translation, 6> kTranslations = {{
    {std::errc::permission_denied, AbsolutizeError::PermissionDenied},
    {std::errc::operation_not_permitted, AbsolutizeError::PermissionDenied},
    {std::errc::no_such_file_or_directory, AbsolutizeError::Missing},
    {std::errc::not_a_directory, AbsolutizeError::NotAFolder},
    {std::errc::too_many_symbolic_link_levels, AbsolutizeError::LinkLoop},
    {std::errc::filename_too_long, AbsolutizeError::NameTooLong},
}};

AbsolutizeError MeaningOf(std::error_code error) {
  const auto* const found =
      std::find_if(kTranslations.begin(), kTranslations.end(),
                   [error](const Translation& translation) { return error == translation.error; });
  return found == kTranslations.end() ? AbsolutizeError::StorageFailure : found->meaning;
}

// A link that leads nowhere is missing to whoever follows it, yet the folder around it lists its name.
bool IsListed(const StorageSystemReference& storage, const AbsoluteIRI& location) {
  try {
    const AbsoluteIRI folder = location.getParent();
    const auto provider = storage.ProviderFor(folder);
    const bool isExact = provider->ComparesNamesExactly(folder);
    const auto keyOf = [isExact](const std::u16string& name) {
      return isExact ? name : fl::filesystem::fold_case(name);
    };
    const FolderListing listing = provider->List(folder);
    return std::any_of(
        listing.entries.begin(), listing.entries.end(),
        [&, key = keyOf(location.getName())](const ListedEntry& entry) { return keyOf(entry.name) == key; });
  } catch (const StorageException&) {
    return false;  // nobody can see what stands there
  }
}

}  // namespace

WorkingFolderException::WorkingFolderException(AbsolutizeError error, std::u16string_view name, std::string_view reason)
    : FailedToAbsolutizeException(static_cast<int>(error)),
      text_(std::make_shared<const std::string>("cannot use the folder " + QuotedName(name) + ": " +
                                                std::string(reason))) {}

WorkingFolderException::WorkingFolderException(const WorkingFolderException&) noexcept = default;
WorkingFolderException& WorkingFolderException::operator=(const WorkingFolderException&) noexcept = default;
WorkingFolderException::~WorkingFolderException() = default;

const char* WorkingFolderException::what() const noexcept { return text_->c_str(); }

TextualWorkingFolder::TextualWorkingFolder(std::optional<std::u16string> folder) : folder_(std::move(folder)) {}
TextualWorkingFolder::TextualWorkingFolder(const TextualWorkingFolder&) = default;
TextualWorkingFolder& TextualWorkingFolder::operator=(const TextualWorkingFolder&) = default;
TextualWorkingFolder::~TextualWorkingFolder() = default;

AbsoluteIRI TextualWorkingFolder::absolutize(const std::u16string& name) const {
  if (name.empty()) throw WorkingFolderException(AbsolutizeError::Malformed, name, "the name is empty");
  try {
    AbsoluteIRI location = LocationFromText(name, folder_.value_or(u""));
    if (!location.isRootless()) return location;
  } catch (const StorageException& failure) {
    throw WorkingFolderException(AbsolutizeError::Malformed, name, failure.what());
  }
  throw WorkingFolderException(AbsolutizeError::NoWorkingFolder, name,
                               "the name is relative, and there is no working folder");
}

WorkingFolder::WorkingFolder(std::optional<std::u16string> folder, StorageSystemReference storage)
    : names_(std::move(folder)), storage_(std::move(storage)) {}
WorkingFolder::WorkingFolder(const WorkingFolder&) = default;
WorkingFolder& WorkingFolder::operator=(const WorkingFolder&) = default;
WorkingFolder::~WorkingFolder() = default;

AbsoluteIRI WorkingFolder::absolutize(const std::u16string& name) const {
  AbsoluteIRI location = names_.absolutize(name);
  try {
    storage_.ProviderFor(location)->CheckFolder(location);
    return location;
  } catch (const StorageException& failure) {
    const AbsolutizeError meaning = MeaningOf(failure.GetError());
    if (meaning == AbsolutizeError::Missing && IsListed(storage_, location)) {
      throw WorkingFolderException(AbsolutizeError::DanglingLink, name, "it is a link that leads nowhere");
    }
    throw WorkingFolderException(meaning, name, failure.what());
  }
}

}  // namespace Quorvex::PathEnvironment
