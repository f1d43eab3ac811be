#include <fl/filesystem/displayed_text.hpp>
#include <ostream>
#include <search_path_environment/folder_entry_factory.hpp>
#include <utility>

#include "alive_entries.hpp"
#include "folder_reader.hpp"

namespace Quorvex::PathEnvironment {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::StorageSystemReference;

namespace {

void WriteFolder(std::ostream& out, const FolderEntry& entry) {
  out << "folder " << fl::filesystem::to_displayed_text(entry.GetAbsoluteIRI().toString()) << '\n';
  const auto items = entry.GetItems();  // nobody else may hold them
  for (const auto& item : *items) {
    out << "file " << fl::filesystem::to_displayed_text(item->baseName + item->extension) << '\n';
  }
  for (const auto& child : entry.GetChildren()) WriteFolder(out, *child);
}

}  // namespace

FolderEntryFactory::FolderEntryFactory(StorageSystemReference storage)
    : storage_(std::move(storage)), alive_(std::make_shared<AliveEntries>()) {}

FolderEntryFactory::FolderEntryFactory(StorageSystemReference storage, const FolderPath& predecessor)
    : FolderEntryFactory(std::move(storage)) {
  const auto entries = predecessor.GetMainEntries();
  for (const auto& entry : *entries) alive_->Settle(std::static_pointer_cast<const FolderEntry>(entry));
}

FolderEntryFactory::~FolderEntryFactory() = default;

std::shared_ptr<const PathManagement::IPathEntry> FolderEntryFactory::CreateMainEntry(const AbsoluteIRI& folder) const {
  return alive_->Settle(ReadMainFolder(folder, storage_, alive_->Find(folder).get()));
}

void FolderEntryFactory::WriteToolboxCache(std::ostream& out, const AbsoluteIRI& toolboxRoot) const {
  WriteFolder(out, *ReadMainFolder(toolboxRoot, storage_, nullptr));
}

}  // namespace Quorvex::PathEnvironment
