#include "random_disk.hpp"

#include <fstream>
#include <system_error>

namespace Quorvex::PathManagement::support {

namespace fs = std::filesystem;

namespace {

// Few, so that the same ones come and go.
const std::vector<std::string> kFiles = {"a.x", "b.x", "c.y", "noextension", ".hidden", "a.b.x"};
const std::vector<std::string> kSpecial = {"+p", "+q", "@A", "@B", "private", "resources", "plain", "+dot.ted"};
const std::vector<std::string> kElsewhere = {"one", "two", "three"};

void MakeFile(const fs::path& file) { const std::ofstream made(file); }

void MakeFolder(const fs::path& folder) {
  std::error_code ignored;  // it is there, or cannot be: both will do
  fs::create_directories(folder, ignored);
}
void Remove(const fs::path& place) {
  std::error_code ignored;
  fs::remove_all(place, ignored);
}
void Rename(const fs::path& from, const fs::path& to) {
  std::error_code ignored;
  fs::rename(from, to, ignored);
}

// In one step, as careful people do, or in two.
void PointLink(const fs::path& link, const fs::path& target, bool atOnce) {
  std::error_code ignored;
  if (atOnce) {
    const fs::path draft = link.string() + ".draft";
    fs::create_symlink(target, draft, ignored);
    fs::rename(draft, link, ignored);
    fs::remove(draft, ignored);
  } else {
    fs::remove(link, ignored);
    fs::create_symlink(target, link, ignored);
  }
}

}  // namespace

RandomDisk::RandomDisk(RandomSource& random) : random_(random) {
  const Path& root = root_.GetPath();
  main_ = {root / "m0",          root / "m1", root / "up" / "deep" / "m2",
           root / "link" / "m3", root / "m4", root / "up" / "m5"};
  for (const std::string& name : kElsewhere) {
    MakeFolder(root / "elsewhere" / name / "m3");
    MakeFolder(root / "elsewhere" / name / "+inner");
    MakeFile(root / "elsewhere" / name / "m3" / (name + ".x"));
    MakeFile(root / "elsewhere" / name / "+inner" / "i.x");
    MakeFile(root / "elsewhere" / name / "file.x");
  }
  PointLink(root / "link", root / "elsewhere" / "one", true);
  PointLink(root / "m4", "elsewhere/two", true);
  for (const Path& folder : main_) Fill(folder);
}

void RandomDisk::Change() {
  const std::size_t kind = random_.Below(100);
  if (kind < 50) return ChangeFile();
  if (kind < 55) return ChangeLinkToFile();
  if (kind < 80) return ChangeSpecialFolder();
  if (kind < 87) return ChangeLinkToSpecialFolder();
  if (kind < 93) return ChangeMainFolder();
  if (kind < 96) return ChangeAncestor();
  ChangeLinkOnTheWay();
}

void RandomDisk::Flood(std::size_t files) {
  const Path folder = RandomFolder();
  MakeFolder(folder);
  for (std::size_t number = 0; number < files; ++number) {
    const Path file = folder / ("flood" + std::to_string(number) + ".x");
    MakeFile(file);
    if (number % 1000 != 0) Remove(file);
  }
}

RandomDisk::Path RandomDisk::RandomFolder() {
  Path folder = random_.Pick(main_);
  for (std::size_t depth = random_.Below(4); depth > 0; --depth) folder /= random_.Pick(kSpecial);
  return folder;
}

RandomDisk::Path RandomDisk::RandomFile() { return RandomFolder() / random_.Pick(kFiles); }

RandomDisk::Path RandomDisk::RandomSpecialFolder() { return RandomFolder() / random_.Pick(kSpecial); }

void RandomDisk::ChangeFile() {
  switch (random_.Below(4)) {
    case 0:
      return Remove(RandomFile());
    case 1:
      return Rename(RandomFile(), RandomFile());
    default:
      return MakeFile(RandomFile());
  }
}

// What such a link leads to comes and goes without the link's folder being touched.
void RandomDisk::ChangeLinkToFile() {
  const Path target = root_.GetPath() / "elsewhere" / random_.Pick(kElsewhere) / "file.x";
  switch (random_.Below(4)) {
    case 0:
      return Remove(target);
    case 1:
      return MakeFile(target);
    case 2:
      return PointLink(RandomFolder() / "linked.x", target, random_.OneIn(2));
    default:
      return Remove(RandomFolder() / "linked.x");
  }
}

void RandomDisk::ChangeSpecialFolder() {
  const Path folder = RandomSpecialFolder();
  switch (random_.Below(6)) {
    case 0:
      return Remove(folder);
    case 1:
      return Rename(folder, RandomSpecialFolder());
    case 2:  // made, filled and made again faster than anyone can look
      Remove(folder);
      Fill(folder);
      return;
    case 3:  // made elsewhere and moved in
      Fill(root_.GetPath() / "draft");
      Rename(root_.GetPath() / "draft", folder);
      return Remove(root_.GetPath() / "draft");
    default:
      return Fill(folder);
  }
}

void RandomDisk::ChangeLinkToSpecialFolder() {
  const Path target = root_.GetPath() / "elsewhere" / random_.Pick(kElsewhere) / "+inner";
  switch (random_.Below(5)) {
    case 0:
      return Remove(target);
    case 1:
      return Fill(target);
    case 2:
      return Remove(RandomFolder() / "+linked");
    default:
      return PointLink(RandomFolder() / "+linked", target, random_.OneIn(2));
  }
}

void RandomDisk::ChangeMainFolder() {
  const Path& folder = random_.Pick(main_);
  switch (random_.Below(5)) {
    case 0:
      return Remove(folder);
    case 1:
      return Rename(folder, random_.Pick(main_));
    case 2:
      Remove(folder);
      return Fill(folder);
    case 3:  // a file in its place
      Remove(folder);
      return MakeFile(folder);
    default:
      return Fill(folder);
  }
}

void RandomDisk::ChangeAncestor() {
  const Path ancestor = root_.GetPath() / (random_.OneIn(2) ? Path("up") : Path("up") / "deep");
  const Path away = root_.GetPath() / "away";
  switch (random_.Below(4)) {
    case 0:
      return Rename(ancestor, away);
    case 1:
      return Remove(ancestor);
    default:
      Rename(away, ancestor);
      return Remove(away);
  }
}

void RandomDisk::ChangeLinkOnTheWay() {
  const Path& root = root_.GetPath();
  const Path target = Path("elsewhere") / random_.Pick(kElsewhere);
  switch (random_.Below(4)) {
    case 0:
      return PointLink(root / "m4", target, random_.OneIn(2));
    case 1:
      return Rename(root / target, root / "elsewhere" / random_.Pick(kElsewhere));
    case 2:
      return Fill(root / target / "m3");
    default:
      return PointLink(root / "link", root / target, random_.OneIn(2));
  }
}

// With some files and special folders, in depth.
void RandomDisk::Fill(const Path& folder) {
  MakeFolder(folder);
  MakeFile(folder / random_.Pick(kFiles));
  MakeFile(folder / random_.Pick(kFiles));
  if (random_.OneIn(2)) Fill(folder / random_.Pick(kSpecial));
}

}  // namespace Quorvex::PathManagement::support
