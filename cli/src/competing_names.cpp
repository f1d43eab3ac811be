// Each file leaves the hash of the name that people type for it; where two meet, texts are looked at.

#include "competing_names.hpp"

#include <algorithm>
#include <cstdint>
#include <fl/filesystem/case_folding.hpp>
#include <limits>
#include <span>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "name_places.hpp"
#include "offered_names.hpp"
#include "typed_name.hpp"

namespace vornixpath {

namespace {

using fl::filesystem::fold_case;
using Quorvex::PathManagement::IPath;

constexpr std::uint32_t kFolderItself = std::numeric_limits<std::uint32_t>::max();

// Something that bears a name: an item of a place, or the place's folder.
struct Offer {
  std::uint64_t hash;
  std::uint32_t place;
  std::uint32_t item;

  friend auto operator<=>(const Offer&, const Offer&) = default;
};

std::uint32_t Number(std::size_t number) {
  if (number >= kFolderItself) throw std::length_error("a path holds more than four billion folders or files");
  return static_cast<std::uint32_t>(number);
}

/// Finds what competes among the places of a path.
class Search {
 public:
  Search(const IPath& path, const std::vector<std::u16string>& extensions)
      : places_(PlacesOfNames(path)), typed_(extensions) {}

  std::vector<CompetingNames> Run() {
    CollectOffers();
    KeepThoseThatMeet();
    return Named();
  }

 private:
  void CollectOffers() {
    for (std::size_t i = 0; i < places_.size(); ++i) {
      const NamePlace& place = places_[i];
      const LetterCase letterCase = LetterCaseIn(*place.entry);
      std::size_t item = 0;
      ForEachName(*place.entry, [&](std::u16string_view baseName, std::u16string_view extension) {
        const std::uint32_t number = Number(item++);
        const std::u16string_view name = typed_.NameFor(baseName, extension, letterCase);
        if (name.empty()) return;
        const auto offer = [&](FoldedHash hash) {
          hash.Add(name);
          offers_.push_back({hash.Value(), Number(i), number});
        };
        offer(place.hash);
        if (AnswersForClass(place, baseName, letterCase)) offer(FoldedHash());
      });
      if (place.folders.empty()) continue;
      FoldedHash hash;
      hash.Add(FolderName(place));
      offers_.push_back({hash.Value(), Number(i), kFolderItself});
    }
  }

  void KeepThoseThatMeet() {
    std::sort(offers_.begin(), offers_.end());
    auto kept = offers_.begin();
    for (auto first = offers_.begin(); first != offers_.end();) {
      const auto last =
          std::find_if(first, offers_.end(), [&](const Offer& offer) { return offer.hash != first->hash; });
      const bool isAnyFile = std::any_of(first, last, [](const Offer& offer) { return offer.item != kFolderItself; });
      if (last - first > 1 && isAnyFile) {
        kept = std::move(first, last, kept);
      }
      first = last;
    }
    offers_.erase(kept, offers_.end());
    offers_.shrink_to_fit();
  }

  // The texts are asked for once more, place by place.
  std::vector<CompetingNames> Named() {
    std::sort(offers_.begin(), offers_.end(), [](const Offer& left, const Offer& right) {
      return std::pair(left.place, left.item) < std::pair(right.place, right.item);
    });
    for (auto first = offers_.begin(); first != offers_.end();) {
      const auto last =
          std::find_if(first, offers_.end(), [&](const Offer& offer) { return offer.place != first->place; });
      if (places_[first->place].isUsual) AddNamesOf(places_[first->place], {first, last});
      first = last;
    }
    return Groups();
  }

  // `offers` are those of the place, in the order of its items.
  void AddNamesOf(const NamePlace& place, std::span<const Offer> offers) {
    const LetterCase letterCase = LetterCaseIn(*place.entry);
    auto offer = offers.begin();
    std::uint32_t item = 0;
    ForEachName(*place.entry, [&](std::u16string_view baseName, std::u16string_view extension) {
      const bool competes = offer != offers.end() && offer->item == item;
      if (competes) {
        std::u16string name = AnswersForClass(place, baseName, letterCase) ? std::u16string() : place.folders;
        AddName(name.append(typed_.NameFor(baseName, extension, letterCase)));
      }
      while (offer != offers.end() && offer->item == item) ++offer;
      ++item;
    });
    if (offer == offers.end()) return;  // else what is left is the folder's own
    const std::u16string name(FolderName(place));
    groups_[fold_case(name)].folders.push_back({name, place.entry});
  }

  void AddName(const std::u16string& name) {
    auto& names = groups_[fold_case(name)].names;
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }

  std::vector<CompetingNames> Groups() {
    std::vector<CompetingNames> groups;
    for (auto& [folded, group] : groups_) {
      if (group.names.empty()) continue;
      std::sort(group.names.begin(), group.names.end());
      groups.push_back(std::move(group));
    }
    std::sort(groups.begin(), groups.end(), [](const CompetingNames& left, const CompetingNames& right) {
      return left.names.front() < right.names.front();
    });
    return groups;
  }

  std::vector<NamePlace> places_;
  TypedNames typed_;
  std::vector<Offer> offers_;
  std::unordered_map<std::u16string, CompetingNames> groups_;  // by folded name
};

}  // namespace

std::vector<CompetingNames> FindCompetingNames(const IPath& path, const std::vector<std::u16string>& extensions) {
  return Search(path, extensions).Run();
}

}  // namespace vornixpath
