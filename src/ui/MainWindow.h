#pragma once

#include "app/ContentView.h"
#include "app/WindowMenus.h"
#include "ui/ElidedLabel.h"
#include "ui/ItemTable.h"
#include "ui/MessageDialog.h"
#include "ui/ProgressLine.h"
#include "ui/SearchBar.h"
#include "ui/TableFrame.h"

#include <QWidget>

namespace kavendra {

/// The main window. It shows the state of the content view and forwards the user's actions to it.
class MainWindow final : public QWidget {
public:
    /// Both must outlive this.
    MainWindow(ContentView& content, WindowMenus& menus);
    ~MainWindow() override;

    /// Shows the window above the others, minimised or not, with the focus in the search field.
    /// `activationToken` is the desktop's permission to take the focus; may be empty.
    void comeForward(const std::string& activationToken);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void layOut();
    void setTexts();
    void setFocusOrder();
    void connectSearchBar();
    void connectTable();
    void showState();
    void finishStart();
    void showDialogs();
    MessageDialog& errorDialog();
    MessageDialog& confirmationDialog();
    void placeProgressLine();
    void applyColors();
    void applyFonts();
    void moveSelection(int offset);
    void chooseDataDirectory();

    ContentView& m_content;
    WindowMenus& m_menus;
    SearchBar* m_searchBar;
    ItemTable* m_table;
    TableFrame* m_tableFrame;
    QWidget* m_statusLine;
    QLabel* m_itemCount;
    ElidedLabel* m_statusMessage;
    ElidedLabel* m_debugSummary;
    MessageDialog* m_errorDialog = nullptr;        ///< made on first use
    MessageDialog* m_confirmationDialog = nullptr; ///< made on first use
    ProgressLine* m_progressLine;
    bool m_isOnScreen = false; ///< painted at least once
};

} // namespace kavendra
