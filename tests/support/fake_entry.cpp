#include <algorithm>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_interfaces/constants.hpp>
#include <support/fake_entry.hpp>
#include <utility>

namespace Quorvex::PathManagement::support {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using FakeEntryPtr = std::shared_ptr<const FakeEntry>;

PathEntryType KindOf(const std::u16string& name) {
  if (name.starts_with(u'+')) return PathEntryType::Package;
  if (name.starts_with(u'@')) return PathEntryType::Class;
  if (name == Constants::PrivateFolderStr) return PathEntryType::Private;
  if (name == Constants::ResourcesFolderStr) return PathEntryType::Resources;
  return PathEntryType::Main;
}

std::u16string LowerCase(std::u16string text) {
  for (char16_t& unit : text) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + (u'a' - u'A'));
  }
  return text;
}

PathItem ItemOf(const std::u16string& fullName, const AbsoluteIRI& folder) {
  const std::u16string extension = fl::filesystem::detail::extract_extension(fullName);
  return {fullName.substr(0, fullName.size() - extension.size()), extension, folder};
}

EntryPtr FirstOrNull(const std::vector<FakeEntryPtr>& entries) { return entries.empty() ? nullptr : entries.front(); }

FakeEntry::EntryGroup GroupOf(const std::vector<FakeEntryPtr>& entries) {
  return std::make_shared<const std::vector<EntryPtr>>(entries.begin(), entries.end());
}

void SortByName(std::vector<FakeEntryPtr>& entries) {
  std::sort(entries.begin(), entries.end(), [](const FakeEntryPtr& left, const FakeEntryPtr& right) {
    return left->GetAbsoluteIRI().getName() < right->GetAbsoluteIRI().getName();
  });
}

}  // namespace

FakeEntryPtr FakeEntry::Create(const AbsoluteIRI& location, PathEntryType kind, const Folder& folder,
                               const FakeBehaviour& behaviour) {
  return FakeEntryPtr(new FakeEntry(location, kind, folder, behaviour));
}

FakeEntry::FakeEntry(const AbsoluteIRI& location, PathEntryType kind, const Folder& folder, FakeBehaviour behaviour)
    : location_(location), kind_(kind), behaviour_(std::move(behaviour)) {
  auto files = folder.GetFiles();
  std::sort(files.begin(), files.end());
  for (const std::u16string& file : files) items_.push_back(std::make_shared<const PathItem>(ItemOf(file, location_)));

  for (const Folder& subfolder : folder.GetSubfolders()) AddSubfolder(KindOf(subfolder.GetName()), subfolder);
  for (const Folder& subfolder : folder.GetAuxiliary()) AddSubfolder(PathEntryType::Auxiliary, subfolder);
  SortByName(classes_);
  SortByName(packages_);
  SortByName(auxiliary_);
}

void FakeEntry::AddSubfolder(PathEntryType kind, const Folder& folder) {
  if (kind == PathEntryType::Main) return;

  const auto entry = Create(location_.getChild(folder.GetName()), kind, folder, behaviour_);
  switch (kind) {
    case PathEntryType::Private:
      return private_.push_back(entry);
    case PathEntryType::Resources:
      return resources_.push_back(entry);
    case PathEntryType::Class:
      return classes_.push_back(entry);
    case PathEntryType::Package:
      return packages_.push_back(entry);
    default:
      return auxiliary_.push_back(entry);
  }
}

void FakeEntry::Note(Call call) const {
  if (!behaviour_.log) return;
  call.operation = fl::filesystem::to_bytes(location_.getPath()) + ' ' + call.operation;
  behaviour_.log->Note(std::move(call));
}

PathEntryType FakeEntry::GetEntryType() const { return kind_; }

std::shared_ptr<const FakeEntry::Items> FakeEntry::GetItems() const {
  Note({"GetItems"});
  return std::make_shared<const Items>(items_);
}

AbsoluteIRI FakeEntry::GetAbsoluteIRI() const { return location_; }

EntryPtr FakeEntry::GetPrivateEntry() const {
  Note({"GetPrivateEntry"});
  return FirstOrNull(private_);
}

EntryPtr FakeEntry::GetSecondSingleEntry() const { return FirstOrNull(resources_); }
FakeEntry::EntryGroup FakeEntry::GetFirstEntryGroup() const { return GroupOf(classes_); }
FakeEntry::EntryGroup FakeEntry::GetSecondEntryGroup() const { return GroupOf(packages_); }
FakeEntry::EntryGroup FakeEntry::GetThirdEntryGroup() const { return GroupOf(auxiliary_); }

// The items whose full name is wanted, in name order.
template <class IsWanted>
FakeEntry::Items FakeEntry::ItemsWhere(const IsWanted& isWanted) const {
  Items wanted;
  for (const auto& item : items_) {
    if (isWanted(item->baseName + item->extension)) wanted.push_back(item);
  }
  return wanted;
}

std::shared_ptr<const PathItem> FakeEntry::FindFirst(const detail::SearchTarget& target,
                                                     FilenameMatchingPolicy policy) const {
  Note({.operation = "FindFirst", .policy = policy, .target = &target});
  if (target.GetBaseName().empty()) return nullptr;
  for (const std::u16string& extension : target.GetExtensions()) {
    const std::u16string wanted = target.GetBaseName() + extension;
    const auto exact = ItemsWhere([&](const std::u16string& name) { return name == wanted; });
    if (!exact.empty()) return exact.front();
    const auto alike = ItemsWhere([&](const std::u16string& name) { return AreSame(wanted, name, policy); });
    if (!alike.empty()) return alike.front();
  }
  return nullptr;
}

FakeEntry::Items FakeEntry::FindAll(const detail::SearchTarget& target, FilenameMatchingPolicy policy) const {
  Items found;
  if (target.GetBaseName().empty()) return found;
  for (const std::u16string& extension : target.GetExtensions()) {
    const std::u16string wanted = target.GetBaseName() + extension;
    for (const auto& item : ItemsWhere([&](const std::u16string& name) { return AreSame(wanted, name, policy); })) {
      if (std::find(found.begin(), found.end(), item) == found.end()) found.push_back(item);
    }
  }
  return found;
}

bool FakeEntry::ForEachEntryInScope(SearchScope scope, const PathEntryCallback& callback) const {
  if (scope.Contains(kind_) && callback(shared_from_this())) return true;
  const Children children = GetChildren();
  return std::any_of(children.begin(), children.end(),
                     [&](const FakeEntryPtr& child) { return child->ForEachEntryInScope(scope, callback); });
}

std::shared_ptr<const FilenameComparator> FakeEntry::GetFilenameComparator(FilenameMatchingPolicy policy) const {
  Note({.operation = "GetFilenameComparator", .policy = policy});
  if (behaviour_.comparator) return *behaviour_.comparator;
  return std::make_shared<const FilenameComparator>(
      [self = shared_from_this(), policy](const std::u16string& wanted, const std::u16string& name) {
        return self->AreSame(wanted, name, policy);
      });
}

bool FakeEntry::AreSame(const std::u16string& wanted, const std::u16string& name, FilenameMatchingPolicy policy) const {
  const bool ignoresCase = policy == FilenameMatchingPolicy::CaseInsensitive ||
                           (policy != FilenameMatchingPolicy::CaseSensitive && behaviour_.ignoresCaseNatively);
  return ignoresCase ? LowerCase(wanted) == LowerCase(name) : wanted == name;
}

std::vector<FakeEntryPtr> FakeEntry::GetChildren() const {
  Children children;
  for (const Children* group : {&private_, &resources_, &classes_, &packages_, &auxiliary_}) {
    children.insert(children.end(), group->begin(), group->end());
  }
  return children;
}

}  // namespace Quorvex::PathManagement::support
