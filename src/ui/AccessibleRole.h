#pragma once

#include <QAccessible>

class QWidget;

namespace kavendra {

/// Sets the role under which assistive technology sees a plain QWidget or QDialog, which Qt exposes as
/// filler. Call it before setAccessibleName, which makes Qt cache the widget's interface.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace kavendra
