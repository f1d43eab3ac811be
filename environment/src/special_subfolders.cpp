#include "special_subfolders.hpp"

#include <algorithm>
#include <utility>

namespace Quorvex::PathEnvironment {

using PathManagement::PathEntryType;

namespace {

bool IsByName(const std::shared_ptr<const FolderEntry>& left, const std::shared_ptr<const FolderEntry>& right) {
  return left->GetLocation().getName() < right->GetLocation().getName();
}

}  // namespace

bool MayHold(PathEntryType outer, PathEntryType inner) noexcept {
  const bool isMainOrPackage = outer == PathEntryType::Main || outer == PathEntryType::Package;
  switch (inner) {
    case PathEntryType::Package:
    case PathEntryType::Class:
      return isMainOrPackage;
    case PathEntryType::Private:
    case PathEntryType::Resources:
      return isMainOrPackage || outer == PathEntryType::Class;
    default:
      return false;
  }
}

void Place(std::shared_ptr<const FolderEntry> entry, SpecialSubfolders& subfolders) {
  switch (entry->GetEntryType()) {
    case PathEntryType::Private:
      subfolders.privateEntry = std::move(entry);
      break;
    case PathEntryType::Resources:
      subfolders.resources = std::move(entry);
      break;
    case PathEntryType::Class:
      subfolders.classes.push_back(std::move(entry));
      break;
    default:
      subfolders.packages.push_back(std::move(entry));
  }
}

void SortByName(SpecialSubfolders& subfolders) {
  std::sort(subfolders.classes.begin(), subfolders.classes.end(), IsByName);
  std::sort(subfolders.packages.begin(), subfolders.packages.end(), IsByName);
}

}  // namespace Quorvex::PathEnvironment
