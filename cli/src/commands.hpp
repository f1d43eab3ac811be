#pragma once

#include "command_line.hpp"
#include "exit_status.hpp"
#include "timed_reading.hpp"

namespace vornixpath {

// Each command writes its results to standard output and the rest to standard error. UsageError and the exceptions of
// the layers below pass to the caller.

ExitStatus RunWhich(const WhichOptions& options);
ExitStatus RunWhy(const WhyOptions& options);
ExitStatus RunMatch(const MatchOptions& options);
ExitStatus RunFiles(const FilesOptions& options);
ExitStatus RunShadows(const ShadowsOptions& options);
ExitStatus RunPath(const PathListOptions& options);
ExitStatus RunPackages(const PackagesOptions& options);
ExitStatus RunSnapshot(const SnapshotOptions& options);
ExitStatus RunCompare(const CompareOptions& options);
ExitStatus RunWatch(const WatchOptions& options);
ExitStatus RunAdd(const AddOptions& options);
ExitStatus RunRemove(const RemoveOptions& options);
ExitStatus RunUndo(const UndoOptions& options);
ExitStatus RunLog(const LogOptions& options);
ExitStatus RunSplit(const SplitOptions& options);
ExitStatus RunIri(const IriOptions& options);
ExitStatus RunCache(const CacheOptions& options);
ExitStatus RunStatus(const StatusOptions& options);
ExitStatus RunDoctor(const DoctorOptions& options);
/// `clock` tells how long folders take to be read.
ExitStatus RunReport(const ReportOptions& options, const SteadyClock& clock);

}  // namespace vornixpath
