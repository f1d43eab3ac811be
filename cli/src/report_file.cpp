#include "report_file.hpp"

#include <array>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/whole_file.hpp>
#include <span>
#include <stdexcept>

#include "kind_at.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::FileKind;
using foundation::storage::vfs::IStorageProvider;
using foundation::storage::vfs::VornixStorageSystem;

namespace {

// As long as that of a page, if there is as much.
std::string BeginningOf(const IStorageProvider& storage, const AbsoluteIRI& file) {
  std::array<char, kReportBeginning.size()> bytes = {};
  const auto reader = storage.OpenForReading(file);
  std::size_t size = 0;
  for (std::size_t count = 1; count > 0 && size < bytes.size(); size += count) {
    count = reader->Read(std::as_writable_bytes(std::span(bytes).subspan(size)));
  }
  return {bytes.data(), size};
}

}  // namespace

// A slip of the keyboard must not cost somebody's file.
void RequireReportOrNothing(const AbsoluteIRI& file) {
  const auto storage = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file);
  if (KindAt(*storage, file) != FileKind::File) return;  // whoever replaces it refuses what is there and no file
  const std::string beginning = BeginningOf(*storage, file);
  if (beginning.empty() || beginning == kReportBeginning) return;
  throw std::runtime_error("cannot replace " + Quoted(TextOf(file)) + ": it is no report");
}

void WriteReport(const AbsoluteIRI& file, std::string_view page) {
  RequireReportOrNothing(file);
  const auto storage = VornixStorageSystem::GetStorageSystemReference().ProviderFor(file);
  Quorvex::PathEnvironment::ReplaceWholeFile(*storage, file, {page}, Quorvex::PathEnvironment::Durability::Whole);
}

}  // namespace vornixpath
