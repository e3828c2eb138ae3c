#include "ui/MainWindow.h"

#include "ui/AccessibleRole.h"
#include "ui/DataDirectoryChooser.h"
#include "ui/DisplayText.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace kavendra {

namespace {

constexpr QSize defaultSize(960, 520);
constexpr QSize smallestSize(480, 200);
constexpr int padding = 16;
constexpr int spacing = 12;

/// The system font, `steps` points smaller.
QFont caption(int steps) {
    QFont font;
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - steps));
    return font;
}

/// A one-point line around a widget.
class HairlineFrame final : public QWidget {
public:
    explicit HairlineFrame(QWidget* framed) {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(1, 1, 1, 1);
        layout->addWidget(framed);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(separatorColor(palette()));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

} // namespace

MainWindow::MainWindow(ContentView& content, WindowMenus& menus)
    : content(content), menus(menus), searchBar(new SearchBar), table(new ItemTable), statusLine(new QWidget),
      itemCount(new QLabel), statusMessage(new ElidedLabel), debugSummary(new ElidedLabel),
      errorDialog(new ErrorDialog(this)), confirmationDialog(new ConfirmationDialog(this)) {
    setWindowTitle(QStringLiteral("kavendra"));
    setMinimumSize(smallestSize);
    resize(defaultSize);
    layOut();
    wire();
    applyColors();
    showState();
}

MainWindow::~MainWindow() {
    content.stateChanged = [] {};
}

void MainWindow::comeForward(const std::string& activationToken) {
    // Where Qt on Wayland looks for it while a window is activated; elsewhere nothing reads it.
    constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
    if (!activationToken.empty())
        qputenv(tokenVariable, QByteArray::fromStdString(activationToken));
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    searchBar->searchField().setFocus(Qt::ActiveWindowFocusReason);
    QWidget* const dialog = QApplication::activeModalWidget();
    for (QWidget* front : {static_cast<QWidget*>(this), dialog ? dialog : this}) {
        front->raise();
        front->activateWindow();
    }
    qunsetenv(tokenVariable);
}

void MainWindow::layOut() {
    auto* countRow = new QHBoxLayout(statusLine);
    countRow->setContentsMargins(0, 0, 0, 0);
    countRow->setSpacing(16);
    countRow->addWidget(itemCount);
    countRow->addWidget(statusMessage, 1);
    statusMessage->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    itemCount->setFont(caption(1));
    statusMessage->setFont(caption(1));
    debugSummary->setFont(caption(2));

    // The search bar spans the window and touches its top; the rest stands in the window's padding.
    auto* content = new QVBoxLayout;
    content->setContentsMargins(padding, 0, padding, padding);
    content->setSpacing(spacing);
    content->addWidget(new HairlineFrame(table), 1);
    content->addWidget(statusLine);
    content->addWidget(debugSummary);

    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(spacing);
    stack->addWidget(searchBar);
    stack->addLayout(content, 1);

    SearchField& field = searchBar->searchField();
    field.setPlaceholderText(translated("Search Title, Command, Params, Keywords"));
    field.setAccessibleName(translated("Search"));
    searchBar->folderButton().setAccessibleName(translated("Search path"));
    searchBar->folderButton().setToolTip(translated("Open or copy this path"));
    searchBar->settingsButton().setAccessibleName(translated("Settings"));
    searchBar->settingsButton().setToolTip(translated("Settings"));
    table->setAccessibleName(translated("Launch items"));
    setAccessibleRole(*this, QAccessible::Window);
    setAccessibleRole(*statusLine, QAccessible::StatusBar);
    statusLine->setAccessibleName(translated("Status"));
    itemCount->setObjectName("itemCount");
    statusMessage->setObjectName("statusMessage");
    debugSummary->setObjectName("debugSummary");
    field.setFocus();
    setTabOrder(&field, table);
    setTabOrder(table, &searchBar->folderButton());
    setTabOrder(&searchBar->folderButton(), &searchBar->settingsButton());
}

void MainWindow::wire() {
    SearchField& field = searchBar->searchField();
    field.onTextChange = [this](std::string text) { content.setSearchText(std::move(text)); };
    field.onDebugLog = [this](std::string_view line) { content.appendLogLine(line); };
    field.onSubmit = [this] { content.launchSelected(); };
    field.onMoveUp = [this] { moveSelection(-1); };
    field.onMoveDown = [this] { moveSelection(+1); };
    field.onMoveToBeginning = [this] { content.select(firstSelection(content.filteredItems())); };
    field.onMoveToEnd = [this] { content.select(lastSelection(content.filteredItems())); };

    table->onActivate = [this](const LaunchItem& item) { content.launch(item); };
    table->onSelect = [this](const std::optional<UUID>& id) { content.select(id); };
    table->onColumnWidthChange = [this](const std::string& columnIdentifier, double width) {
        content.updateColumnWidth(columnIdentifier, width);
    };
    table->itemMenuProvider = [this](const LaunchItem& item, std::optional<ItemColumn> column) {
        return menus.itemMenu(item, column);
    };
    table->generalMenuProvider = [this] { return menus.generalMenu(); };
    searchBar->folderButton().menuProvider = [this] { return menus.typedPathMenu(); };
    searchBar->settingsButton().menuProvider = [this] {
        return menus.settingsMenu([this] { chooseDataDirectory(); });
    };
    errorDialog->onDismiss = [this] { content.dismissErrorDialog(); };
    confirmationDialog->onConfirm = [this] { content.confirmStartupChange(); };
    confirmationDialog->onCancel = [this] { content.cancelStartupChange(); };
    content.stateChanged = [this] { showState(); };
}

void MainWindow::moveSelection(int offset) {
    content.select(movedSelection(content.filteredItems(), content.state().selectedItemID, offset));
}

void MainWindow::chooseDataDirectory() {
    const std::string& current = content.state().appSettings.dataDirectoryPath;
    if (const auto chosen = kavendra::chooseDataDirectory(*this, current))
        menus.changeDataDirectory(*chosen);
}

void MainWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!std::exchange(hasAppeared, true))
        content.appear();
}

// Before the window is on the screen, a window manager would put its dialog anywhere.
void MainWindow::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (!std::exchange(isOnScreen, true))
        QMetaObject::invokeMethod(this, [this] { showState(); }, Qt::QueuedConnection);
}

void MainWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void MainWindow::applyColors() {
    for (QLabel* label : {static_cast<QLabel*>(statusMessage), static_cast<QLabel*>(debugSummary)}) {
        QPalette dimmed = palette();
        dimmed.setColor(QPalette::WindowText, secondaryTextColor(palette()));
        label->setPalette(dimmed);
    }
}

void MainWindow::showState() {
    const ContentViewState& state = content.state();
    searchBar->searchField().showText(state.searchText);
    searchBar->searchField().selectAllOnFocus = state.appSettings.selectAllTextOnFocus;
    searchBar->folderButton().setVisible(menus.hasTypedPath());
    table->show(state);
    itemCount->setText(translated("%1 items").arg(state.filteredRows->size()));
    itemCount->setLayoutDirection(naturalDirection(itemCount->text()));
    statusMessage->showText(state.lastActionMessage);
    statusLine->setVisible(state.appSettings.showStatusMessage);
    debugSummary->showText(content.debugSummary());
    debugSummary->setVisible(state.appSettings.showDebugSummary);
    if (!isOnScreen)
        return;
    errorDialog->show(state.errorDialogMessage);
    confirmationDialog->show(state.pendingStartupRegistrationAction);
}

} // namespace kavendra
