// Of the near files, the likeliest, each with a name that means it.

#include "near_names.hpp"

#include <map>

#include "entry_ptr.hpp"
#include "extension_list.hpp"
#include "file_location.hpp"
#include "looked_for.hpp"
#include "near_files.hpp"
#include "visible_files.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;
using Quorvex::PathManagement::IPath;
using Quorvex::PathManagement::PathEntryType;

// More would only bury the likely ones.
constexpr std::size_t kToldAtMost = 10;
constexpr std::size_t kOfOneKindFirst = 3;

std::vector<NearFile> LikeliestOf(const std::vector<NearFile>& files) {
  std::vector<bool> isTaken(files.size(), false);
  std::map<std::vector<Obstacle>, std::size_t> takenOfKind;
  std::size_t taken = 0;
  for (const std::size_t limit : {kOfOneKindFirst, kToldAtMost}) {
    for (std::size_t i = 0; i < files.size() && taken < kToldAtMost; ++i) {
      if (isTaken[i] || takenOfKind[files[i].obstacles] >= limit) continue;
      isTaken[i] = true;
      ++takenOfKind[files[i].obstacles];
      ++taken;
    }
  }
  std::vector<NearFile> likeliest;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (isTaken[i]) likeliest.push_back(files[i]);
  }
  return likeliest;
}

// The names of the special folders from the folder of the path down to `entry`, marks left out: "geometry/Point/".
std::u16string FoldersWithinPath(const IPath& path, EntryPtr entry) {
  std::u16string folders;
  for (EntryPtr parent; (parent = path.GetParentEntryForEntry(*entry)); entry = parent) {
    const std::u16string name = entry->GetAbsoluteIRI().getName();
    const bool isMarked =
        entry->GetEntryType() == PathEntryType::Package || entry->GetEntryType() == PathEntryType::Class;
    folders.insert(0, name.substr(isMarked ? 1 : 0) + u'/');
  }
  return folders;
}

/// Finds names for near files.
class Naming {
 public:
  Naming(const IPath& path, const Standpoint& standpoint, const Question& question)
      : path_(path), standpoint_(standpoint), question_(question) {}

  NearName operator()(const NearFile& near) const {
    NearName name{near.obstacles, near.location, near.number, {}, boost::none};
    if (!near.file) return name;
    if (near.file->GetPathEntry()->GetEntryType() != PathEntryType::Private) {
      NameFrom(standpoint_, WaysToWrite(near), name);
      return name;
    }
    const auto item = near.file->GetPathItem();
    const AbsoluteIRI folder = path_.GetParentEntryForEntry(*near.file->GetPathEntry())->GetAbsoluteIRI();
    NameFrom({path_, folder, standpoint_.policy}, {item->baseName, item->baseName + item->extension}, name);
    if (!name.otherName.empty()) name.askFrom = folder;
    return name;
  }

 private:
  // No more folders than are needed, and the extension only where it must be; a last resort is to name the folder of
  // the path, too.
  std::vector<std::u16string> WaysToWrite(const NearFile& near) const {
    const auto item = near.file->GetPathItem();
    const EntryPtr entry = near.file->GetPathEntry();
    const std::u16string folders = FoldersWithinPath(path_, entry);
    const std::u16string fromFolderOfPath =
        path_.GetMainEntryForEntry(*entry)->GetAbsoluteIRI().getName() + u'/' + folders;
    std::vector<std::u16string> names;
    for (const std::u16string& front : {std::u16string(), folders, fromFolderOfPath}) {
      names.push_back(front + item->baseName);
      names.push_back(front + item->baseName + item->extension);
    }
    return names;
  }

  static void NameFrom(const Standpoint& standpoint, const std::vector<std::u16string>& names,
                       const std::vector<std::u16string>& extensions, NearName& near) {
    for (const std::u16string& name : names) {
      const Question question{name, extensions};
      const auto found = FindVisibleFile(standpoint, question.Target());
      if (!found || LocationOf(*found) != near.location) continue;
      near.otherName = name;
      return;
    }
  }

  void NameFrom(const Standpoint& standpoint, const std::vector<std::u16string>& names, NearName& near) const {
    NameFrom(standpoint, names, question_.extensions, near);
    if (!near.otherName.empty()) return;
    NameFrom(standpoint, names, ExtensionsFromText({}), near);
    near.needsNoExtension = !near.otherName.empty();
  }

  const IPath& path_;
  const Standpoint& standpoint_;
  const Question& question_;
};

}  // namespace

NearNames FindNearNames(const LoadedPath& path, const Standpoint& standpoint, const Question& question,
                        const FolderNumbers& numbers) {
  const std::vector<NearFile> files = FindNearFiles(path, standpoint, question, numbers);
  const Naming named(path.GetView(), standpoint, question);
  NearNames near{{}, 0};
  for (const NearFile& file : LikeliestOf(files)) near.likeliest.push_back(named(file));
  near.further = files.size() - near.likeliest.size();
  return near;
}

}  // namespace vornixpath
