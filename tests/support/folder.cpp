#include <fl/filesystem/text_codec.hpp>
#include <support/folder.hpp>

namespace Quorvex::PathManagement::support {

Folder::Folder(std::string_view name) : name_(fl::filesystem::from_bytes(name)) {}

Folder& Folder::WithFile(std::string_view fullName) {
  files_.push_back(fl::filesystem::from_bytes(fullName));
  return *this;
}

Folder& Folder::With(const Folder& subfolder) {
  subfolders_.push_back(subfolder);
  return *this;
}

Folder& Folder::WithClass(const Folder& subfolder) { return With(subfolder.MarkedWith(u'@')); }
Folder& Folder::WithPackage(const Folder& subfolder) { return With(subfolder.MarkedWith(u'+')); }

Folder& Folder::WithAuxiliary(const Folder& subfolder) {
  auxiliary_.push_back(subfolder);
  return *this;
}

Folder Folder::MarkedWith(char16_t mark) const {
  Folder marked = *this;
  marked.name_.insert(marked.name_.begin(), mark);
  return marked;
}

}  // namespace Quorvex::PathManagement::support
