#include "name_index.hpp"

#include <fl/filesystem/case_folding.hpp>
#include <stdexcept>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "folder_names.hpp"

namespace Quorvex::PathEnvironment {

namespace {

std::size_t HashOf(std::u16string_view text) {
  return static_cast<std::size_t>(XXH3_64bits(text.data(), text.size() * sizeof(char16_t)));
}

}  // namespace

NameIndex::NameIndex(const std::vector<LocationTable::Slot>& slots, Keys keys)
    : entries_(slots), keys_(keys), classNames_(slots.size()), slots_(0, HashSlot{this}, EqualSlots{this}) {
  const std::size_t names = CountNames();
  if (names >= kNoPosting) throw std::length_error("the path holds more than four billion files");

  postings_.reserve(names);
  slots_.reserve(names);
  // From the back, so that each posting goes before those already there.
  for (std::size_t ordinal = entries_.size(); ordinal-- > 0;) AddEntry(static_cast<Ordinal>(ordinal));
}

void NameIndex::AddEntry(Ordinal ordinal) {
  const FolderEntry& entry = *entries_[ordinal].entry;
  const FolderNames& names = entry.GetNames();
  for (std::size_t item = names.size(); item-- > 0;) {
    AddPosting(ordinal, static_cast<std::uint32_t>(item), names.BaseName(item));
  }

  if (entry.GetEntryType() == PathManagement::PathEntryType::Class) {
    classNames_[ordinal] = entry.GetAbsoluteIRI().getName().substr(1);
    AddPosting(ordinal, kClassFolder, classNames_[ordinal]);
  }
}

void NameIndex::AddPosting(Ordinal ordinal, std::uint32_t item, std::u16string_view name) {
  const auto number = static_cast<PostingNumber>(postings_.size());
  const auto known = FindSlot(name);
  postings_.push_back({ordinal, item, known == slots_.end() ? kNoPosting : known->first});
  if (known == slots_.end()) {
    slots_.insert(Slot{number});
  } else {
    known->first = number;  // the same name as before, so the slot stays where its hash put it
  }
}

NameIndex::Slots::const_iterator NameIndex::FindSlot(std::u16string_view name) const {
  return keys_ == Keys::Exact ? slots_.find(name) : slots_.find(std::u16string_view(fl::filesystem::fold_case(name)));
}

NameIndex::PostingNumber NameIndex::FirstPosting(std::u16string_view name) const {
  const auto found = FindSlot(name);
  return found == slots_.end() ? kNoPosting : found->first;
}

std::u16string_view NameIndex::NameOf(const Posting& posting) const {
  if (posting.item == kClassFolder) return classNames_[posting.entry];
  return entries_[posting.entry].entry->GetNames().BaseName(posting.item);
}

std::size_t NameIndex::CountNames() const {
  std::size_t count = 0;
  for (const auto& slot : entries_) {
    count += slot.entry->GetNames().size();
    if (slot.entry->GetEntryType() == PathManagement::PathEntryType::Class) ++count;
  }
  return count;
}

std::size_t NameIndex::HashSlot::operator()(const Slot& slot) const {
  const std::u16string_view name = index->NameOf(index->postings_[slot.first]);
  return index->keys_ == Keys::Exact ? HashOf(name) : HashOf(fl::filesystem::fold_case(name));
}

std::size_t NameIndex::HashSlot::operator()(std::u16string_view key) const { return HashOf(key); }

bool NameIndex::EqualSlots::operator()(const Slot& left, const Slot& right) const { return left.first == right.first; }

bool NameIndex::EqualSlots::operator()(const Slot& slot, std::u16string_view key) const {
  const std::u16string_view name = index->NameOf(index->postings_[slot.first]);
  return index->keys_ == Keys::Exact ? name == key : fl::filesystem::fold_case(name) == key;
}

bool NameIndex::EqualSlots::operator()(std::u16string_view key, const Slot& slot) const { return (*this)(slot, key); }

}  // namespace Quorvex::PathEnvironment
