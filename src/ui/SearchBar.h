#pragma once

#include "app/Menu.h"
#include "ui/SearchField.h"

#include <QToolButton>
#include <QWidget>

#include <functional>

namespace kavendra {

/// A borderless icon button that opens a menu. Tab reaches it; a click does not take the focus.
class MenuButton final : public QToolButton {
public:
    /// Width and height, in points.
    static constexpr int side = 28;

    /// `iconName`: as for tintedIcon.
    explicit MenuButton(QString iconName, QWidget* parent = nullptr);

    /// Called for the entries each time the menu opens.
    std::function<Menu()> menuProvider = [] { return Menu(); };

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void tintIcon();

    QString m_iconName;
};

/// The bar across the top of the window: the search field, the folder button and the settings button.
class SearchBar final : public QWidget {
public:
    explicit SearchBar(QWidget* parent = nullptr);

    SearchField& searchField() { return *m_searchField; }
    /// Hidden at first; the field takes its room while it is hidden.
    MenuButton& folderButton() { return *m_folderButton; }
    MenuButton& settingsButton() { return *m_settingsButton; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SearchField* m_searchField;
    MenuButton* m_folderButton;
    MenuButton* m_settingsButton;
};

} // namespace kavendra
