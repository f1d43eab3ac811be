#pragma once

#include <search_path_environment/path_problem.hpp>
#include <vector>

#include "finding.hpp"
#include "packages.hpp"

namespace vornixpath {

/// What `doctor` tells.
struct DoctorReport {
  std::vector<Finding> findings;  ///< most severe first
  std::vector<Quorvex::PathEnvironment::PathProblem> problems;
  Packages packages;  ///< those in doubt are problems, too
};

void WriteAsLines(const DoctorReport& report);
void WriteAsJson(const DoctorReport& report);

}  // namespace vornixpath
