#include "folder_names.hpp"

#include <algorithm>
#include <cstring>
#include <fl/filesystem/case_folding.hpp>
#include <fl/filesystem/path.hpp>
#include <limits>
#include <new>
#include <stdexcept>
#include <tuple>

namespace Quorvex::PathEnvironment {

namespace {

// Three-way with `head` followed by `tail`, code unit by code unit.
int Compare(TextPiece name, std::u16string_view head, std::u16string_view tail) noexcept {
  if (name.size() <= head.size()) {
    const int order = name.Compare(head.substr(0, name.size()));
    const bool isShorter = name.size() < head.size() || !tail.empty();
    return order != 0 ? order : (isShorter ? -1 : 0);
  }
  const int order = name.First(head.size()).Compare(head);
  return order != 0 ? order : name.After(head.size()).Compare(tail);
}

std::uint32_t CheckedCount(std::size_t count, const char* what) {
  if (count >= std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error(std::string("a folder holds more than four billion ") + what);
  }
  return static_cast<std::uint32_t>(count);
}

bool IsNarrow(const std::u16string& text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x100; });
}

}  // namespace

FolderNames::FolderNames(std::vector<std::u16string> fullNames) {
  std::sort(fullNames.begin(), fullNames.end());
  fullNames.erase(std::unique(fullNames.begin(), fullNames.end()), fullNames.end());

  std::size_t length = 0;
  for (const std::u16string& fullName : fullNames) length += fullName.size();
  CheckedCount(length, "characters of file names");
  view_.count_ = CheckedCount(fullNames.size(), "files");
  view_.isNarrow_ = std::all_of(fullNames.begin(), fullNames.end(), IsNarrow);
  Pack(fullNames, length);
}

FolderNames::FolderNames(const PackedNames& packed) {
  const std::size_t sizeOfRecords = (std::size_t{packed.count} + 1) * sizeof(View::Record);
  const std::size_t sizeOfUnit = packed.isNarrow ? 1 : sizeof(char16_t);
  if (packed.block.size() < sizeOfRecords) throw std::invalid_argument("a table of names is cut short");
  blockSize_ = packed.block.size();
  block_.reset(new std::byte[blockSize_]);
  std::memcpy(block_.get(), packed.block.data(), blockSize_);
  view_.records_ = std::launder(reinterpret_cast<const View::Record*>(block_.get()));
  view_.count_ = packed.count;
  view_.isNarrow_ = packed.isNarrow;
  view_.hasDottedBaseNames_ = packed.hasDottedBaseNames;

  const std::size_t sizeOfText = blockSize_ - sizeOfRecords;
  if (sizeOfText % sizeOfUnit != 0 || !view_.IsSound(sizeOfText / sizeOfUnit)) {
    throw std::invalid_argument("a table of names does not fit together");
  }
}

bool FolderNames::View::IsSound(std::size_t length) const noexcept {
  if (records_[0].offset != 0 || records_[count_].offset != length) return false;
  for (std::uint32_t i = 0; i < count_; ++i) {
    const Record& record = records_[i];
    const std::uint32_t end = records_[i + 1].offset;
    if (end < record.offset || end - record.offset < record.extensionLength) return false;
  }
  return true;
}

PackedNames FolderNames::GetPacked() const noexcept {
  return {{block_.get(), blockSize_}, view_.count_, view_.isNarrow_, view_.hasDottedBaseNames_};
}

void FolderNames::Pack(const std::vector<std::u16string>& fullNames, std::size_t length) {
  const std::size_t sizeOfRecords = (fullNames.size() + 1) * sizeof(View::Record);
  blockSize_ = sizeOfRecords + length * (view_.isNarrow_ ? 1 : sizeof(char16_t));
  block_.reset(new std::byte[blockSize_]);
  auto* const records = new (block_.get()) View::Record[fullNames.size() + 1];
  view_.records_ = records;

  std::byte* text = block_.get() + sizeOfRecords;
  std::uint32_t offset = 0;
  for (std::size_t i = 0; i < fullNames.size(); ++i) {
    const std::u16string& name = fullNames[i];
    const std::size_t extensionLength = fl::filesystem::detail::extract_extension(name).size();
    records[i] = {offset, static_cast<std::uint32_t>(extensionLength)};
    view_.hasDottedBaseNames_ |= name.find(u'.', 1) < name.size() - extensionLength;
    offset += static_cast<std::uint32_t>(name.size());
    if (view_.isNarrow_) {
      text = std::transform(name.begin(), name.end(), text, [](char16_t unit) { return static_cast<std::byte>(unit); });
    } else {
      std::memcpy(text, name.data(), name.size() * sizeof(char16_t));
      text += name.size() * sizeof(char16_t);
    }
  }
  records[fullNames.size()] = {offset, 0};
}

std::optional<std::size_t> FolderNames::Find(std::u16string_view head, std::u16string_view tail) const noexcept {
  std::size_t first = 0;
  std::size_t last = size();
  while (first < last) {
    const std::size_t middle = first + (last - first) / 2;
    const int order = Compare(view_.FullName(middle), head, tail);
    if (order == 0) return middle;
    if (order < 0) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return std::nullopt;
}

std::vector<std::size_t> FolderNames::FindIgnoringCase(std::u16string_view head, std::u16string_view tail) const {
  // Joined first: the cut may go through a surrogate pair.
  const std::u16string wanted = fl::filesystem::fold_case(std::u16string(head).append(tail));
  const auto& folded = folded_.Get([this] { return FoldAll(); });

  auto match = std::lower_bound(folded.begin(), folded.end(), wanted,
                                [](const FoldedName& name, const std::u16string& text) { return name.text < text; });
  std::vector<std::size_t> matches;
  for (; match != folded.end() && match->text == wanted; ++match) matches.push_back(match->index);
  return matches;
}

std::vector<FolderNames::FoldedName> FolderNames::FoldAll() const {
  std::vector<FoldedName> folded;
  folded.reserve(size());
  for (std::size_t index = 0; index < size(); ++index) {
    folded.push_back({fl::filesystem::fold_case(view_.FullName(index).ToString()), index});
  }
  std::sort(folded.begin(), folded.end(), [](const FoldedName& left, const FoldedName& right) {
    return std::tie(left.text, left.index) < std::tie(right.text, right.index);
  });
  return folded;
}

bool FolderNames::HoldsTheSameAs(const FolderNames& other) const noexcept {
  // The same names are packed the same way.
  return size() == other.size() && view_.isNarrow_ == other.view_.isNarrow_ && blockSize_ == other.blockSize_ &&
         std::memcmp(block_.get(), other.block_.get(), blockSize_) == 0;
}

}  // namespace Quorvex::PathEnvironment
