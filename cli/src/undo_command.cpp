#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_environment/utc_time.hpp>

#include "commands.hpp"
#include "edit_kind.hpp"
#include "output.hpp"
#include "session.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::MainSearchPathManager;
using Quorvex::PathEnvironment::PathVersion;
using Quorvex::PathEnvironment::SavedPathFile;

// What was taken back. Within one edit, so that nobody else's comes between the look at it and its end.
std::optional<PathVersion> TakeBackLastEdit(const SavedPathFile& session) {
  MainSearchPathManager manager(session);
  std::optional<PathVersion> takenBack;
  manager.Edit([&] {
    const std::vector<PathVersion> versions = session.GetVersions();
    const PathVersion* const last = SavedPathFile::VersionToUndo(versions);
    if (last != nullptr && manager.Undo()) takenBack = *last;
  });
  return takenBack;
}

}  // namespace

ExitStatus RunUndo(const UndoOptions& options) {
  const std::optional<PathVersion> takenBack = TakeBackLastEdit(SessionFile(options.session));
  if (!takenBack) {
    WriteMessage("there is no edit to take back");
    return ExitStatus::No;
  }
  const std::string time = Quorvex::PathEnvironment::ToText(takenBack->time);
  WriteSafeResult("took back the " + std::string(NameOf(takenBack->kind)) + " of " + time, OutputForm::Lines);
  return ExitStatus::Yes;
}

}  // namespace vornixpath
