#pragma once

#include "ui/MenuButton.h"
#include "ui/SearchField.h"

#include <QWidget>

namespace kavendra {

/// The bar across the top of the window, with the search field in it, and the folder
/// button, which takes its place from the field and changes nothing else.
class SearchBar final : public QWidget {
public:
    explicit SearchBar(QWidget* parent = nullptr);

    SearchField& searchField() { return *field; }
    MenuButton& folderButton() { return *folder; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SearchField* field;
    MenuButton* folder;
};

} // namespace kavendra
