// A saved path from any bytes: it is understood or refused with a line, and what is understood is written so that it is
// understood alike, comments included.
#include <cstddef>
#include <cstdint>
#include <search_path_environment/saved_path_error.hpp>
#include <search_path_environment/saved_path_text.hpp>
#include <string>
#include <string_view>

#include "require.hpp"

namespace {

using Quorvex::PathEnvironment::SavedPathError;
using Quorvex::PathEnvironment::SavedPathText;

void CheckWriting(const SavedPathText& path) {
  const std::string written = path.ToBytes();
  const SavedPathText again = SavedPathText::Parse(written);
  Require(again.GetFolders() == path.GetFolders());
  Require(again.ToBytes() == written);
}

void CheckChanging(const SavedPathText& path) {
  SavedPathText::Folders folders(path.GetFolders().rbegin(), path.GetFolders().rend());
  if (!folders.empty()) folders.pop_back();
  const SavedPathText changed = path.WithFolders(folders);
  Require(changed.GetFolders() == folders);
  CheckWriting(changed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const SavedPathText path = SavedPathText::Parse(bytes);
    CheckWriting(path);
    CheckChanging(path);
  } catch (const SavedPathError& error) {
    Require(error.GetLine() >= 1);
  }
  return 0;
}
