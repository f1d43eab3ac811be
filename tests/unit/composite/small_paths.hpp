#pragma once

// All paths of a few components with a few folders each, in which everything collides that can.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {

/// A folder of the component with this number. The last of the places is a main entry where the first has a package.
inline constexpr std::array kPlaces = {"/a", "/b", "/a/+p"};
inline support::Folder SmallFolder(const std::string& place, std::size_t component) {
  support::Folder folder(place);
  const bool isBare = place == "/b" && component == 0;
  if (!isBare) folder.WithFile("foo.vnx");
  if (component == 1) folder.WithFile("FOO.vnx").WithFile("foo.x");
  folder.WithClass(support::Folder("Cls").WithFile("foo.vnx"));
  if (component == 2) folder.WithClass(support::Folder("CLS").WithFile("foo.x"));
  if (component != 1) folder.With(support::Folder("private").WithFile("foo.vnx"));
  if (place == "/a") folder.WithPackage(support::Folder("p").WithFile("foo.vnx"));
  return folder;
}

/// Every path of at most two folders, as the component with this number.
inline PathPtrs SmallComponents(std::size_t component) {
  PathPtrs paths = {support::APath().Build()};
  for (const char* const first : kPlaces) {
    paths.push_back(support::APath().With(SmallFolder(first, component)).Build());
    for (const char* const second : kPlaces) {
      paths.push_back(
          support::APath().With(SmallFolder(first, component)).With(SmallFolder(second, component)).Build());
    }
  }
  return paths;
}

/// Every list of at most three of them.
inline std::vector<PathPtrs> SmallComponentLists() {
  std::vector<PathPtrs> lists = {{}};
  std::size_t firstOfLength = 0;
  for (std::size_t length = 0; length < 3; ++length) {
    const PathPtrs components = SmallComponents(length);
    const std::size_t end = lists.size();
    for (; firstOfLength < end; ++firstOfLength) {
      for (const PathPtr& component : components) {
        lists.push_back(lists[firstOfLength]);
        lists.back().push_back(component);
      }
    }
  }
  return lists;
}

/// The main entries of all components, repetitions included.
inline std::vector<EntryPtr> MainEntriesOf(const PathPtrs& components) {
  std::vector<EntryPtr> entries;
  for (const PathPtr& component : components) {
    const auto own = component->GetMainEntries();
    entries.insert(entries.end(), own->begin(), own->end());
  }
  return entries;
}

/// Every selection of `entries`, each in every order.
inline std::vector<std::vector<EntryPtr>> SelectionsOf(const std::vector<EntryPtr>& entries) {
  std::vector<std::vector<EntryPtr>> selections = {{}};
  for (std::size_t next = 0; next < selections.size(); ++next) {
    for (const EntryPtr& entry : entries) {
      std::vector<EntryPtr> longer = selections[next];
      if (std::find(longer.begin(), longer.end(), entry) != longer.end()) continue;
      longer.push_back(entry);
      selections.push_back(longer);
    }
  }
  return selections;
}

}  // namespace Quorvex::PathManagement::composite_tests
