#include "name_index.hpp"

#include <algorithm>
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
  unpackedEntry_ = kNoOrdinal;
  std::u16string().swap(unpacked_);
  // Where many folders hold the same names, there are far fewer names than files.
  if (firsts_.size() < count / 2) firsts_.rehash(firsts_.size());
  LayOut(others);
}

void NameIndex::AddFiles(Ordinal ordinal, ByFirst<std::vector<Posting>>& others) {
  if (keys_ == Keys::Exact) {
    unpacked_ = slots_[ordinal].names.Text().ToString();
    unpackedEntry_ = ordinal;
  }
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

template <class Use>
auto NameIndex::WithKeyOf(const Posting& posting, const Use& use) const {
  if (posting.entry != unpackedEntry_) return use(std::u16string_view(KeyOf(posting)));
  const FolderNames::View& names = slots_[posting.entry].names;
  return use(std::u16string_view(unpacked_).substr(names.OffsetOf(posting.item), names.BaseName(posting.item).size()));
}

std::size_t NameIndex::HashName::operator()(const Posting& first) const {
  return index->WithKeyOf(first, [this](std::u16string_view key) { return (*this)(key); });
}

bool NameIndex::IsSameName::operator()(const Posting& left, const Posting& right) const {
  return index->WithKeyOf(right, [&](std::u16string_view key) { return index->Bears(left, key); });
}

}  // namespace Quorvex::PathEnvironment
