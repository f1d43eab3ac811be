#include "name_index.hpp"

#include <algorithm>
#include <array>
#include <fl/filesystem/case_folding.hpp>
#include <stdexcept>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Quorvex::PathEnvironment {

namespace {

using PathManagement::PathEntryType;

std::size_t HashOf(std::u16string_view text) {
  return static_cast<std::size_t>(XXH3_64bits(text.data(), text.size() * sizeof(char16_t)));
}

// A packed name is hashed as the callers' names are: in UTF-16.
std::size_t HashOf(TextPiece piece) {
  std::array<char16_t, 256> buffer;
  if (piece.size() > buffer.size()) return HashOf(std::u16string_view(piece.ToString()));
  piece.CopyTo(buffer.data());
  return HashOf(std::u16string_view(buffer.data(), piece.size()));
}

std::u16string TextOf(TextPiece piece) { return piece.ToString(); }
std::u16string TextOf(const std::u16string& text) { return text; }

std::uint64_t NumberOf(const NameIndex::Posting& posting) {
  return (std::uint64_t{posting.entry} << 32U) | std::uint64_t{posting.item};
}

}  // namespace

NameIndex::NameIndex(const std::vector<LocationTable::Slot>& slots, Keys keys)
    : keys_(keys), firsts_(0, HashSlot{this}, EqualSlots{this}) {
  std::size_t count = 0;
  names_.reserve(slots.size());
  for (const auto& slot : slots) {
    names_.push_back(slot.entry->GetNames().GetView());
    count += names_.back().size() + (slot.kind == PathEntryType::Class ? 1 : 0);
    if (names_.back().size() >= kClassFolder) throw std::length_error("a folder holds more than two billion files");
  }
  if (count > 0xFFFFFFFF) throw std::length_error("the path holds more than four billion files");

  firsts_.reserve(count);
  ByFirst<std::vector<Posting>> others;
  for (Ordinal ordinal = 0; ordinal < slots.size(); ++ordinal) {
    AddFiles(ordinal, others);
    if (slots[ordinal].kind != PathEntryType::Class) continue;
    const auto& name = classNames_[ordinal] = slots[ordinal].entry->GetAbsoluteIRI().getName().substr(1);
    classNameFilter_.Add(name);
    Add({ordinal, kClassFolder, 0}, others);
  }
  LayOut(others);
}

void NameIndex::AddFiles(Ordinal ordinal, ByFirst<std::vector<Posting>>& others) {
  for (std::uint32_t item = 0; item < names_[ordinal].size(); ++item) {
    Add({ordinal, item & kClassFolder, 0}, others);
  }
}

void NameIndex::Add(Posting posting, ByFirst<std::vector<Posting>>& others) {
  const auto [first, isNew] = firsts_.insert(posting);
  if (isNew) return;
  first->hasOthers = 1;
  others[NumberOf(*first)].push_back(posting);
}

void NameIndex::LayOut(const ByFirst<std::vector<Posting>>& others) {
  rows_.reserve(others.size());
  for (const auto& [first, postings] : others) {
    rows_.emplace(first, Row{static_cast<std::uint32_t>(others_.size()), static_cast<std::uint32_t>(postings.size())});
    others_.insert(others_.end(), postings.begin(), postings.end());
  }
  others_.shrink_to_fit();
}

const NameIndex::Posting* NameIndex::FindFirst(std::u16string_view name) const {
  const auto found =
      keys_ == Keys::Exact ? firsts_.find(name) : firsts_.find(std::u16string_view(fl::filesystem::fold_case(name)));
  return found == firsts_.end() ? nullptr : &*found;
}

std::span<const NameIndex::Posting> NameIndex::OthersLike(const Posting& first) const {
  if (first.hasOthers == 0) return {};
  const Row& row = rows_.at(NumberOf(first));
  return std::span(others_).subspan(row.begin, row.count);
}

template <class Use>
auto NameIndex::WithNameOf(const Posting& posting, const Use& use) const {
  if (posting.IsClassFolder()) return use(classNames_.at(posting.entry));
  return use(names_[posting.entry].BaseName(posting.item));
}

std::size_t NameIndex::HashSlot::operator()(const Posting& first) const {
  return index->WithNameOf(first, [this](const auto& name) {
    return index->keys_ == Keys::Exact ? HashOf(name) : HashOf(fl::filesystem::fold_case(TextOf(name)));
  });
}

std::size_t NameIndex::HashSlot::operator()(std::u16string_view key) const { return HashOf(key); }

bool NameIndex::EqualSlots::operator()(const Posting& left, const Posting& right) const {
  const std::u16string name = index->WithNameOf(right, [](const auto& text) { return TextOf(text); });
  return (*this)(left, index->keys_ == Keys::Exact ? name : fl::filesystem::fold_case(name));
}

bool NameIndex::EqualSlots::operator()(const Posting& first, std::u16string_view key) const {
  return index->WithNameOf(first, [&](const auto& name) {
    return index->keys_ == Keys::Exact ? name == key : fl::filesystem::fold_case(TextOf(name)) == key;
  });
}

bool NameIndex::EqualSlots::operator()(std::u16string_view key, const Posting& first) const {
  return (*this)(first, key);
}

}  // namespace Quorvex::PathEnvironment
