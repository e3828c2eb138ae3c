#include "ui/MenuBuilder.h"

#include "ui/DisplayText.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QFontMetrics>
#include <QMenu>
#include <QScreen>

namespace kavendra {

namespace {

/// Width of a menu beside its titles: borders, check mark, submenu arrow. In points.
constexpr int widthBesideTitle = 80;

constexpr char16_t leftToRightIsolate = 0x2066, firstStrongIsolate = 0x2068;

/// Returns `text` between an isolate and its end, so that the parts of a path or of an English title are not
/// reordered in a right-to-left menu. Qt has no other way to give an action's text a direction.
QString isolated(char16_t isolate, const QString& text) {
    constexpr char16_t popIsolate = 0x2069;
    return QChar(isolate) + text + QChar(popIsolate);
}

/// Returns a title's argument, elided to a width in points.
QString argumentText(const std::string& argument, const QMenu& menu, int width) {
    QString text = menu.fontMetrics().elidedText(singleLine(argument), Qt::ElideMiddle, std::max(width, 0));
    text.replace(u'&', QStringLiteral("&&")); // a single one marks a mnemonic
    return menu.isRightToLeft() ? isolated(leftToRightIsolate, text) : text;
}

/// Returns an entry's title, with its argument elided if the menu would be wider than the screen.
QString titleText(const MenuEntry& entry, const QMenu& menu, const QWidget& owner) {
    QString title = translated(entry.title.c_str());
    if (title.contains(QStringLiteral("%1"))) {
        const int width = owner.screen()->availableGeometry().width() - widthBesideTitle -
                          menu.fontMetrics().horizontalAdvance(title);
        title = title.arg(argumentText(entry.titleArgument, menu, width));
    }
    return menu.isRightToLeft() ? isolated(firstStrongIsolate, title) : title;
}

void addAction(QMenu& menu, const MenuEntry& entry, QWidget& owner) {
    QAction* action = menu.addAction(titleText(entry, menu, owner));
    action->setEnabled(entry.isEnabled);
    action->setCheckable(entry.isChecked.has_value());
    action->setChecked(entry.isChecked.value_or(false));
    action->setShortcut(QKeySequence(QString::fromStdString(entry.shortcut)));
    action->setShortcutContext(Qt::WidgetShortcut); // only shown here; the window handles the key
    action->setShortcutVisibleInContextMenu(true);
    QObject::connect(action, &QAction::triggered, &owner, entry.action, Qt::QueuedConnection);
}

void addEntry(QMenu& menu, const MenuEntry& entry, QWidget& owner) {
    if (entry.isSeparator())
        menu.addSeparator();
    else if (entry.submenu.empty())
        addAction(menu, entry, owner);
    else
        fillMenu(*menu.addMenu(titleText(entry, menu, owner)), entry.submenu, owner);
}

} // namespace

void fillMenu(QMenu& menu, const Menu& entries, QWidget& owner) {
    menu.setPalette(menuPalette(owner.palette()));
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    for (const MenuEntry& entry : entries)
        addEntry(menu, entry, owner);
}

void showMenu(const Menu& entries, QWidget& owner, const QPoint& globalPosition) {
    auto* menu = new QMenu(&owner);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*menu, entries, owner);
    menu->popup(globalPosition);
}

} // namespace kavendra
