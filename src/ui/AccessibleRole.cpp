#include "ui/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace kavendra {

namespace {

constexpr const char* roleProperty = "accessibleRole";

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    const QVariant role = object ? object->property(roleProperty) : QVariant();
    if (!role.isValid())
        return nullptr;
    return new QAccessibleWidget(qobject_cast<QWidget*>(object),
                                 static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    QAccessible::installFactory(makeInterface); // no-op if installed already
    widget.setProperty(roleProperty, static_cast<int>(role));
}

} // namespace kavendra
