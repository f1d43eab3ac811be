#include <search_path_interfaces/found_item.hpp>

namespace Quorvex::PathManagement {
namespace {

bool AreEqualItems(const PathItem* left, const PathItem* right) {
  if (left == right) return true;
  if (left == nullptr || right == nullptr) return false;
  return left->baseName == right->baseName && left->extension == right->extension &&
         left->folderIRI == right->folderIRI;
}

}  // namespace

bool operator==(const FoundItem& left, const FoundItem& right) {
  return left.GetPathEntry() == right.GetPathEntry() &&
         AreEqualItems(left.GetPathItem().get(), right.GetPathItem().get());
}

}  // namespace Quorvex::PathManagement
