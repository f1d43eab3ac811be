#include "program.hpp"

#include <chrono>
#include <exception>
#include <search_path_environment/toolbox_cache_error.hpp>

#include "command_line.hpp"
#include "commands.hpp"
#include "output.hpp"
#include "usage_error.hpp"

namespace vornixpath {

namespace {

ExitStatus Run(const WhichOptions& options) { return RunWhich(options); }
ExitStatus Run(const WhyOptions& options) { return RunWhy(options); }
ExitStatus Run(const MatchOptions& options) { return RunMatch(options); }
ExitStatus Run(const FilesOptions& options) { return RunFiles(options); }
ExitStatus Run(const ShadowsOptions& options) { return RunShadows(options); }
ExitStatus Run(const PathListOptions& options) { return RunPath(options); }
ExitStatus Run(const PackagesOptions& options) { return RunPackages(options); }
ExitStatus Run(const SnapshotOptions& options) { return RunSnapshot(options); }
ExitStatus Run(const CompareOptions& options) { return RunCompare(options); }
ExitStatus Run(const WatchOptions& options) { return RunWatch(options); }
ExitStatus Run(const AddOptions& options) { return RunAdd(options); }
ExitStatus Run(const RemoveOptions& options) { return RunRemove(options); }
ExitStatus Run(const UndoOptions& options) { return RunUndo(options); }
ExitStatus Run(const LogOptions& options) { return RunLog(options); }
ExitStatus Run(const SplitOptions& options) { return RunSplit(options); }
ExitStatus Run(const IriOptions& options) { return RunIri(options); }
ExitStatus Run(const CacheOptions& options) { return RunCache(options); }
ExitStatus Run(const StatusOptions& options) { return RunStatus(options); }
ExitStatus Run(const DoctorOptions& options) { return RunDoctor(options); }
ExitStatus Run(const ReportOptions& options) { return RunReport(options, std::chrono::steady_clock::now); }

ExitStatus RunArguments(const std::vector<std::string>& arguments) {
  const auto command = ParseCommandLine(arguments);
  ExitStatus status = ExitStatus::Yes;
  if (const ExitStatus* const done = std::get_if<ExitStatus>(&command)) {
    status = *done;
  } else {
    status = std::visit([](const auto& options) { return Run(options); }, std::get<Command>(command));
  }
  FinishOutput();
  return status;
}

}  // namespace

ExitStatus RunProgram(const std::vector<std::string>& arguments) {
  try {
    return RunArguments(arguments);
  } catch (const UsageError& error) {
    WriteMessage(error.what());
    WriteMessage("'vornixpath --help' tells what can be asked");
    return ExitStatus::WrongUsage;
  } catch (const Quorvex::PathEnvironment::ToolboxCacheError& error) {
    WriteMessage(std::string("the cache cannot be used: ") + error.what());
    return ExitStatus::CouldNotWork;
  } catch (const std::exception& error) {
    WriteMessage(error.what());
    return ExitStatus::CouldNotWork;
  }
}

}  // namespace vornixpath
