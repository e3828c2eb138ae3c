#pragma once

#include "app/ContentView.h"
#include "app/WindowMenus.h"
#include "ui/ConfirmationDialog.h"
#include "ui/ElidedLabel.h"
#include "ui/ErrorDialog.h"
#include "ui/ItemTable.h"
#include "ui/SearchBar.h"

#include <QWidget>

namespace kavendra {

/// The one window: it shows the content view's state and hands what the person does on to it.
class MainWindow final : public QWidget {
public:
    /// Both must outlive this.
    MainWindow(ContentView& content, WindowMenus& menus);
    ~MainWindow() override;

    /// Shows the window above the others, with the focus in the search field, however it was hidden.
    /// `activationToken`: what the desktop lets it take the focus for; may be empty.
    void comeForward(const std::string& activationToken);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void wire();
    void showState();
    void applyColors();
    void moveSelection(int offset);
    void chooseDataDirectory();

    ContentView& content;
    WindowMenus& menus;
    SearchBar* searchBar;
    ItemTable* table;
    QWidget* statusLine;
    QLabel* itemCount;
    ElidedLabel* statusMessage;
    ElidedLabel* debugSummary;
    ErrorDialog* errorDialog;
    ConfirmationDialog* confirmationDialog;
    bool hasAppeared = false;
    bool isOnScreen = false;
};

} // namespace kavendra
