// A page about a path, for a browser.

#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/folder_entry_factory.hpp>

#include "commands.hpp"
#include "extension_list.hpp"
#include "location_argument.hpp"
#include "path_findings.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "report_file.hpp"
#include "report_page.hpp"
#include "unread_files.hpp"

namespace vornixpath {

ExitStatus RunReport(const ReportOptions& options, const SteadyClock& clock) {
  const auto file = LocationFromArgument(options.file);
  RequireReportOrNothing(file);  // before a long path is read
  const Packages packages = PackagesFor(options.path);
  const Quorvex::PathEnvironment::FolderEntryFactory reading(
      foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference());
  const TimedEntryFactory entries(reading, clock);
  const LoadedPath path = LoadPathThrough(entries, options.path, FoldersOf(packages));

  const FolderNumbers numbers(path.GetLeaf());
  const ExaminedPath examined{path.GetView(), numbers,
                              ExtensionsFromText(fl::filesystem::from_bytes(options.extensions))};
  const auto troubles = TroublesOf(path);
  Warn(troubles);
  const std::vector<ShadowPair> shadows = ShadowsOf(examined);
  const bool isAnyUnread = WarnOfUnreadFiles(shadows);

  const KnownPath known{path, examined, troubles, shadows};
  WriteReport(file, PageOf({OriginOf(options.path).words, FindingsOf(known, RemovalFor(options.path, path, packages)),
                            LadderOf(known), shadows, NamesOf(known), SlowestOf(path, entries)}));
  const bool isIncomplete = isAnyUnread || !troubles.empty() || AnyInDoubt(packages);
  return options.strict && isIncomplete ? ExitStatus::Incomplete : ExitStatus::Yes;
}

}  // namespace vornixpath
