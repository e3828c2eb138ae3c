#pragma once

#include "ui/SearchField.h"

#include <QWidget>

namespace kavendra {

/// The bar across the top of the window, with the search field in it.
class SearchBar final : public QWidget {
public:
    explicit SearchBar(QWidget* parent = nullptr);

    SearchField& searchField() { return *field; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SearchField* field;
};

} // namespace kavendra
