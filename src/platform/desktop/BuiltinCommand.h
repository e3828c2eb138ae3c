#pragma once

#include "base/Executor.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns the command of a built-in item on this machine, nothing when it could not be launched here. In the
/// command, a word at the beginning is replaced:
///
///     ${documents} ${downloads}   that directory of the user (xdg-user-dirs)
///     ${configuration}, ${data}   the base directories $XDG_CONFIG_HOME and $XDG_DATA_HOME
///     ${browser} ${files}         the default application for web addresses, for directories
///     ${terminal}                 the installed terminal (see Terminal.h)
///
/// Then an application must be installed and meant for this desktop (OnlyShowIn, NotShowIn), a path must
/// exist, and a program must be found in `pathVariable`, a value of $PATH. A path counts as existing if its
/// file system does not answer within 0.3 s, so that a dead network drive does not hold up all items.
std::optional<std::string> builtinCommandHere(const std::string& command, std::string_view pathVariable,
                                              Executor& executor);

} // namespace kavendra
