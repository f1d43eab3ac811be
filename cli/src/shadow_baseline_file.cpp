#include "shadow_baseline_file.hpp"

#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/whole_file.hpp>
#include <stdexcept>
#include <utility>

#include "folders_below.hpp"
#include "kind_at.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "storage_failure.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::Exception;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;

namespace {

// Calls `work`; what it throws is told as a failure to `verb` the baseline.
template <class Work>
auto Named(const std::string& verb, const AbsoluteIRI& file, const Work& work) {
  const auto cannot = [&](const std::string& reason) {
    return std::runtime_error("cannot " + verb + " the baseline " + Quoted(TextOf(file)) + ": " + reason);
  };
  try {
    return work();
  } catch (const Exception& failure) {
    throw cannot(ReasonOf(failure));
  } catch (const std::runtime_error& failure) {
    throw cannot(failure.what());
  }
}

// A device or a FIFO is not even opened.
std::optional<std::string> BytesOf(const IStorageProvider& storage, const AbsoluteIRI& file) {
  const bool isFileOrNothing = KindAt(storage, file).value_or(FileKind::File) == FileKind::File;
  if (!isFileOrNothing) throw std::runtime_error("it is no regular file");
  return Quorvex::PathEnvironment::ReadWholeFile(storage, file);
}

// A slip of the keyboard must not cost somebody's file.
void RequireBaselineOrNothing(const std::optional<std::string>& old) {
  if (!old || old->empty() || BeginsLikeABaseline(*old)) return;
  throw std::runtime_error("something that is no baseline stands there");
}

AcceptedShadows SpelledFrom(const AbsoluteIRI& folder, const AcceptedShadows& shadows) {
  FoldersBelow spelled(folder);
  AcceptedShadows accepted;
  for (AcceptedShadow shadow : shadows) {
    shadow.hiding = spelled(shadow.hiding);
    shadow.hidden = spelled(shadow.hidden);
    accepted.insert(std::move(shadow));
  }
  return accepted;
}

}  // namespace

AcceptedShadows ReadBaseline(const AbsoluteIRI& file) {
  return Named("use", file, [&file] {
    const auto storage = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file);
    const auto text = BytesOf(*storage, file);
    if (!text) throw std::runtime_error("there is no such file");
    return ParseBaseline(*text, storage->CanonicalLocation(file).getParent());
  });
}

void WriteBaseline(const AcceptedShadows& shadows, const AbsoluteIRI& file) {
  Named("write", file, [&] {
    const auto storage = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file);
    if (Quorvex::PathEnvironment::IsLinkToNowhere(*storage, file)) {
      throw std::runtime_error("it is a link that leads nowhere");
    }
    const AbsoluteIRI place = storage->CanonicalLocation(file);
    RequireBaselineOrNothing(BytesOf(*storage, place));
    const std::string text = BaselineText(SpelledFrom(place.getParent(), shadows), place.getParent());
    Quorvex::PathEnvironment::ReplaceWholeFile(*storage, place, {text}, Quorvex::PathEnvironment::Durability::Whole);
  });
}

}  // namespace vornixpath
