#pragma once

/// Marks a string literal for translation and yields it unchanged. The text is its own key in resources/i18n;
/// `tools/update-translations` finds it by this macro.
#define KAVENDRA_TEXT(text) text
