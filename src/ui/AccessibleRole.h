#pragma once

#include <QAccessible>

class QWidget;

namespace kavendra {

/// Says to assistive technology what a plain widget or dialog is; otherwise it is a mere filler.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace kavendra
