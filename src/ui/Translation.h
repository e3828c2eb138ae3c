#pragma once

#include <QString>

namespace kavendra {

/// Makes the application speak the language of the locale, where there is a translation. Without it, or for
/// a text that has none, the English stands. The application must exist.
void installTranslations();

/// Returns a text of a menu, a dialog or the window in the person's language, from resources/i18n.
QString translated(const char* english);

} // namespace kavendra
