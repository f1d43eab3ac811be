#include "name_list_provider.hpp"

#include <algorithm>
#include <foundation/storage/vfs/exception.hpp>

namespace name_list {

namespace {

using vfs::AbsoluteIRI;
using vfs::FileKind;

[[noreturn]] void Fail(const char* operation, const AbsoluteIRI& location, std::errc error) {
  throw vfs::Exception(operation, location, std::make_error_code(error));
}

// What every operation asks first of an identifier.
std::vector<std::u16string> SegmentsOf(const char* operation, const AbsoluteIRI& location) {
  std::vector<std::u16string> segments = location.getSegments();
  const auto isNoName = [](const std::u16string& name) {
    return name.find(u'/') != std::u16string::npos || name.find(u'\0') != std::u16string::npos;
  };
  const bool hasNoName = std::any_of(segments.begin(), segments.end(), isNoName);
  if (location.isRootless() || hasNoName) Fail(operation, location, std::errc::invalid_argument);
  return segments;
}

class EmptyFile final : public vfs::IReadableFile {
 public:
  std::size_t Read(std::span<std::byte> /*buffer*/) override { return 0; }
};

class NoBytes final : public vfs::MappedBytes {
 public:
  NoBytes() : MappedBytes({}) {}
};

}  // namespace

NameListProvider::NameListProvider(const std::vector<std::u16string>& files)
    : madeAt_(std::chrono::system_clock::now()) {
  nodes_.emplace(Segments(), Node{FileKind::Folder, 0});
  for (const std::u16string& file : files) {
    Segments segments = SegmentsOf("serve", AbsoluteIRI(u"list://" + file));
    nodes_.emplace(segments, Node{FileKind::File, nodes_.size()});
    for (segments.pop_back(); !segments.empty(); segments.pop_back()) {
      nodes_.emplace(segments, Node{FileKind::Folder, nodes_.size()});
    }
  }
}

const NameListProvider::Node& NameListProvider::At(const char* operation, const AbsoluteIRI& location) const {
  Segments segments = SegmentsOf(operation, location);
  if (const auto found = nodes_.find(segments); found != nodes_.end()) return found->second;

  // Below a file nothing can be; elsewhere something is missing.
  while (!nodes_.contains(segments)) segments.pop_back();
  const bool isBelowFile = nodes_.at(segments).kind == FileKind::File;
  Fail(operation, location, isBelowFile ? std::errc::not_a_directory : std::errc::no_such_file_or_directory);
}

const NameListProvider::Node& NameListProvider::At(const char* operation, const AbsoluteIRI& location,
                                                   FileKind kind) const {
  const Node& node = At(operation, location);
  if (node.kind == kind) return node;
  Fail(operation, location, kind == FileKind::Folder ? std::errc::not_a_directory : std::errc::is_a_directory);
}

// No two providers are at one address, and within one the numbers differ.
vfs::FileIdentity NameListProvider::IdentityOf(const Node& node) const {
  return {reinterpret_cast<std::uintptr_t>(this), node.number};
}

vfs::FolderListing NameListProvider::List(const AbsoluteIRI& folder) const {
  const Node& node = At("list", folder, FileKind::Folder);
  vfs::FolderListing listing;
  listing.identity = IdentityOf(node);
  listing.modificationTime = madeAt_;
  listing.changeTime = madeAt_;
  listing.readAt = std::chrono::system_clock::now();

  const Segments above = folder.getSegments();
  const auto isBelow = [&above](const Segments& segments) {
    return segments.size() > above.size() && std::equal(above.begin(), above.end(), segments.begin());
  };
  for (auto below = nodes_.upper_bound(above); below != nodes_.end() && isBelow(below->first); ++below) {
    if (below->first.size() == above.size() + 1) listing.entries.push_back({below->first.back(), below->second.kind});
  }
  return listing;
}

vfs::FileIdentity NameListProvider::CheckFolder(const AbsoluteIRI& folder) const {
  return IdentityOf(At("check", folder, FileKind::Folder));
}

vfs::FileStatus NameListProvider::Stat(const AbsoluteIRI& location) const {
  const Node& node = At("examine", location);
  return {node.kind, 0, madeAt_, madeAt_, IdentityOf(node)};
}

// There are no links. What is missing is where it would be.
AbsoluteIRI NameListProvider::CanonicalLocation(const AbsoluteIRI& location) const {
  try {
    At("resolve", location);
  } catch (const vfs::Exception& failure) {
    if (failure.GetError() != std::errc::no_such_file_or_directory) throw;
  }
  return location;
}

bool NameListProvider::ComparesNamesExactly(const AbsoluteIRI& folder) const {
  SegmentsOf("examine", folder);
  return true;
}

std::unique_ptr<vfs::IReadableFile> NameListProvider::OpenForReading(const AbsoluteIRI& file) const {
  At("open", file, FileKind::File);
  return std::make_unique<EmptyFile>();
}

std::shared_ptr<const vfs::MappedBytes> NameListProvider::Map(const AbsoluteIRI& file) const {
  At("map", file, FileKind::File);
  return std::make_shared<const NoBytes>();
}

std::unique_ptr<vfs::IWritableFile> NameListProvider::OpenForWriting(const AbsoluteIRI& file,
                                                                     vfs::WriteMode /*mode*/) const {
  SegmentsOf("open", file);
  Fail("open", file, std::errc::read_only_file_system);
}

void NameListProvider::FlushFolder(const AbsoluteIRI& folder) const { At("flush", folder, FileKind::Folder); }

void NameListProvider::Rename(const AbsoluteIRI& from, const AbsoluteIRI& to) const {
  SegmentsOf("rename", to);
  At("rename", from);
  Fail("rename", from, std::errc::read_only_file_system);
}

void NameListProvider::Remove(const AbsoluteIRI& location) const {
  At("remove", location);
  Fail("remove", location, std::errc::read_only_file_system);
}

void NameListProvider::CreateFolder(const AbsoluteIRI& folder) const {
  SegmentsOf("create", folder);
  Fail("create", folder, std::errc::read_only_file_system);
}

std::unique_ptr<vfs::IFileLock> NameListProvider::Lock(const AbsoluteIRI& file,
                                                       std::chrono::milliseconds /*timeout*/) const {
  SegmentsOf("lock", file);
  Fail("lock", file, std::errc::read_only_file_system);
}

}  // namespace name_list
