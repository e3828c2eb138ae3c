#include "ui/MenuBuilder.h"

#include "ui/DisplayText.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QFontMetrics>
#include <QMenu>
#include <QScreen>

namespace kavendra {

namespace {

/// What a menu shows beside a title: its borders, the check mark, the arrow of a submenu. In points.
constexpr int roomBesideTitle = 80;

constexpr char16_t leftToRightIsolate = 0x2066, firstStrongIsolate = 0x2068;

/// Returns `text` so that it keeps its direction in a right-to-left menu, where the parts of a path or of an
/// English title would change places. A menu draws plain text, so only characters can say it.
QString isolated(char16_t isolate, const QString& text) {
    constexpr char16_t popIsolate = 0x2069;
    return QChar(isolate) + text + QChar(popIsolate);
}

/// Returns an argument in no more than a width in points.
QString argumentText(const std::string& argument, const QMenu& menu, int width) {
    QString text = menu.fontMetrics().elidedText(singleLine(argument), Qt::ElideMiddle, std::max(width, 0));
    text.replace(u'&', QStringLiteral("&&")); // one alone would mark a key
    return menu.isRightToLeft() ? isolated(leftToRightIsolate, text) : text;
}

/// Returns an entry's title, whole unless the menu would be wider than the screen.
QString titleText(const MenuEntry& entry, const QMenu& menu, const QWidget& owner) {
    QString title = translated(entry.title.c_str());
    if (title.contains(QStringLiteral("%1"))) {
        const int width = owner.screen()->availableGeometry().width() - roomBesideTitle -
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
