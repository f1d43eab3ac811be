// The files in cli/src/report, as they stand when the build is configured.
#pragma once

#include <string_view>

namespace vornixpath {

extern const std::string_view kPageStyle;
extern const std::string_view kPageScript;

/// As a Content-Security-Policy names them: "sha256-" and the digest in base64.
extern const std::string_view kPageStyleHash;
extern const std::string_view kPageScriptHash;

}  // namespace vornixpath
