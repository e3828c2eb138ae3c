#pragma once

#include "ui/MenuButton.h"
#include "ui/SearchField.h"

#include <QWidget>

namespace kavendra {

/// The bar across the top of the window: the search field, the folder button and the settings button.
class SearchBar final : public QWidget {
public:
    explicit SearchBar(QWidget* parent = nullptr);

    SearchField& searchField() { return *field; }
    MenuButton& folderButton() { return *folder; }
    MenuButton& settingsButton() { return *gear; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SearchField* field;
    MenuButton* folder;
    MenuButton* gear;
};

} // namespace kavendra
