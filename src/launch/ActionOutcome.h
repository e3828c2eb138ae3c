#pragma once

#include "base/Result.h"

#include <functional>
#include <string>
#include <utility>

namespace kavendra {

/// How an action that a person chose ended: what the status line says of it, also when there was nothing to
/// act on, or the failure to report.
using ActionOutcome = Result<std::string>;

using ReportOutcome = std::function<void(const ActionOutcome&)>;

/// Returns `message` for what went well.
inline ActionOutcome outcomeOf(Result<void> done, std::string message) {
    if (!done)
        return std::unexpected(std::move(done.error()));
    return message;
}

} // namespace kavendra
