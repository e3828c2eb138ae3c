#include "ui/MainWindow.h"

#include "app/StatusTexts.h"
#include "ui/AccessibleRole.h"
#include "ui/DisplayText.h"
#include "ui/FieldClipboard.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

namespace kavendra {

namespace {

constexpr QSize defaultSize(960, 520);
constexpr QSize minimumWindowSize(480, 200);
constexpr QSize roomForDecorations(16, 48); ///< of a window manager, beside and above a window
constexpr QSize directoryDialogSize(760, 480);
constexpr int padding = 16;
constexpr int spacing = 12;

} // namespace

MainWindow::MainWindow(ContentView& content, WindowMenus& menus)
    : m_content(content), m_menus(menus), m_searchBar(new SearchBar), m_table(new ItemTable),
      m_tableFrame(new TableFrame(m_table)), m_statusLine(new QWidget), m_itemCount(new QLabel),
      m_statusMessage(new ElidedLabel), m_debugSummary(new ElidedLabel),
      m_progressLine(new ProgressLine(this)) {
    setMinimumSize(minimumWindowSize);
    resize(defaultSize.boundedTo(screen()->availableSize() - roomForDecorations));
    layOut();
    applyFonts();
    setTexts();
    setFocusOrder();
    connectSearchBar();
    connectTable();
    m_content.stateChanged = [this] { showState(); };
    applyColors();
    showState();
}

MainWindow::~MainWindow() {
    m_content.stateChanged = [] {};
}

void MainWindow::layOut() {
    auto* statusRow = new QHBoxLayout(m_statusLine);
    statusRow->setContentsMargins(0, 0, 0, 0);
    statusRow->setSpacing(16);
    statusRow->addWidget(m_itemCount);
    statusRow->addWidget(m_statusMessage, 1);
    m_statusMessage->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    // The search bar touches three sides of the window; the rest has the window's padding.
    auto* padded = new QVBoxLayout;
    padded->setContentsMargins(padding, 0, padding, padding);
    padded->setSpacing(spacing);
    padded->addWidget(m_tableFrame, 1);
    padded->addWidget(m_statusLine);
    padded->addWidget(m_debugSummary);

    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(spacing);
    stack->addWidget(m_searchBar);
    stack->addLayout(padded, 1);
}

void MainWindow::setTexts() {
    // Before the names: setting a name creates the accessible object, which reads its role once.
    setAccessibleRole(*this, QAccessible::Window);
    setAccessibleRole(*m_statusLine, QAccessible::StatusBar);
    setWindowTitle(QStringLiteral("kavendra"));
    SearchField& field = m_searchBar->searchField();
    field.setPlaceholderText(translated("Search Title, Command, Params, Keywords"));
    field.setAccessibleName(translated("Search"));
    m_searchBar->folderButton().setAccessibleName(translated("Search path"));
    m_searchBar->folderButton().setToolTip(translated("Open or copy this path"));
    m_searchBar->settingsButton().setAccessibleName(translated("Settings"));
    m_searchBar->settingsButton().setToolTip(translated("Settings"));
    m_table->setAccessibleName(translated("Launch items"));
    m_statusLine->setAccessibleName(translated("Status"));
    m_itemCount->setObjectName("itemCount");
    m_statusMessage->setObjectName("statusMessage");
    m_debugSummary->setObjectName("debugSummary");
}

void MainWindow::setFocusOrder() {
    SearchField& field = m_searchBar->searchField();
    field.setFocus();
    setTabOrder(&field, m_table);
    setTabOrder(m_table, &m_searchBar->folderButton());
    setTabOrder(&m_searchBar->folderButton(), &m_searchBar->settingsButton());
}

void MainWindow::connectSearchBar() {
    SearchField& field = m_searchBar->searchField();
    field.onTextChange = [this](std::string text) { m_content.setSearchText(std::move(text)); };
    field.onDebugLog = [this](std::string_view line) { m_content.appendLogLine(line); };
    new FieldClipboard(field, [this](Clipboard clipboard, FieldClipboard::Receiver received) {
        m_content.readText(clipboard, std::move(received));
    });
    field.onSubmit = [this] { m_content.launchSelected(); };
    field.onMoveUp = [this] { moveSelection(-1); };
    field.onMoveDown = [this] { moveSelection(+1); };
    field.onMoveToBeginning = [this] { m_content.select(firstSelection(m_content.filteredItems())); };
    field.onMoveToEnd = [this] { m_content.select(lastSelection(m_content.filteredItems())); };
    m_searchBar->folderButton().menuProvider = [this] { return m_menus.typedPathMenu(); };
    m_searchBar->settingsButton().menuProvider = [this] {
        return m_menus.settingsMenu([this] { chooseDataDirectory(); });
    };
}

void MainWindow::connectTable() {
    m_table->onActivate = [this](const LaunchItem& item) { m_content.launch(item); };
    m_table->onSelect = [this](const std::optional<UUID>& id) { m_content.select(id); };
    m_table->onType = [this](QKeyEvent& event) { m_searchBar->searchField().continueWith(event); };
    m_table->onColumnWidthChange = [this](const std::string& columnIdentifier, double width) {
        m_content.updateColumnWidth(columnIdentifier, width);
    };
    m_table->itemMenuProvider = [this](const LaunchItem& item, std::optional<ItemColumn> column) {
        return m_menus.itemMenu(item, column);
    };
    m_table->generalMenuProvider = [this] { return m_menus.generalMenu(); };
}

MessageDialog& MainWindow::errorDialog() {
    if (!m_errorDialog) {
        m_errorDialog = new MessageDialog(this, warningIcon(), {{QDialogButtonBox::Ok, translated("OK")}});
        m_errorDialog->setObjectName("errorDialog");
        connect(m_errorDialog, &QDialog::finished, this, [this] { m_content.dismissErrorDialog(); });
    }
    return *m_errorDialog;
}

MessageDialog& MainWindow::confirmationDialog() {
    if (!m_confirmationDialog) {
        m_confirmationDialog = new MessageDialog(
            this, applicationIcon(),
            {{QDialogButtonBox::Yes, translated("Yes")}, {QDialogButtonBox::No, translated("No")}});
        m_confirmationDialog->setObjectName("confirmationDialog");
        connect(m_confirmationDialog, &QDialog::finished, this, [this](int answer) {
            answer == QDialog::Accepted ? m_content.confirmStartupChange() : m_content.cancelStartupChange();
        });
    }
    return *m_confirmationDialog;
}

void MainWindow::comeForward(const std::string& activationToken) {
    // Qt's Wayland plugin reads the token from here when a window is activated; nothing else reads it.
    constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
    if (!activationToken.empty())
        qputenv(tokenVariable, QByteArray::fromStdString(activationToken));
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    m_searchBar->searchField().setFocus(Qt::ActiveWindowFocusReason);
    QWidget* const dialog = QApplication::activeModalWidget();
    for (QWidget* front : {static_cast<QWidget*>(this), dialog ? dialog : this}) {
        front->raise();
        front->activateWindow();
    }
    qunsetenv(tokenVariable);
}

void MainWindow::moveSelection(int offset) {
    m_content.select(movedSelection(m_content.filteredItems(), m_content.state().selectedItemID, offset));
}

void MainWindow::chooseDataDirectory() {
    QFileDialog dialog(this, translated("Choose Data Directory"),
                       QFile::decodeName(QByteArray::fromStdString(m_menus.directoryToChooseFrom())));
    dialog.resize(directoryDialogSize);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setLabelText(QFileDialog::Accept, translated("Choose"));
    // The only place for an instruction; a desktop's own file dialog may not show it.
    dialog.setLabelText(QFileDialog::LookIn,
                        translated("Select the folder that contains launch data files."));
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        m_menus.changeDataDirectory(QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString());
}

// A dialog that opens before its window is painted is not placed over it by the window manager. The icon is
// rendered in several sizes, which the first picture does not need.
void MainWindow::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (!std::exchange(m_isOnScreen, true))
        QMetaObject::invokeMethod(this, [this] { finishStart(); }, Qt::QueuedConnection);
}

void MainWindow::finishStart() {
    QApplication::setWindowIcon(applicationIcon());
    showDialogs();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeProgressLine();
}

/// Places the progress line over the lower edge of the search bar, so that it takes no room.
void MainWindow::placeProgressLine() {
    const int height = ProgressLine::height;
    m_progressLine->setGeometry(0, m_searchBar->sizeHint().height() - height, width(), height);
}

// Keys that the focused widget has not used. They are no QShortcuts, because these would act during a press
// on a row, which holds all keys back.
void MainWindow::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool isCommand = event->modifiers() == Qt::ControlModifier;
    if (key == Qt::Key_F5 || (isCommand && key == Qt::Key_R))
        m_content.reloadData();
    else if (isCommand && (key == Qt::Key_Q || key == Qt::Key_W))
        close();
    else if (isCommand && (key == Qt::Key_L || key == Qt::Key_F))
        m_searchBar->searchField().selectWholeText();
    else
        QWidget::keyPressEvent(event);
}

void MainWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
    if (event->type() == QEvent::FontChange) {
        applyFonts();
        placeProgressLine();
    }
}

bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::ThemeChange)
        m_content.applyAppearance(); // the desktop's own palette may be the right one now, or no longer
    return QWidget::event(event);
}

void MainWindow::applyFonts() {
    m_itemCount->setFont(smallerFont(1));
    m_statusMessage->setFont(smallerFont(1));
    m_debugSummary->setFont(smallerFont(2));
}

void MainWindow::applyColors() {
    QPalette secondary = palette();
    secondary.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    m_statusMessage->setPalette(secondary);
    m_debugSummary->setPalette(secondary);
}

void MainWindow::showState() {
    const ContentViewState& state = m_content.state();
    m_searchBar->searchField().showText(state.searchText);
    m_searchBar->searchField().selectAllOnFocus = state.appSettings.selectAllTextOnFocus;
    m_searchBar->folderButton().setVisible(state.hasTypedPath);
    m_table->showState(state);
    const bool isFilteredAway = !state.isLoading && !state.items->list.empty() && state.filteredRows->empty();
    m_tableFrame->showText(isFilteredAway ? translated("No items match") : QString());
    m_progressLine->showProgress(state.isLoading  ? translated("Loading launch items")
                                 : state.isActing ? translated("Opening")
                                                  : QString(),
                                 !state.prefersReducedMotion);
    m_itemCount->setText(translated("%1 items").arg(state.filteredRows->size()));
    m_itemCount->setLayoutDirection(naturalDirection(m_itemCount->text()));
    m_statusMessage->showText(state.lastActionMessage);
    m_statusLine->setVisible(state.appSettings.showStatusMessage);
    m_debugSummary->showText(debugSummary(state.appSettings));
    m_debugSummary->setVisible(state.appSettings.showDebugSummary);
    if (m_isOnScreen)
        showDialogs();
}

void MainWindow::showDialogs() {
    const ContentViewState& state = m_content.state();
    if (state.errorDialogMessage) // English with paths
        errorDialog().showMessage(QString::fromUtf8(*state.errorDialogMessage), Qt::LeftToRight);
    else if (m_errorDialog)
        m_errorDialog->hide();
    if (const auto action = state.pendingStartupRegistrationAction) {
        const QString question = translated(std::string(confirmationMessage(*action)).c_str());
        confirmationDialog().showMessage(question, naturalDirection(question));
    } else if (m_confirmationDialog) {
        m_confirmationDialog->hide();
    }
}

} // namespace kavendra
