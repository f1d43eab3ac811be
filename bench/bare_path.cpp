#include "bare_path.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;
using Quorvex::PathManagement::FilenameComparator;
using Quorvex::PathManagement::FilenameMatchingPolicy;
using Quorvex::PathManagement::FoundItem;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::IPathEntry;
using Quorvex::PathManagement::PathEntryCallback;
using Quorvex::PathManagement::PathEntryType;
using Quorvex::PathManagement::PathItem;
using Quorvex::PathManagement::SearchScope;
using Quorvex::PathManagement::detail::SearchTarget;

class BareEntry final : public IPathEntry {
 public:
  using Group = std::shared_ptr<const Entries>;
  using Items = std::shared_ptr<const std::vector<std::shared_ptr<const PathItem>>>;

  explicit BareEntry(AbsoluteIRI location) : location_(std::move(location)) {}

  [[nodiscard]] PathEntryType GetEntryType() const override { return PathEntryType::Main; }
  [[nodiscard]] Items GetItems() const override { return std::make_shared<Items::element_type>(); }
  [[nodiscard]] AbsoluteIRI GetAbsoluteIRI() const override { return location_; }
  [[nodiscard]] EntryPtr GetPrivateEntry() const override { return nullptr; }
  [[nodiscard]] EntryPtr GetSecondSingleEntry() const override { return nullptr; }
  [[nodiscard]] Group GetFirstEntryGroup() const override { return NoEntries(); }
  [[nodiscard]] Group GetSecondEntryGroup() const override { return NoEntries(); }
  [[nodiscard]] Group GetThirdEntryGroup() const override { return NoEntries(); }
  [[nodiscard]] std::shared_ptr<const PathItem> FindFirst(const SearchTarget& /*target*/,
                                                          FilenameMatchingPolicy /*policy*/) const override {
    return nullptr;
  }
  bool ForEachEntryInScope(SearchScope /*scope*/, const PathEntryCallback& /*callback*/) const override {
    return false;
  }
  [[nodiscard]] std::shared_ptr<const FilenameComparator> GetFilenameComparator(
      FilenameMatchingPolicy /*policy*/) const override {
    return nullptr;
  }

 private:
  static const Group& NoEntries() {
    static const Group none = std::make_shared<const Entries>();
    return none;
  }

  AbsoluteIRI location_;
};

class BarePath final : public IPath {
 public:
  explicit BarePath(Entries entries) : entries_(std::make_shared<const Entries>(std::move(entries))) {}

  [[nodiscard]] std::shared_ptr<const Entries> GetMainEntries() const override { return entries_; }
  [[nodiscard]] Entries GetMethodEntries() const override { return {}; }
  [[nodiscard]] Entries GetMethodEntriesByName(SearchScope /*scope*/, const std::u16string& /*name*/,
                                               FilenameMatchingPolicy /*policy*/) const override {
    return {};
  }
  [[nodiscard]] Entries GetPartiallyMatchingEntries(SearchScope /*scope*/, const std::u16string& /*partial*/,
                                                    FilenameMatchingPolicy /*policy*/) const override {
    return {};
  }
  [[nodiscard]] EntryPtr GetMainEntryForEntry(const IPathEntry& /*entry*/) const override { return nullptr; }
  [[nodiscard]] EntryPtr GetParentEntryForEntry(const IPathEntry& /*entry*/) const override { return nullptr; }
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const AbsoluteIRI& /*location*/,
                                                     FilenameMatchingPolicy /*policy*/) const override {
    return nullptr;
  }
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& /*location*/) const override {
    return nullptr;
  }
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(SearchScope /*scope*/, const SearchTarget& /*target*/,
                                                            FilenameMatchingPolicy /*policy*/) const override {
    return boost::none;
  }
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope /*scope*/, const SearchTarget& /*target*/,
                                                      FilenameMatchingPolicy /*policy*/) const override {
    return {};
  }
  bool ForEachEntry(SearchScope /*scope*/, const PathEntryCallback& /*callback*/) const override { return false; }
  bool ConcurrentForEachEntry(SearchScope /*scope*/, const PathEntryCallback& /*callback*/) const override {
    return false;
  }
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& /*first*/,
                                                    const IPathEntry& /*second*/) const override {
    return false;
  }
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& /*entry*/) const override { return false; }

 private:
  std::shared_ptr<const Entries> entries_;
};

}  // namespace

EntryPtr BareEntryAt(const AbsoluteIRI& location) { return std::make_shared<const BareEntry>(location); }

std::shared_ptr<const IPath> BarePathOver(Entries entries) {
  return std::make_shared<const BarePath>(std::move(entries));
}

}  // namespace bench
