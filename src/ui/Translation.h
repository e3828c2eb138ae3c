#pragma once

#include <QString>

namespace kavendra {

/// Installs the translations of Qt and of this program for the language of the locale, where they exist.
/// Requires the application object.
void installTranslations();

/// Returns the translation of an English text, or the text itself when there is none. lupdate finds the
/// literals given to this function and to KAVENDRA_TEXT.
QString translated(const char* english);

} // namespace kavendra
