#include "ui/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace kavendra {

namespace {

void install(const QString& baseName, const QString& directory) {
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(), baseName, QStringLiteral("_"), directory))
        QCoreApplication::installTranslator(translator);
}

} // namespace

void installTranslations() {
    install(QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("kavendra"), QStringLiteral(":/i18n"));
}

QString translated(const char* english) {
    return qtTrId(english);
}

} // namespace kavendra
