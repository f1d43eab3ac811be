#pragma once

// Entries, items and problems as short texts, so that a failed expectation can be read.

#include <boost/optional/optional.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <memory>
#include <search_path_environment/path_problem.hpp>
#include <search_path_interfaces/found_item.hpp>
#include <search_path_interfaces/path.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <string>
#include <utility>
#include <vector>

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using EntryPtr = std::shared_ptr<const PathManagement::IPathEntry>;
using ItemPtr = std::shared_ptr<const PathManagement::PathItem>;
using Texts = std::vector<std::string>;
using PathManagement::FilenameMatchingPolicy;
using PathManagement::PathEntryType;
using PathManagement::SearchScope;
using PathManagement::detail::SearchTarget;

inline constexpr auto kCaseSensitive = FilenameMatchingPolicy::CaseSensitive;
inline constexpr auto kCaseInsensitive = FilenameMatchingPolicy::CaseInsensitive;
inline constexpr auto kNative = FilenameMatchingPolicy::Native;
/// A value without a name.
inline constexpr auto kUnknownPolicy = static_cast<FilenameMatchingPolicy>(77);

inline constexpr PathEntryType kKinds[] = {PathEntryType::Main,    PathEntryType::Package,   PathEntryType::Class,
                                           PathEntryType::Private, PathEntryType::Auxiliary, PathEntryType::Resources};
inline constexpr SearchScope kEveryKind(kKinds, kKinds + 6);
inline constexpr SearchScope kNoKind(kKinds, kKinds);
/// The scope of one kind.
inline SearchScope Only(PathEntryType kind) {
  const PathEntryType* const place = kKinds + static_cast<std::size_t>(kind);
  return {place, place + 1};
}

inline std::string Shown(const AbsoluteIRI& location) { return fl::filesystem::to_displayed_text(location.getPath()); }
inline std::string Shown(const EntryPtr& entry) { return entry ? Shown(entry->GetAbsoluteIRI()) : "none"; }

/// The full file name.
inline std::string Shown(const ItemPtr& item) {
  return item ? fl::filesystem::to_displayed_text(item->baseName + item->extension) : "none";
}

/// Entry and file: "/a/+p: f.vnx".
inline std::string Shown(const PathManagement::FoundItem& found) {
  return Shown(found.GetPathEntry()) + ": " + Shown(found.GetPathItem());
}
inline std::string Shown(const boost::optional<PathManagement::FoundItem>& found) {
  return found ? Shown(*found) : "none";
}

/// Position, location and reason: "0 /a: there is no such folder".
inline std::string Shown(const PathProblem& problem) {
  return std::to_string(problem.position) + " " + Shown(problem.location) + ": " + ReasonOf(problem);
}

template <class Things>
Texts AllShown(const Things& things) {
  Texts texts;
  for (const auto& thing : things) texts.push_back(Shown(thing));
  return texts;
}

/// The entries that a walk visits.
inline Texts Walk(const PathManagement::IPathEntry& entry, SearchScope scope = kEveryKind) {
  Texts visited;
  entry.ForEachEntryInScope(scope, [&](const EntryPtr& each) {
    visited.push_back(Shown(each));
    return false;
  });
  return visited;
}
inline Texts Walk(const PathManagement::IPath& path, SearchScope scope = kEveryKind) {
  Texts visited;
  path.ForEachEntry(scope, [&](const EntryPtr& each) {
    visited.push_back(Shown(each));
    return false;
  });
  return visited;
}

/// A name and the extensions to try, kept alive for the target that borrows them.
struct Wanted {
  std::u16string name;
  std::vector<std::u16string> extensions;

  [[nodiscard]] SearchTarget Target() const { return {name, extensions}; }
};

/// As though somebody had asked for `fullName` exactly.
inline Wanted Exactly(std::u16string fullName) { return {std::move(fullName), {u""}}; }

}  // namespace Quorvex::PathEnvironment
