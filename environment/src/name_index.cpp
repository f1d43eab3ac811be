#include "name_index.hpp"

#include <algorithm>
#include <array>
#include <fl/filesystem/case_folding.hpp>
#include <stdexcept>

namespace Quorvex::PathEnvironment {

namespace {

// What 31 bits can number.
constexpr std::uint32_t kMostItems = 0x7FFFFFFF;

std::uint64_t NumberOf(const NameIndex::Posting& posting) {
  return (std::uint64_t{posting.entry} << 32U) | std::uint64_t{posting.item};
}

}  // namespace

NameIndex::NameIndex(const std::vector<LocationTable::Slot>& slots, Keys keys)
    : keys_(keys), slots_(slots.data()), firsts_(0, HashName{this}, IsSameName{this}) {
  std::size_t count = 0;
  for (const auto& slot : slots) {
    count += slot.names.size();
    if (slot.names.size() > kMostItems) throw std::length_error("a folder holds more than two billion files");
  }
  if (count > 0xFFFFFFFF) throw std::length_error("the path holds more than four billion files");

  firsts_.reserve(count);
  ByFirst<std::vector<Posting>> others;
  for (Ordinal ordinal = 0; ordinal < slots.size(); ++ordinal) {
    AddFiles(ordinal, others);
  }
  // Where many folders hold the same names, there are far fewer names than files.
  if (firsts_.size() < count / 2) firsts_.rehash(firsts_.size());
  LayOut(others);
}

void NameIndex::AddFiles(Ordinal ordinal, ByFirst<std::vector<Posting>>& others) {
  for (std::uint32_t item = 0; item < slots_[ordinal].names.size(); ++item) {
    Add({ordinal, item & kMostItems, 0}, others);
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

std::span<const NameIndex::Posting> NameIndex::OthersLike(const Posting& first) const {
  if (first.hasOthers == 0) return {};
  const Row& row = rows_.at(NumberOf(first));
  return std::span(others_).subspan(row.begin, row.count);
}

const NameIndex::Posting* NameIndex::FindFolded(std::u16string_view name) const {
  const auto found = firsts_.find(std::u16string_view(fl::filesystem::fold_case(name)));
  return found == firsts_.end() ? nullptr : &*found;
}

std::u16string NameIndex::KeyOf(const Posting& posting) const {
  std::u16string name = slots_[posting.entry].names.BaseName(posting.item).ToString();
  return keys_ == Keys::Exact ? name : fl::filesystem::fold_case(name);
}

std::size_t NameIndex::HashName::operator()(const Posting& first) const {
  // A packed name is hashed as the callers' names are: in UTF-16.
  std::array<char16_t, 256> buffer;
  const TextPiece name = index->slots_[first.entry].names.BaseName(first.item);
  if (index->keys_ == Keys::Folded || name.size() > buffer.size()) {
    return (*this)(std::u16string_view(index->KeyOf(first)));
  }
  name.CopyTo(buffer.data());
  return (*this)(std::u16string_view(buffer.data(), name.size()));
}

bool NameIndex::IsSameName::operator()(const Posting& left, const Posting& right) const {
  return index->Bears(left, index->KeyOf(right));
}

}  // namespace Quorvex::PathEnvironment
