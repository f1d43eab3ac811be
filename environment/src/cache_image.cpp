#include "cache_image.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <search_path_environment/toolbox_cache_error.hpp>
#include <string>

#include "cache_checksum.hpp"

namespace Quorvex::PathEnvironment {

using namespace cache;
using foundation::storage::vfs::MappedBytes;

namespace {

constexpr std::array<const char*, kSections> kNames = {"root",    "origin",  "list",     "main entries",
                                                       "entries", "links",   "problems", "texts",
                                                       "names",   "buckets", "postings", "checksums"};

// Of one row, for each section.
constexpr std::array<std::size_t, kSections> kRowSizes = {
    1, 1, sizeof(ListedRow),     sizeof(std::uint32_t), sizeof(EntryRow),     sizeof(LinkRow), sizeof(ProblemRow),
    1, 1, sizeof(std::uint32_t), sizeof(PostingRow),    sizeof(std::uint64_t)};

[[noreturn]] void Refuse(CacheRefusal refusal, const std::string& reason) { throw ToolboxCacheError(refusal, reason); }

Header HeaderOf(const MappedBytes& bytes) {
  Header header{};
  if (bytes.size() < sizeof(header.magic) || std::memcmp(bytes.data(), kMagic.data(), kMagic.size()) != 0) {
    Refuse(CacheRefusal::Foreign, bytes.size() == 0 ? "it is empty" : "it is no toolbox cache");
  }
  if (bytes.size() < kPageSize) {
    Refuse(CacheRefusal::CutShort, "it is cut short: " + std::to_string(bytes.size()) + " bytes are left");
  }
  std::memcpy(&header, bytes.data(), sizeof(header));
  return header;
}

}  // namespace

CacheImage::CacheImage(std::shared_ptr<const MappedBytes> bytes)
    : bytes_(std::move(bytes)), header_(HeaderOf(*bytes_)) {
  CheckHeader();
  CheckSections();
  const Span& sums = SpanOf(Section::Sums);
  sums_ = {reinterpret_cast<const std::uint64_t*>(bytes_->data() + sums.offset), sums.size / sizeof(std::uint64_t)};
  if (cache::ChecksumOf(std::as_bytes(sums_), header_.seed, 0) != header_.checksumOfSums) Damaged(Section::Sums);
  isSound_ = std::make_unique<std::atomic<bool>[]>(sums_.size() + 1);  // NOLINT(modernize-avoid-c-arrays)
}

void CacheImage::CheckHeader() const {
  if (header_.byteOrder != kByteOrder) {
    Refuse(CacheRefusal::OtherByteOrder, "it was written by a machine of another kind");
  }
  if (header_.version != kVersion) {
    Refuse(CacheRefusal::OtherVersion,
           "its format is version " + std::to_string(header_.version) + ", not " + std::to_string(kVersion));
  }
  const auto* const begin = reinterpret_cast<const std::byte*>(&header_);
  if (cache::ChecksumOf({begin, offsetof(Header, checksum)}, 0, 0) != header_.checksum) {
    Refuse(CacheRefusal::Damaged, "it is damaged: its header is not as it was written");
  }
  if (header_.fileSize != bytes_->size()) {
    Refuse(CacheRefusal::CutShort, "it is cut short or goes on too long: " + std::to_string(bytes_->size()) +
                                       " bytes in place of " + std::to_string(header_.fileSize));
  }
}

void CacheImage::CheckSections() const {
  std::uint64_t end = kPageSize;
  for (std::size_t i = 0; i < kSections; ++i) {
    const Span& span = header_.sections[i];
    const bool isWithin = span.offset >= end && span.offset <= header_.fileSize &&
                          span.size <= header_.fileSize - span.offset && span.offset % kAlignment == 0 &&
                          span.size % kRowSizes[i] == 0;
    if (!isWithin) Damaged(static_cast<Section>(i));
    end = span.offset + span.size;
  }
  const std::uint64_t pages = (SpanOf(Section::Sums).offset - 1) / kPageSize;  // the header's is not counted
  if (SizeOf(Section::Sums) / sizeof(std::uint64_t) != pages) Damaged(Section::Sums);
}

std::span<const std::byte> CacheImage::Bytes(Section section, std::uint64_t offset, std::uint64_t size) const {
  const Span& span = SpanOf(section);
  if (offset > span.size || size > span.size - offset) Damaged(section);
  const std::uint64_t begin = span.offset + offset;
  CheckPages(begin, begin + size);
  return {bytes_->data() + begin, static_cast<std::size_t>(size)};
}

std::string_view CacheImage::TextAt(const Text& text) const {
  const auto bytes = Bytes(Section::Texts, text.offset, text.size);
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void CacheImage::CheckAll() const { CheckPages(kPageSize, SpanOf(Section::Sums).offset); }

void CacheImage::CheckPages(std::uint64_t begin, std::uint64_t end) const {
  for (std::uint64_t page = begin / kPageSize; page * kPageSize < end; ++page) CheckPage(page);
}

void CacheImage::CheckPage(std::size_t page) const {
  std::atomic<bool>& isSound = isSound_[page];
  if (isSound.load(std::memory_order_relaxed)) return;
  const std::uint64_t begin = std::uint64_t{page} * kPageSize;
  const std::uint64_t size = std::min<std::uint64_t>(kPageSize, SpanOf(Section::Sums).offset - begin);
  const std::span<const std::byte> bytes(bytes_->data() + begin, static_cast<std::size_t>(size));
  if (cache::ChecksumOf(bytes, header_.seed, page) != sums_[page - 1]) {
    Refuse(CacheRefusal::Damaged, "it is damaged: its page " + std::to_string(page) + " is not as it was written");
  }
  isSound.store(true, std::memory_order_relaxed);
}

void CacheImage::Damaged(Section section) {
  Refuse(CacheRefusal::Damaged,
         std::string("it is damaged: its ") + kNames[static_cast<std::size_t>(section)] + " do not fit together");
}

}  // namespace Quorvex::PathEnvironment
