#pragma once

// What every path must do, whatever it is made of.
//
// The tests stand in path_contract_*_test.cpp, by what they ask about. A new kind of path is one line in
// path_contract_kinds_test.cpp: a name, and how to make such a path with given folders.

#include <gmock/gmock.h>

#include <array>
#include <fl/filesystem/text_codec.hpp>
#include <functional>
#include <memory>
#include <ostream>
#include <search_path_interfaces/path.hpp>
#include <search_path_utilities/lookup.hpp>
#include <stdexcept>
#include <string>
#include <support/folder.hpp>
#include <vector>

namespace Quorvex::PathManagement::contract {

using support::Folder;
using EntryPtr = std::shared_ptr<const IPathEntry>;
using PathPtr = std::shared_ptr<const IPath>;

/// The main folders of a path, in path order, named "/a", "/b".
using Content = std::vector<Folder>;

/// One kind of path. Whatever a path needs lives as long as it; its folders lie side by side, wherever that is.
struct PathKind {
  std::string name;
  std::function<PathPtr(const Content&)> make;

  friend void PrintTo(const PathKind& kind, std::ostream* out) { *out << kind.name; }
};

inline constexpr std::array kEachKind = {PathEntryType::Main,    PathEntryType::Package,   PathEntryType::Class,
                                         PathEntryType::Private, PathEntryType::Auxiliary, PathEntryType::Resources};
inline constexpr SearchScope kEveryKind(kEachKind.data(), kEachKind.data() + kEachKind.size());
inline constexpr SearchScope kNoKind(kEachKind.data(), kEachKind.data());

inline constexpr FilenameMatchingPolicy kCaseSensitive = FilenameMatchingPolicy::CaseSensitive;
inline constexpr FilenameMatchingPolicy kCaseInsensitive = FilenameMatchingPolicy::CaseInsensitive;
inline constexpr FilenameMatchingPolicy kNative = FilenameMatchingPolicy::Native;
inline constexpr std::array kEachPolicy = {kCaseSensitive, kCaseInsensitive, kNative};

/// The scope of one kind. `kEachKind` lists kinds in the order of their values.
inline SearchScope Only(PathEntryType kind) {
  const PathEntryType* const place = kEachKind.data() + static_cast<std::size_t>(kind);
  return {place, place + 1};
}

/// A lookup; it owns what a target borrows.
struct Wanted {
  std::u16string name;
  std::vector<std::u16string> extensions = {u".vnx"};

  [[nodiscard]] detail::SearchTarget Target() const { return {name, extensions}; }

  friend void PrintTo(const Wanted& wanted, std::ostream* out) {
    *out << fl::filesystem::to_bytes(wanted.name) << " with";
    for (const std::u16string& extension : wanted.extensions)
      *out << " '" << fl::filesystem::to_bytes(extension) << "'";
  }
};

/// Every place at which a text or a kind could make a difference. No two names in one folder differ in letter case
/// only, so that any storage can hold it.
inline Content SampleContent() {
  const auto packaged = Folder("pkg")
                            .WithFile("foo.vnx")
                            .WithFile("inner.vnx")
                            .WithClass(Folder("Cls").WithFile("foo.vnx"))
                            .WithPackage(Folder("sub").WithFile("deep.vnx"));
  const auto classy =
      Folder("Cls").WithFile("foo.vnx").WithFile("method.vnx").With(Folder("private").WithFile("method.vnx"));
  const auto a = Folder("/a")
                     .WithFile("foo.vnx")
                     .WithFile("twice.vnx")
                     .WithFile("twice.x")
                     .With(Folder("private").WithFile("foo.vnx").WithFile("secret.vnx"))
                     .With(Folder("resources").WithFile("foo.vnx").WithFile("picture.vnx"))
                     .With(Folder("plain").WithFile("foo.vnx").WithFile("lost.vnx"))
                     .WithClass(classy)
                     .WithPackage(packaged);
  const auto b = Folder("/b")
                     .WithFile("FOO.vnx")
                     .WithFile("late.x")
                     .WithClass(Folder("Cls").WithFile("method.vnx"))
                     .WithClass(Folder("Other").WithFile("foo.vnx"));
  const auto d = Folder("/d").WithFile("foo.vnx").WithFile("late.vnx").With(Folder("private").WithFile("secret.vnx"));
  return {a, b, Folder("/c"), d};
}

class PathContract : public testing::TestWithParam<PathKind> {
 protected:
  static PathPtr Make(const Content& content) { return GetParam().make(content); }

  [[nodiscard]] const IPath& Path() const { return *path_; }

  [[nodiscard]] std::vector<EntryPtr> MainEntries() const { return *Path().GetMainEntries(); }

  /// Main entries, each followed by its method entries; put together from the two lists, not from a walk.
  [[nodiscard]] std::vector<EntryPtr> Entries() const {
    const std::vector<EntryPtr> methodEntries = Path().GetMethodEntries();
    std::vector<EntryPtr> entries;
    for (const EntryPtr& main : MainEntries()) {
      entries.push_back(main);
      for (const EntryPtr& entry : methodEntries) {
        if (Path().GetMainEntryForEntry(*entry) == main) entries.push_back(entry);
      }
    }
    return entries;
  }

  /// The entries of `Entries()` of the kinds in `scope`.
  [[nodiscard]] std::vector<EntryPtr> EntriesIn(SearchScope scope) const {
    std::vector<EntryPtr> entries = Entries();
    std::erase_if(entries, [&](const EntryPtr& entry) { return !scope.Contains(entry->GetEntryType()); });
    return entries;
  }

  /// The entry of the sample at "/a/@Cls", there being one.
  [[nodiscard]] EntryPtr At(const std::string& place) const {
    for (const EntryPtr& entry : Entries()) {
      if (Shown(entry) == place) return entry;
    }
    throw std::out_of_range("no entry at " + place);
  }

  /// Where the entry is, as the content calls it: "/a/@Cls"; "none" when there is no entry.
  [[nodiscard]] std::string Shown(const EntryPtr& entry) const {
    return entry ? Shown(entry->GetAbsoluteIRI()) : "none";
  }
  [[nodiscard]] std::string Shown(const foundation::storage::vfs::AbsoluteIRI& location) const {
    return fl::filesystem::to_bytes(location.getPath().substr(LengthOfWhere()));
  }
  /// "/a/@Cls/foo.vnx"
  [[nodiscard]] std::string Shown(const FoundItem& found) const {
    const auto item = found.GetPathItem();
    return Shown(item->folderIRI) + '/' + fl::filesystem::to_bytes(item->baseName + item->extension);
  }
  [[nodiscard]] std::string Shown(const boost::optional<FoundItem>& found) const {
    return found ? Shown(*found) : "none";
  }
  template <class T>
  [[nodiscard]] std::vector<std::string> Shown(const std::vector<T>& things) const {
    std::vector<std::string> texts;
    for (const T& thing : things) texts.push_back(Shown(thing));
    return texts;
  }

 private:
  /// Of the path text of the folder that holds the main folders.
  [[nodiscard]] std::size_t LengthOfWhere() const {
    const std::u16string where = Path().GetMainEntries()->front()->GetAbsoluteIRI().getParent().getPath();
    return where == u"/" ? 0 : where.size();
  }

  PathPtr path_ = Make(SampleContent());
};

}  // namespace Quorvex::PathManagement::contract
