#pragma once

#include <string>
#include <string_view>

namespace vornixpath {

/// Why Windows lets no file or folder have this name, in words that are safe for a terminal; empty when it does: a name
/// of a device (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to LPT9), with any extension, in any letter case; one of
/// `< > : " | ? * \ /` or a control character in it; a dot or a blank at its end. Pure. O(n).
[[nodiscard]] std::string ReasonAgainst(std::u16string_view name);

}  // namespace vornixpath
