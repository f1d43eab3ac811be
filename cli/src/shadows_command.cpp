// Every name that more than one folder of the path offers, and how grave that is.

#include <algorithm>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <search_path_environment/location_from_text.hpp>
#include <stdexcept>

#include "commands.hpp"
#include "current_folder.hpp"
#include "extension_list.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "output.hpp"
#include "path_source.hpp"
#include "path_troubles.hpp"
#include "shadow_baseline_file.hpp"
#include "shadows_report.hpp"
#include "unread_files.hpp"
#include "unread_folder.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;

// `verb` is what cannot be done with a malformed one.
AbsoluteIRI LocationOfBaseline(const std::string& verb, const std::string& name) {
  const std::u16string text = fl::filesystem::from_bytes(name);
  try {
    return Quorvex::PathEnvironment::LocationFromText(text, CurrentFolder());
  } catch (const foundation::storage::vfs::Exception& failure) {
    throw std::runtime_error("cannot " + verb + " the baseline " + Quoted(text) + ": " + failure.what());
  }
}

// Whether it was written. What could not be read would be missing in it, or stand in it under a grade that is made up.
bool WriteNewBaseline(const std::string& name, const std::vector<ShadowPair>& pairs, bool isAllRead) {
  const AbsoluteIRI file = LocationOfBaseline("write", name);
  if (isAllRead) {
    WriteBaseline(AcceptedFor(pairs), file);
  } else {
    WriteMessage("cannot write the baseline " + Quoted(TextOf(file)) + ": not everything on the path could be read");
  }
  return isAllRead;
}

void TellEffect(const BaselineEffect& effect) {
  const std::size_t gone = effect.gone.size();
  WriteMessage("the baseline leaves out " + Counted(effect.leftOut, "finding") + "; " + std::to_string(gone) +
               " of its entries no longer occur" + (gone == 1 ? "s" : ""));
}

bool IsAny(ShadowGrade least, const std::vector<ShadowPair>& pairs) {
  return std::any_of(pairs.begin(), pairs.end(), [&](const ShadowPair& pair) {
    return std::any_of(pair.shadows.begin(), pair.shadows.end(),
                       [&](const GradedShadow& shadow) { return shadow.grade >= least; });
  });
}

}  // namespace

ExitStatus RunShadows(const ShadowsOptions& options) {
  std::optional<AcceptedShadows> accepted;
  if (options.baseline) accepted = ReadBaseline(LocationOfBaseline("use", *options.baseline));

  const LoadedPath path = LoadPath(options.path);
  ShadowsReport report{{}, TroublesOf(path), std::nullopt};
  Warn(report.problems);
  const auto extensions = ExtensionsFromText(fl::filesystem::from_bytes(options.extensions));
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  report.pairs =
      PairsOf(GradedShadowsOf(path.GetView(), extensions, storage), path.GetView(), FolderNumbers(path.GetLeaf()));
  const bool isAnyUnread = WarnOfUnreadFiles(report.pairs);

  const bool isAllRead = !isAnyUnread && UnreadFoldersOf(path).empty();
  const bool isAllWritten = !options.newBaseline || WriteNewBaseline(*options.newBaseline, report.pairs, isAllRead);
  if (accepted) {
    report.baseline = LeaveOut(SpelledAsOn(path, *accepted), report.pairs);
    TellEffect(*report.baseline);
  }
  if (options.json) {
    WriteAsJson(report);
  } else {
    WriteAsLines(report);
  }
  if (options.strict && (isAnyUnread || !report.problems.empty())) return ExitStatus::Incomplete;
  if (!isAllWritten) return ExitStatus::CouldNotWork;
  return options.failOn && IsAny(*options.failOn, report.pairs) ? ExitStatus::No : ExitStatus::Yes;
}

}  // namespace vornixpath
