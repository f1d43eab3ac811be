#pragma once

// A path of four folders that tells a log what it is asked, and views of it with some folders hidden.

#include <initializer_list>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {

/// /a, /b, /c and /d, each with a foo.vnx, and a class Cls with one, too.
struct MaskedFolders {
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::shared_ptr<const FakePath> path = [this] {
    support::APath folders;
    folders.Recording("path", log);
    for (const char* const name : {"/a", "/b", "/c", "/d"}) {
      folders.With(support::Folder(name).WithFile("foo.vnx").WithClass(support::Folder("Cls").WithFile("foo.vnx")));
    }
    return folders.Build();
  }();

  [[nodiscard]] EntryPtr At(std::string_view location) const { return path->EntryAt(location); }

  [[nodiscard]] std::vector<EntryPtr> EntriesAt(std::initializer_list<std::string_view> locations) const {
    std::vector<EntryPtr> entries;
    entries.reserve(locations.size());
    for (const std::string_view location : locations) entries.push_back(At(location));
    return entries;
  }

  [[nodiscard]] MultiMaskedPath Without(std::initializer_list<std::string_view> locations) const {
    return {path, EntriesAt(locations)};
  }
};

}  // namespace Quorvex::PathManagement::composite_tests
