#include <storage/filefolderobserver/file_folder_changed_event.hpp>
#include <utility>

namespace storage::filefolderobserver {

FileFolderChangedEvent::FileFolderChangedEvent(std::u16string path, FrozenInclusion frozenInclusion)
    : path_(std::move(path)), frozenInclusion_(frozenInclusion) {}

FileFolderChangedEvent::~FileFolderChangedEvent() = default;

FileFolderChangedEvent* FileFolderChangedEvent::clone() const { return new FileFolderChangedEvent(*this); }

}  // namespace storage::filefolderobserver
