#pragma once

// What a folder on a path holds, said in one expression. The same description makes fakes, trees in memory and real
// folders.

#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathManagement::support {

/// `Folder("/a").WithFile("foo.vnx").WithClass(Folder("Cls").WithFile("foo.vnx"))`
///
/// Texts are UTF-8; names are as on disk. Files are full file names in any order.
class Folder {
 public:
  explicit Folder(std::string_view name);

  Folder& WithFile(std::string_view fullName);

  /// A subfolder whose name says what it is: "+pkg", "@Cls", "private", "resources", or a plain one, which is no entry.
  Folder& With(const Folder& subfolder);
  /// The same, with the mark put before the name.
  Folder& WithClass(const Folder& subfolder);
  Folder& WithPackage(const Folder& subfolder);
  /// An auxiliary folder, which no name reveals: only fakes have them.
  Folder& WithAuxiliary(const Folder& subfolder);

  [[nodiscard]] const std::u16string& GetName() const noexcept { return name_; }
  [[nodiscard]] const std::vector<std::u16string>& GetFiles() const noexcept { return files_; }
  [[nodiscard]] const std::vector<Folder>& GetSubfolders() const noexcept { return subfolders_; }
  [[nodiscard]] const std::vector<Folder>& GetAuxiliary() const noexcept { return auxiliary_; }

 private:
  [[nodiscard]] Folder MarkedWith(char16_t mark) const;

  std::u16string name_;
  std::vector<std::u16string> files_;
  std::vector<Folder> subfolders_;
  std::vector<Folder> auxiliary_;
};

}  // namespace Quorvex::PathManagement::support
