#include "name_places.hpp"

#include <algorithm>
#include <unordered_set>

namespace vornixpath {

namespace {

using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::PathEntryType;
using Names = std::vector<std::u16string>;

std::u16string_view WithoutMarks(std::u16string_view name) {
  name.remove_prefix(std::min(name.find_first_not_of(u"@+"), name.size()));
  return name;
}

// Of the last `count` of `names`, each followed by a separator.
FoldedHash HashOfLast(std::size_t count, const Names& names) {
  FoldedHash hash;
  for (std::size_t i = names.size() - count; i < names.size(); ++i) {
    hash.Add(WithoutMarks(names[i]));
    hash.Add(u"/");
  }
  return hash;
}

/// The folders of a path that offer names, first under the usual names alone.
class UsualPlaces {
 public:
  explicit UsualPlaces(const IPath& path) {
    const auto folders = path.GetMainEntries();
    for (const EntryPtr& folder : *folders) Visit(folder, u"", {});
  }

  [[nodiscard]] std::vector<NamePlace> Get() && { return std::move(places_); }

 private:
  void Visit(const EntryPtr& entry, const std::u16string& folders, const Names& names) {
    places_.push_back({entry, folders, HashOfLast(names.size(), names), true});
    const auto visitBelow = [&](const EntryPtr& below) {
      const std::u16string name = below->GetAbsoluteIRI().getName();
      if (name.size() <= 1) return;  // a lone mark: nothing is left to be written
      Names longer = names;
      longer.push_back(name);
      Visit(below, folders + name.substr(1) + u"/", longer);
    };
    const auto classes = entry->GetFirstEntryGroup();
    const auto packages = entry->GetSecondEntryGroup();
    std::for_each(classes->begin(), classes->end(), visitBelow);
    std::for_each(packages->begin(), packages->end(), visitBelow);
  }

  std::vector<NamePlace> places_;
};

std::size_t DepthOf(const NamePlace& place) {
  return static_cast<std::size_t>(std::count(place.folders.begin(), place.folders.end(), u'/'));
}

// Where the last names of a folder's location read like the usual names of some other one.
std::vector<NamePlace> UnusualPlaces(const std::vector<NamePlace>& usual) {
  std::unordered_set<std::uint64_t> written;
  std::size_t deepest = 0;
  for (const NamePlace& place : usual) {
    if (!place.folders.empty()) written.insert(place.hash.Value());
    deepest = std::max(deepest, DepthOf(place));
  }

  std::vector<NamePlace> unusual;
  for (const NamePlace& place : usual) {
    if (written.empty()) break;
    const Names names = place.entry->GetAbsoluteIRI().getSegments();
    for (std::size_t count = 1; count <= std::min(deepest, names.size()); ++count) {
      const FoldedHash hash = HashOfLast(count, names);
      if (count != DepthOf(place) && written.contains(hash.Value())) unusual.push_back({place.entry, {}, hash, false});
    }
  }
  return unusual;
}

}  // namespace

std::vector<NamePlace> PlacesOfNames(const IPath& path) {
  std::vector<NamePlace> places = UsualPlaces(path).Get();
  std::vector<NamePlace> unusual = UnusualPlaces(places);
  places.insert(places.end(), std::make_move_iterator(unusual.begin()), std::make_move_iterator(unusual.end()));
  return places;
}

bool IsClassInNoPackage(const NamePlace& place) {
  return place.isUsual && place.entry->GetEntryType() == PathEntryType::Class && DepthOf(place) == 1;
}

}  // namespace vornixpath
