#pragma once

#include "app/Menu.h"
#include "launch/ExcelIntegration.h"
#include "launch/TypedPathActions.h"

#include <string>
#include <vector>

namespace kavendra {

/// What the search path menu is made of. The two referred to must outlive the menu.
struct TypedPathMenuSource {
    TypedPathActions& actions;
    ExcelIntegration& excel;
    ReportOutcome report; ///< gets how a chosen action ended
};

/// Returns the three menus "Open", "Open Excel" and "Copy to Clipboard" for the text of the search field;
/// `configured` are the programs of the settings. What is enabled is decided now; what an action acts on,
/// when it is chosen.
Menu typedPathMenu(const std::string& searchText, const std::vector<SearchPathAction>& configured,
                   const TypedPathMenuSource& source);

} // namespace kavendra
