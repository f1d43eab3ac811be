#include <search_path_environment/main_search_path_manager.hpp>
#include <search_path_environment/utc_time.hpp>

#include "commands.hpp"
#include "edit_kind.hpp"
#include "output.hpp"
#include "session.hpp"

namespace vornixpath {

ExitStatus RunUndo(const UndoOptions& options) {
  Quorvex::PathEnvironment::MainSearchPathManager manager(SessionFile(options.session));
  const auto takenBack = manager.Undo();
  if (!takenBack) {
    WriteMessage("there is no edit to take back");
    return ExitStatus::No;
  }
  const std::string time = Quorvex::PathEnvironment::ToText(takenBack->time);
  WriteSafeResult("took back the " + std::string(NameOf(takenBack->kind)) + " of " + time, OutputForm::Lines);
  return ExitStatus::Yes;
}

}  // namespace vornixpath
