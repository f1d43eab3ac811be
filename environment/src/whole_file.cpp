#include <unistd.h>

#include <algorithm>
#include <array>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <search_path_environment/whole_file.hpp>
#include <span>
#include <system_error>

#include "replaceable_file.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::IReadableFile;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::WriteMode;

namespace {

std::unique_ptr<IReadableFile> OpenIfThere(const IStorageProvider& storage, const AbsoluteIRI& file) {
  try {
    return storage.OpenForReading(file);
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
    return nullptr;
  }
}

void WriteNewFile(const IStorageProvider& storage, const AbsoluteIRI& file, const Pieces& pieces,
                  Durability durability) {
  const auto writer = storage.OpenForWriting(file, WriteMode::CreateNew);
  for (const std::string_view piece : pieces) writer->Write(std::as_bytes(std::span(piece)));
  if (durability == Durability::Flushed) writer->Flush();
  writer->Close();
}

// Beside the file, and nobody else's.
AbsoluteIRI DraftOf(const AbsoluteIRI& file) {
  const std::string ending = '.' + std::to_string(::getpid()) + ".draft";
  return file.getParent().getChild(file.getName() + fl::filesystem::from_bytes(ending));
}

}  // namespace

std::optional<std::string> ReadWholeFile(const IStorageProvider& storage, const AbsoluteIRI& file,
                                         std::size_t largest) {
  const auto reader = OpenIfThere(storage, file);
  if (!reader) return std::nullopt;

  const auto requireSize = [&](std::uint64_t size) {
    if (size > largest) throw Exception("read", file, std::make_error_code(std::errc::file_too_large));
  };
  const std::uint64_t size = storage.Stat(file).size;
  requireSize(size);                  // before as much memory is asked for
  std::string bytes(size + 1, '\0');  // one byte more, so that the end is found without growing
  std::size_t length = 0;
  for (std::size_t count = 1; count > 0; length += count) {
    requireSize(length);
    if (length == bytes.size()) bytes.resize(length * 2);
    count = reader->Read(std::as_writable_bytes(std::span(bytes).subspan(length)));
  }
  bytes.resize(length);
  return bytes;
}

bool Holds(const IStorageProvider& storage, const AbsoluteIRI& file, const std::optional<std::string>& bytes) {
  const auto reader = OpenIfThere(storage, file);
  if (!reader || !bytes) return !reader && !bytes;

  std::string_view rest = *bytes;
  std::array<char, 65536> buffer;
  while (const std::size_t count = reader->Read(std::as_writable_bytes(std::span(buffer)))) {
    if (!rest.starts_with(std::string_view(buffer.data(), count))) return false;
    rest.remove_prefix(count);
  }
  return rest.empty();
}

void ReplaceWholeFile(const IStorageProvider& storage, const AbsoluteIRI& file, const AbsoluteIRI& draft,
                      const Pieces& pieces, Durability durability) {
  RemoveIfThere(storage, draft);
  WriteNewFile(storage, draft, pieces, durability);
  storage.Rename(draft, file);
}

void ReplaceWholeFile(const IStorageProvider& storage, const AbsoluteIRI& file, const Pieces& pieces,
                      Durability durability) {
  RequireReplaceable(storage, file);
  const AbsoluteIRI place = storage.CanonicalLocation(file);
  try {
    ReplaceWholeFile(storage, place, DraftOf(place), pieces, durability);
  } catch (const Exception&) {
    Sweep(storage, DraftOf(place));
    throw;
  }
}

bool IsThere(const IStorageProvider& storage, const AbsoluteIRI& location) {
  try {
    static_cast<void>(storage.Stat(location));
    return true;
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
    return false;
  }
}

// A device or a FIFO would be gone for good.
void RequireReplaceable(const IStorageProvider& storage, const AbsoluteIRI& file) {
  const auto refuse = [&file](std::string_view reason) {
    throw Exception("replace", file, std::make_error_code(std::errc::operation_not_supported), reason);
  };
  if (IsLinkToNowhere(storage, file)) refuse("it is a link that leads nowhere");
  if (IsThere(storage, file) && storage.Stat(file).kind != FileKind::File) refuse("it is no regular file");
}

bool IsLinkToNowhere(const IStorageProvider& storage, const AbsoluteIRI& file) {
  if (IsThere(storage, file) || !IsThere(storage, file.getParent())) return false;
  const auto listing = storage.List(file.getParent());
  return std::any_of(listing.entries.begin(), listing.entries.end(),
                     [&](const auto& entry) { return entry.name == file.getName(); });
}

void RemoveIfThere(const IStorageProvider& storage, const AbsoluteIRI& file) {
  try {
    storage.Remove(file);
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
  }
}

bool Sweep(const IStorageProvider& storage, const AbsoluteIRI& file) noexcept {
  try {
    RemoveIfThere(storage, file);
    return true;
  } catch (const Exception&) {
    return false;
  }
}

}  // namespace Quorvex::PathEnvironment
