#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/toolbox_cache.hpp>
#include <utility>

#include "cache_index.hpp"
#include "cache_records.hpp"
#include "parallel.hpp"
#include "process_rights.hpp"

namespace Quorvex::PathEnvironment {

using namespace cache;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileTime;
using foundation::storage::vfs::MappedBytes;
using foundation::storage::vfs::StorageSystemReference;

namespace {

std::shared_ptr<const MappedBytes> MappedOf(const StorageSystemReference& storage, const AbsoluteIRI& file) {
  try {
    return storage.ProviderFor(file)->Map(file);
  } catch (const foundation::storage::vfs::Exception& failure) {
    if (failure.GetError() == std::errc::no_such_file_or_directory) {
      throw ToolboxCacheError(CacheRefusal::Missing, "it is not there");
    }
    throw ToolboxCacheError(CacheRefusal::Unreadable, "it cannot be read: " + failure.GetError().message());
  }
}

void RequireOwnRights(const Header& header) {
  if (header.writer != ::geteuid()) {
    throw ToolboxCacheError(CacheRefusal::OtherUser, "its folders were read with the rights of another user, number " +
                                                         std::to_string(header.writer));
  }
  if (header.rights != RightsOfThisProcess()) {
    throw ToolboxCacheError(CacheRefusal::OtherUser, "its folders were read with other groups or capabilities");
  }
}

std::size_t CountListed(const CacheImage& image) { return image.CountOf<ListedRow>(Section::List); }

// What was listed, as the row and the record of the folder that stays tell it.
std::u16string TextListed(const CacheRecords& records, const ListedRow& row) {
  if (row.dropped == 0) return records.LocationOfMain(row.main).toString();
  return fl::filesystem::from_bytes(records.GetImage().TextAt(row.location));
}

}  // namespace

ToolboxCache::ToolboxCache(std::shared_ptr<const CacheRecords> records) noexcept : records_(std::move(records)) {}
ToolboxCache::ToolboxCache(const ToolboxCache&) noexcept = default;
ToolboxCache& ToolboxCache::operator=(const ToolboxCache&) noexcept = default;
ToolboxCache::~ToolboxCache() = default;

ToolboxCache ToolboxCache::Open(const StorageSystemReference& storage, const AbsoluteIRI& file, CacheTrust trust) {
  CacheImage image(MappedOf(storage, file));
  if (trust == CacheTrust::Proven) RequireOwnRights(image.GetHeader());
  return ToolboxCache(std::make_shared<const CacheRecords>(std::move(image), storage, trust));
}

FileTime ToolboxCache::GetTimeOfWriting() const noexcept {
  return FileTime(std::chrono::nanoseconds(records_->GetImage().GetHeader().writtenAt));
}
const AbsoluteIRI& ToolboxCache::GetRoot() const noexcept { return records_->GetRoot(); }
CacheTrust ToolboxCache::GetTrust() const noexcept { return records_->GetTrust(); }
std::size_t ToolboxCache::GetSize() const noexcept { return records_->GetImage().GetHeader().fileSize; }
std::size_t ToolboxCache::CountFolders() const noexcept { return records_->CountOfMains(); }
std::size_t ToolboxCache::CountEntries() const noexcept { return records_->CountOfEntries(); }
std::size_t ToolboxCache::CountNames() const noexcept {
  return records_->GetImage().CountOf<PostingRow>(Section::Postings);
}

bool ToolboxCache::HoldsListFrom(std::string_view origin) const {
  const CacheImage& image = records_->GetImage();
  if (image.GetHeader().hasList == 0 || image.SizeOf(Section::Origin) != origin.size() || origin.empty()) return false;
  return std::memcmp(image.Bytes(Section::Origin, 0, origin.size()).data(), origin.data(), origin.size()) == 0;
}

bool ToolboxCache::HoldsList(const std::vector<AbsoluteIRI>& folders) const {
  const CacheImage& image = records_->GetImage();
  if (image.GetHeader().hasList == 0 || CountListed(image) != folders.size()) return false;
  const auto rows = image.Rows<ListedRow>(Section::List, 0, folders.size());
  return std::equal(rows.begin(), rows.end(), folders.begin(), [this](const ListedRow& row, const AbsoluteIRI& folder) {
    return TextListed(*records_, row) == folder.toString();
  });
}

bool ToolboxCache::HoldsAll(const std::vector<AbsoluteIRI>& folders) const {
  return std::all_of(folders.begin(), folders.end(),
                     [this](const AbsoluteIRI& folder) { return records_->FindMain(folder).has_value(); });
}

std::vector<RecordedFolder> ToolboxCache::ExamineFolders() const {
  std::vector<RecordedFolder> folders;
  folders.reserve(records_->CountOfMains());
  for (std::size_t main = 0; main < records_->CountOfMains(); ++main) {
    folders.push_back({records_->LocationOfMain(main), Standing::Changed, records_->CanBeProven(main)});
  }
  InParallel(folders.size(), [&](std::size_t main) { folders[main].standing = records_->StandingOfMain(main); });
  return folders;
}

std::vector<std::shared_ptr<const FolderEntry>> ToolboxCache::GetMainEntries() const {
  std::vector<std::shared_ptr<const FolderEntry>> entries(records_->CountOfMains());
  InParallel(entries.size(), [&](std::size_t main) { entries[main] = records_->MainEntry(main); });
  return entries;
}

void ToolboxCache::Check() const {
  const CacheImage& image = records_->GetImage();
  image.CheckAll();
  for (std::size_t main = 0; main < records_->CountOfMains(); ++main) {
    static_cast<void>(records_->MainEntry(main));
  }
  static_cast<void>(CacheIndex(image).ClassFoldersOf(u""));
  for (const PostingRow& posting :
       image.Rows<PostingRow>(Section::Postings, 0, image.CountOf<PostingRow>(Section::Postings))) {
    if (posting.entry >= records_->CountOfEntries()) CacheImage::Damaged(Section::Postings);
  }
  for (const ListedRow& row : image.Rows<ListedRow>(Section::List, 0, CountListed(image))) {
    static_cast<void>(TextListed(*records_, row));
  }
}

}  // namespace Quorvex::PathEnvironment
