#include "platform/desktop/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kavendra {

void putOnClipboard(const std::string& text) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace kavendra
