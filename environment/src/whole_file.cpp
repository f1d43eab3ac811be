#include "whole_file.hpp"

#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>
#include <span>
#include <system_error>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
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

void WriteNewFile(const IStorageProvider& storage, const AbsoluteIRI& file, std::string_view bytes,
                  Durability durability) {
  const auto writer = storage.OpenForWriting(file, WriteMode::CreateNew);
  writer->Write(std::as_bytes(std::span(bytes)));
  if (durability == Durability::Flushed) writer->Flush();
  writer->Close();
}

}  // namespace

std::optional<std::string> ReadWholeFile(const IStorageProvider& storage, const AbsoluteIRI& file, std::size_t limit) {
  const auto reader = OpenIfThere(storage, file);
  if (!reader) return std::nullopt;

  std::string bytes;
  std::size_t length = 0;
  for (std::size_t count = 1; count > 0; length += count) {
    if (length > limit) throw Exception("read", file, std::make_error_code(std::errc::file_too_large));
    bytes.resize(std::max(length + 65536, length + length / 2));
    count = reader->Read(std::as_writable_bytes(std::span(bytes).subspan(length)));
  }
  bytes.resize(length);
  return bytes;
}

void ReplaceWholeFile(const IStorageProvider& storage, const AbsoluteIRI& file, const AbsoluteIRI& draft,
                      std::string_view bytes, Durability durability) {
  RemoveIfThere(storage, draft);
  WriteNewFile(storage, draft, bytes, durability);
  storage.Rename(draft, file);
}

void RemoveIfThere(const IStorageProvider& storage, const AbsoluteIRI& file) {
  try {
    storage.Remove(file);
  } catch (const Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
  }
}

}  // namespace Quorvex::PathEnvironment
