#include "path_layer.hpp"

#include <algorithm>
#include <fl/filesystem/path.hpp>

namespace Quorvex::PathEnvironment {

using PathManagement::PathItem;

namespace {

// The base name under which the index holds the file called `name` followed by `extension`, which may be cut elsewhere.
std::u16string KeyFor(const std::u16string& name, const std::u16string& extension) {
  std::u16string fullName = name + extension;
  fullName.resize(fullName.size() - fl::filesystem::detail::extract_extension(fullName).size());
  return fullName;
}

}  // namespace

PathLayer::PathLayer(const std::vector<std::shared_ptr<const FolderEntry>>& mainEntries,
                     const std::vector<Position>& positions)
    : table_(mainEntries, positions),
      exactIndex_(GetSlots(), NameIndex::Keys::Exact),
      exactClasses_(GetSlots(), ClassFolderIndex::Keys::Exact),
      comparesExactlyEverywhere_(
          std::all_of(GetSlots().begin(), GetSlots().end(),
                      [](const Slot& slot) { return slot.entry->ComparesExactly(Policy::Native); })),
      hasDottedBaseNames_(std::any_of(GetSlots().begin(), GetSlots().end(),
                                      [](const Slot& slot) { return slot.names.HasDottedBaseNames(); })) {}

const NameIndex& PathLayer::FoldedIndex() const {
  return foldedIndex_.Get([this] { return NameIndex(GetSlots(), NameIndex::Keys::Folded); });
}

const ClassFolderIndex& PathLayer::FoldedClasses() const {
  return foldedClasses_.Get([this] { return ClassFolderIndex(GetSlots(), ClassFolderIndex::Keys::Folded); });
}

std::vector<std::u16string> PathLayer::KeysOf(const Target& target) {
  std::vector<std::u16string> keys;
  if (target.GetBaseName().empty()) return keys;
  for (const std::u16string& extension : target.GetExtensions()) {
    keys.push_back(KeyFor(target.GetBaseName(), extension));
  }
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

std::vector<Ordinal> PathLayer::HoldersOfAny(const std::vector<std::u16string>& keys, const NameIndex& index) {
  std::vector<Ordinal> holders;
  for (const std::u16string& key : keys) {
    const NameIndex::Posting* const first = index.FindFirst(key);
    if (first == nullptr) continue;
    holders.push_back(first->entry);
    for (const NameIndex::Posting& posting : index.OthersLike(*first)) holders.push_back(posting.entry);
  }
  std::sort(holders.begin(), holders.end());
  holders.erase(std::unique(holders.begin(), holders.end()), holders.end());
  return holders;
}

std::size_t PathLayer::CountFilesOf(const Target& target, Policy policy) const {
  const NameIndex& index = IndexFor(policy);
  std::size_t count = 0;
  for (const std::u16string& key : KeysOf(target)) {
    const NameIndex::Posting* const first = index.FindFirst(key);
    if (first != nullptr) count += 1 + index.OthersLike(*first).size();
  }
  return count;
}

std::span<const Ordinal> PathLayer::FoldersOf(const std::u16string& name) const {
  return folderNames_.Get([this] { return FolderNameIndex(GetSlots()); }).Find(name);
}

std::size_t PathLayer::RankOf(const NameIndex::Posting& posting, const std::vector<std::u16string>& extensions) const {
  const TextPiece extension = GetSlots()[posting.entry].names.Extension(posting.item);
  const auto found = std::find_if(extensions.begin(), extensions.end(),
                                  [extension](const std::u16string& wanted) { return extension == wanted; });
  return static_cast<std::size_t>(found - extensions.begin());
}

PathLayer::Hit PathLayer::HitAt(const NameIndex::Posting& posting) const {
  const Slot& slot = GetSlots()[posting.entry];
  return {&slot, std::make_shared<const PathItem>(slot.names.BaseName(posting.item).ToString(),
                                                  slot.names.Extension(posting.item).ToString(), slot.location)};
}

}  // namespace Quorvex::PathEnvironment
