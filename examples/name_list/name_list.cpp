// Mounts a list of names, makes a path over it, counts what that asks, and lets storage fail.

#include <fakes/counting_storage_provider.hpp>
#include <fakes/failing_storage_provider.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iostream>
#include <search_path_environment/folder_entry_factory.hpp>
#include <search_path_environment/folder_path_factory.hpp>
#include <search_path_utilities/lookup.hpp>

#include "name_list_provider.hpp"

using fl::filesystem::to_displayed_text;
using foundation::storage::fakes::CountingStorageProvider;
using foundation::storage::fakes::FailingStorageProvider;
using foundation::storage::fakes::StorageOperation;
using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::VornixStorageSystem;
using namespace Quorvex::PathEnvironment;
using namespace Quorvex::PathManagement;

namespace {

std::shared_ptr<const FolderPath> ReadPath() {
  const FolderEntryFactory entries(VornixStorageSystem::GetStorageSystemReference());
  return FolderPathFactory().CreateFolderPath({AbsoluteIRI(u"list:///base"), AbsoluteIRI(u"list:///extras")}, entries);
}

std::string WhatGreetMeans(const IPath& path) {
  const std::u16string name = u"greet";
  const std::vector<std::u16string> extensions = {u".vnx"};
  const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
  const auto found = FindFirstFileVisibleOnPath(path, target, FilenameMatchingPolicy::Native);
  return found ? to_displayed_text(found->GetPathItem()->folderIRI.toString()) : "nothing";
}

void TellRefusal(const foundation::storage::vfs::IStorageProvider& storage, const AbsoluteIRI& folder) {
  try {
    storage.CheckFolder(folder);
    storage.CreateFolder(folder.getChild(u"new"));
  } catch (const foundation::storage::vfs::Exception& failure) {
    std::cout << failure.what() << '\n';
  }
}

}  // namespace

int main() {
  const auto list = std::make_shared<const name_list::NameListProvider>(
      std::vector<std::u16string>{u"/base/greet.vnx", u"/base/+geometry/area.vnx", u"/extras/greet.vnx"});

  TellRefusal(*list, AbsoluteIRI(u"list:///gone"));
  TellRefusal(*list, AbsoluteIRI(u"list:///base/greet.vnx/below"));
  TellRefusal(*list, AbsoluteIRI(u"list:///base"));

  const auto counting = std::make_shared<CountingStorageProvider>(list);
  const auto mount = VornixStorageSystem::Mount(u"list", counting);
  const auto path = ReadPath();
  std::cout << "listed: " << counting->GetCount(StorageOperation::List) << " folders\n";
  counting->Reset();
  std::cout << "greet: " << WhatGreetMeans(*path) << '\n';
  std::cout << "asked for that: " << counting->GetCount() << " calls\n";

  const auto failing = std::make_shared<FailingStorageProvider>(list);
  failing->Plan({.operation = StorageOperation::List, .location = AbsoluteIRI(u"list:///base")});
  const auto mountInFront = VornixStorageSystem::Mount(u"list", failing);
  const auto troubled = ReadPath();
  for (const PathProblem& problem : troubled->GetProblems()) {
    std::cout << to_displayed_text(problem.location.toString()) << ": " << ReasonOf(problem) << '\n';
  }
  std::cout << "greet: " << WhatGreetMeans(*troubled) << '\n';
}
