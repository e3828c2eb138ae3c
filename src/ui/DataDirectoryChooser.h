#pragma once

#include <optional>
#include <string>

class QWidget;

namespace kavendra {

/// Lets the person choose a directory in a modal dialog that starts in `current`, where new ones can also be
/// made. Returns its path, or nothing when none was chosen.
std::optional<std::string> chooseDataDirectory(QWidget& parent, const std::string& current);

} // namespace kavendra
