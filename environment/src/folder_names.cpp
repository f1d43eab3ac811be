#include "folder_names.hpp"

#include <algorithm>
#include <fl/filesystem/case_folding.hpp>
#include <fl/filesystem/path.hpp>
#include <limits>
#include <stdexcept>
#include <tuple>

namespace Quorvex::PathEnvironment {

namespace {

// A text that stands in two pieces, such as a base name and its extension.
struct TwoPieces {
  std::u16string_view head;
  std::u16string_view tail;
};

// Three-way, code unit by code unit, as if both texts stood in one piece.
int Compare(TwoPieces left, TwoPieces right) noexcept {
  if (left.head.size() > right.head.size()) return -Compare(right, left);

  // The left head is the shorter one: it meets the beginning of the right head, then the left tail meets what is left
  // of it.
  if (const int order = left.head.compare(right.head.substr(0, left.head.size()))) return order;
  const std::u16string_view rest = right.head.substr(left.head.size());
  if (const int order = left.tail.substr(0, rest.size()).compare(rest)) return order;
  return left.tail.substr(rest.size()).compare(right.tail);
}

}  // namespace

FolderNames::FolderNames(std::vector<std::u16string> fullNames) {
  std::sort(fullNames.begin(), fullNames.end());
  fullNames.erase(std::unique(fullNames.begin(), fullNames.end()), fullNames.end());

  records_.reserve(fullNames.size());
  ExtensionNumbers known;
  for (const std::u16string& fullName : fullNames) Add(fullName, known);
  baseNames_.shrink_to_fit();
  extensions_.shrink_to_fit();
}

void FolderNames::Add(const std::u16string& fullName, ExtensionNumbers& known) {
  const std::u16string extension = fl::filesystem::detail::extract_extension(fullName);
  const std::size_t baseLength = fullName.size() - extension.size();
  if (baseNames_.size() + baseLength > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("a folder holds more than four billion characters of file names");
  }

  records_.push_back({static_cast<std::uint32_t>(baseNames_.size()), static_cast<std::uint32_t>(baseLength),
                      InternExtension(extension, known)});
  baseNames_.append(fullName, 0, baseLength);
}

std::uint32_t FolderNames::InternExtension(const std::u16string& extension, ExtensionNumbers& known) {
  const auto [place, isNew] = known.emplace(extension, static_cast<std::uint32_t>(extensions_.size()));
  if (isNew) extensions_.push_back(extension);
  return place->second;
}

std::u16string_view FolderNames::BaseName(std::size_t index) const noexcept {
  const Record& record = records_[index];
  return std::u16string_view(baseNames_).substr(record.offset, record.baseLength);
}

std::u16string_view FolderNames::Extension(std::size_t index) const noexcept {
  return extensions_[records_[index].extension];
}

std::optional<std::size_t> FolderNames::Find(std::u16string_view head, std::u16string_view tail) const noexcept {
  std::size_t first = 0;
  std::size_t last = size();
  while (first < last) {
    const std::size_t middle = first + (last - first) / 2;
    const int order = Compare({BaseName(middle), Extension(middle)}, {head, tail});
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
    folded.push_back({fl::filesystem::fold_case(BaseName(index)) + fl::filesystem::fold_case(Extension(index)), index});
  }
  std::sort(folded.begin(), folded.end(), [](const FoldedName& left, const FoldedName& right) {
    return std::tie(left.text, left.index) < std::tie(right.text, right.index);
  });
  return folded;
}

}  // namespace Quorvex::PathEnvironment
