#include "ui/MenuBuilder.h"

#include "ui/Colors.h"
#include "ui/DisplayText.h"
#include "ui/Translation.h"

#include <QFontMetrics>
#include <QMenu>

namespace kavendra {

namespace {

constexpr int maximumArgumentWidth = 360; ///< in points: a file's name may be longer than a screen is wide

QString titleText(const MenuEntry& entry, const QFontMetrics& metrics) {
    const QString title = translated(entry.title.c_str());
    if (entry.titleArgument.empty())
        return title;
    QString argument =
        metrics.elidedText(singleLine(entry.titleArgument), Qt::ElideMiddle, maximumArgumentWidth);
    argument.replace(u'&', QStringLiteral("&&")); // one alone would mark a key
    return title.arg(argument);
}

void addAction(QMenu& menu, const MenuEntry& entry, QWidget& owner) {
    QAction* action = menu.addAction(titleText(entry, menu.fontMetrics()));
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
        fillMenu(*menu.addMenu(titleText(entry, menu.fontMetrics())), entry.submenu, owner);
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
