#pragma once

// What a deduplicated and a masked path must answer: everything is copied into plain lists first, and then looked at
// one by one. Slow, obvious, and written apart from the paths.

#include <algorithm>
#include <boost/optional/optional.hpp>
#include <memory>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

namespace Quorvex::PathManagement::oracle {

using Entries = std::vector<std::shared_ptr<const IPathEntry>>;
using Items = std::vector<FoundItem>;
using Paths = std::vector<std::shared_ptr<const IPath>>;

/// What a walk visits when nobody stops it.
template <class Walkable>
Entries Walked(const Walkable& walk) {
  Entries visited;
  walk([&](const std::shared_ptr<const IPathEntry>& entry) {
    visited.push_back(entry);
    return false;
  });
  return visited;
}

inline bool AreOneFolder(const std::shared_ptr<const IPathEntry>& left,
                         const std::shared_ptr<const IPathEntry>& right) {
  return left->GetAbsoluteIRI() == right->GetAbsoluteIRI();
}

inline bool AreOneFile(const FoundItem& left, const FoundItem& right) {
  const PathItem& one = *left.GetPathItem();
  const PathItem& other = *right.GetPathItem();
  return one.folderIRI == other.folderIRI && one.baseName + one.extension == other.baseName + other.extension;
}

/// Of `things`, those that are not the same as any before them.
template <class List, class AreOne>
List FirstOfEach(const List& things, const AreOne& areOne) {
  List firsts;
  for (const auto& thing : things) {
    if (std::none_of(firsts.begin(), firsts.end(), [&](const auto& first) { return areOne(first, thing); })) {
      firsts.push_back(thing);
    }
  }
  return firsts;
}

/// Several paths one after another, each folder and each file once.
class DeduplicatedPathModel {
 public:
  explicit DeduplicatedPathModel(Paths components) : components_(std::move(components)) {}

  [[nodiscard]] Entries MainEntries() const {
    return Folders([](const IPath& component) { return *component.GetMainEntries(); });
  }
  [[nodiscard]] Entries MethodEntries() const {
    return Folders([](const IPath& component) { return component.GetMethodEntries(); });
  }
  [[nodiscard]] Entries MethodEntriesByName(SearchScope scope, const std::u16string& name,
                                            FilenameMatchingPolicy policy) const {
    return Folders([&](const IPath& component) { return component.GetMethodEntriesByName(scope, name, policy); });
  }
  [[nodiscard]] Entries PartiallyMatchingEntries(SearchScope scope, const std::u16string& name,
                                                 FilenameMatchingPolicy policy) const {
    return Folders([&](const IPath& component) { return component.GetPartiallyMatchingEntries(scope, name, policy); });
  }
  [[nodiscard]] Items FindAll(SearchScope scope, const detail::SearchTarget& target,
                              FilenameMatchingPolicy policy) const {
    return FirstOfEach(
        Joined<Items>([&](const IPath& component) { return component.FindAllInScope(scope, target, policy); }),
        AreOneFile);
  }

  /// Before the main entries were asked for.
  [[nodiscard]] Entries WalkAlongComponents(SearchScope scope) const {
    return Folders([&](const IPath& component) {
      return Walked([&](const PathEntryCallback& visit) { component.ForEachEntry(scope, visit); });
    });
  }

  /// After that.
  [[nodiscard]] Entries WalkAlongMainEntries(SearchScope scope) const {
    Entries visited;
    for (const auto& entry : MainEntries()) {
      const Entries inside = Walked([&](const PathEntryCallback& visit) { entry->ForEachEntryInScope(scope, visit); });
      visited.insert(visited.end(), inside.begin(), inside.end());
    }
    return visited;
  }

 private:
  template <class List, class ListOf>
  [[nodiscard]] List Joined(const ListOf& listOf) const {
    List all;
    for (const auto& component : components_) {
      for (const auto& thing : listOf(*component)) all.push_back(thing);
    }
    return all;
  }
  template <class ListOf>
  [[nodiscard]] Entries Folders(const ListOf& listOf) const {
    return FirstOfEach(Joined<Entries>(listOf), AreOneFolder);
  }

  Paths components_;
};

/// A path without some of its main entries.
class MaskedPathModel {
 public:
  /// `order`: every main entry of the path in its order, those that it does not list included. A masked entry that is
  /// not among them is a stranger.
  MaskedPathModel(std::shared_ptr<const IPath> path, Entries masked, Entries order)
      : path_(std::move(path)), masked_(std::move(masked)), main_(*path_->GetMainEntries()), order_(std::move(order)) {}

  [[nodiscard]] Entries MainEntries() const { return Unmasked(main_); }
  [[nodiscard]] bool HasTooManyMasks() const { return masked_.size() > main_.size(); }

  [[nodiscard]] Entries MethodEntries() const { return Unmasked(path_->GetMethodEntries()); }
  [[nodiscard]] Entries MethodEntriesByName(SearchScope scope, const std::u16string& name,
                                            FilenameMatchingPolicy policy) const {
    return Unmasked(path_->GetMethodEntriesByName(scope, name, policy));
  }
  [[nodiscard]] Entries PartiallyMatchingEntries(SearchScope scope, const std::u16string& name,
                                                 FilenameMatchingPolicy policy) const {
    return Unmasked(path_->GetPartiallyMatchingEntries(scope, name, policy));
  }
  [[nodiscard]] Entries Walk(SearchScope scope) const {
    return Unmasked(Walked([&](const PathEntryCallback& visit) { path_->ForEachEntry(scope, visit); }));
  }

  [[nodiscard]] Items FindAll(SearchScope scope, const detail::SearchTarget& target,
                              FilenameMatchingPolicy policy) const {
    Items items = path_->FindAllInScope(scope, target, policy);
    std::erase_if(items, [&](const FoundItem& item) { return IsMasked(*item.GetPathEntry()); });
    return items;
  }

  /// The path's first. If that is masked, the first item behind the first mask; if that is masked or there is none, the
  /// first item behind the second mask; and so on.
  [[nodiscard]] boost::optional<FoundItem> FindFirst(SearchScope scope, const detail::SearchTarget& target,
                                                     FilenameMatchingPolicy policy) const {
    const Items items = path_->FindAllInScope(scope, target, policy);
    if (items.empty()) return boost::none;
    if (!IsMasked(*items.front().GetPathEntry())) return items.front();
    for (const auto& mask : masked_) {
      for (const FoundItem& item : items) {
        if (PositionOf(*mask) >= PositionOf(*item.GetPathEntry())) continue;
        if (!IsMasked(*item.GetPathEntry())) return item;
        break;
      }
    }
    return boost::none;
  }

  [[nodiscard]] bool IsMasked(const IPathEntry& entry) const {
    if (!path_->IsEntryOnPath(entry)) return false;
    return std::find(masked_.begin(), masked_.end(), path_->GetMainEntryForEntry(entry)) != masked_.end();
  }
  [[nodiscard]] bool IsOnPath(const IPathEntry& entry) const { return path_->IsEntryOnPath(entry) && !IsMasked(entry); }
  [[nodiscard]] std::shared_ptr<const IPathEntry> EntryAt(const foundation::storage::vfs::AbsoluteIRI& location,
                                                          FilenameMatchingPolicy policy) const {
    const auto entry = path_->GetPathEntryFromAbsoluteIRI(location, policy);
    return entry && IsMasked(*entry) ? nullptr : entry;
  }

 private:
  [[nodiscard]] Entries Unmasked(Entries entries) const {
    std::erase_if(entries, [&](const auto& entry) { return IsMasked(*entry); });
    return entries;
  }

  /// Strangers stand behind all.
  [[nodiscard]] std::ptrdiff_t PositionOf(const IPathEntry& entry) const {
    if (!path_->IsEntryOnPath(entry)) return std::ssize(order_);
    return std::find(order_.begin(), order_.end(), path_->GetMainEntryForEntry(entry)) - order_.begin();
  }

  std::shared_ptr<const IPath> path_;
  Entries masked_;
  Entries main_;
  Entries order_;
};

}  // namespace Quorvex::PathManagement::oracle
