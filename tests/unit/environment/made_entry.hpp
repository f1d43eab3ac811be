#pragma once

// Entries made from what they hold, without storage.

#include <memory>
#include <search_path_environment/folder_entry.hpp>
#include <string>
#include <utility>
#include <vector>

namespace Quorvex::PathEnvironment {

using FolderEntryPtr = std::shared_ptr<const FolderEntry>;

/// Builds an entry at a location: a main entry that compares names exactly, unless told otherwise.
class MadeEntry {
 public:
  explicit MadeEntry(const std::u16string& iri)
      : contents_{foundation::storage::vfs::AbsoluteIRI(iri),
                  foundation::storage::vfs::AbsoluteIRI(iri),
                  PathManagement::PathEntryType::Main,
                  true,
                  {},
                  {},
                  {}} {}

  MadeEntry& OfKind(PathManagement::PathEntryType kind) {
    contents_.kind = kind;
    return *this;
  }
  MadeEntry& Canonically(const std::u16string& iri) {
    contents_.canonicalLocation = foundation::storage::vfs::AbsoluteIRI(iri);
    return *this;
  }
  MadeEntry& IgnoringCase() {
    contents_.comparesNamesExactly = false;
    return *this;
  }
  MadeEntry& WithFiles(std::vector<std::u16string> names) {
    contents_.files = std::move(names);
    return *this;
  }
  MadeEntry& WithPrivate(FolderEntryPtr entry) {
    contents_.subfolders.privateEntry = std::move(entry);
    return *this;
  }
  MadeEntry& WithClass(FolderEntryPtr entry) {
    contents_.subfolders.classes.push_back(std::move(entry));
    return *this;
  }
  MadeEntry& WithPackage(FolderEntryPtr entry) {
    contents_.subfolders.packages.push_back(std::move(entry));
    return *this;
  }

  [[nodiscard]] FolderEntryPtr Create() const { return FolderEntry::Create(contents_); }

 private:
  FolderEntry::Contents contents_;
};

inline FolderEntryPtr MadeClass(const std::u16string& iri, std::vector<std::u16string> files = {}) {
  return MadeEntry(iri).OfKind(PathManagement::PathEntryType::Class).WithFiles(std::move(files)).Create();
}

}  // namespace Quorvex::PathEnvironment
