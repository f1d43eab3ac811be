#include "cache_index.hpp"

#include <bit>

#include "cache_checksum.hpp"

namespace Quorvex::PathEnvironment {

using namespace cache;

CacheIndex::CacheIndex(const CacheImage& image)
    : image_(image), buckets_(image.CountOf<std::uint32_t>(Section::Buckets)) {
  if (buckets_ < 2 || !std::has_single_bit(buckets_ - 1)) CacheImage::Damaged(Section::Buckets);
  --buckets_;  // the last number is the count of all postings
}

std::vector<std::uint32_t> CacheIndex::HoldersOf(std::u16string_view baseName, std::u16string_view extension) const {
  const std::uint32_t extensionHash = KeptOf(HashOfName(extension));
  return Find(baseName, [extensionHash](const PostingRow& posting) {
    return posting.item != kNone && posting.extensionHash == extensionHash;
  });
}

std::vector<std::uint32_t> CacheIndex::ClassFoldersOf(std::u16string_view name) const {
  return Find(name, [](const PostingRow& posting) { return posting.item == kNone; });
}

template <class IsMeant>
std::vector<std::uint32_t> CacheIndex::Find(std::u16string_view name, const IsMeant& isMeant) const {
  const std::uint64_t hash = HashOfName(name);
  const auto bounds = image_.Rows<std::uint32_t>(Section::Buckets, BucketOf(hash, buckets_), 2);
  if (bounds[0] > bounds[1]) CacheImage::Damaged(Section::Buckets);

  std::vector<std::uint32_t> ordinals;
  for (const PostingRow& posting : image_.Rows<PostingRow>(Section::Postings, bounds[0], bounds[1] - bounds[0])) {
    const bool isMentioned = !ordinals.empty() && ordinals.back() == posting.entry;
    if (posting.nameHash == KeptOf(hash) && isMeant(posting) && !isMentioned) ordinals.push_back(posting.entry);
  }
  return ordinals;
}

}  // namespace Quorvex::PathEnvironment
