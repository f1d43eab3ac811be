// What an edit of a long saved path costs, as people run it: a process of the tool, beside the least that any tool
// would have to do with that file.

#include <filesystem>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <fstream>
#include <functional>
#include <search_path_environment/saved_path_text.hpp>
#include <string>
#include <vector>

#include "cases.hpp"
#include "compared.hpp"
#include "process.hpp"
#include "real_tree.hpp"

namespace bench {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathEnvironment::SavedPathText;

constexpr double kLimit = 2.0;
constexpr std::size_t kFolders = 100'000;

const std::vector<std::string>& EditedFolders() {
  static const std::vector<std::string> folders = EmptyFolders(kFolders);
  return folders;
}

std::string NameOfSavedPath() { return std::filesystem::path(EditedFolders().front()).parent_path() / "path"; }

// The saved path over all the folders, anew.
const std::string& FreshSavedPath() {
  static const std::string name = NameOfSavedPath();
  SavedPathText::Folders folders;
  for (const std::string& folder : EditedFolders()) {
    folders.emplace_back(u"file://" + std::u16string(folder.begin(), folder.end()));
  }
  std::ofstream(name) << SavedPathText().WithFolders(folders).ToBytes();
  return name;
}

// What a process that does nothing else with the saved path needs for that.
std::function<void(benchmark::State&)> Bare(const std::string& work) {
  return [work](benchmark::State& state) {
    const std::string name = FreshSavedPath();
    for (auto unused : state) {
      static_cast<void>(unused);
      Run({BARE_EDIT, work, name});
    }
  };
}

// Each run edits another folder, one that stands in the middle of the path.
std::function<void(benchmark::State&)> Editing(const std::string& command) {
  return [command](benchmark::State& state) {
    const std::string name = FreshSavedPath();
    std::size_t next = kFolders / 2;
    for (auto unused : state) {
      static_cast<void>(unused);
      Run({TOOL, command, "--session", name, EditedFolders().at(next++)});
    }
  };
}

void Listing(benchmark::State& state) {
  const std::string name = FreshSavedPath();
  for (auto unused : state) {
    static_cast<void>(unused);
    Run({TOOL, "path", "--session", name});
  }
}

}  // namespace

void RegisterEditing() {
  Compare("edit/add one to 100000 folders", kLimit, Bare("edit"), Editing("add"));
  Compare("edit/remove one of 100000 folders", kLimit, Bare("edit"), Editing("remove"));
  Compare("edit/list 100000 folders", kLimit, Bare("list"), Listing);
}

}  // namespace bench
