#pragma once

#include "app/Menu.h"

#include <QToolButton>

#include <functional>

namespace kavendra {

/// A borderless button, one of our icons alone, that opens a menu. The keyboard reaches it with Tab; a click
/// leaves the focus where it is.
class MenuButton final : public QToolButton {
public:
    /// The length of its sides, in points.
    static constexpr int side = 28;

    explicit MenuButton(QString iconName, QWidget* parent = nullptr);

    /// Asked for the entries each time the menu is opened.
    std::function<Menu()> menuProvider = [] { return Menu(); };

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void tintIcon();

    QString iconName;
};

} // namespace kavendra
