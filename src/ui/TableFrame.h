#pragma once

#include <QWidget>

class QGridLayout;
class QLabel;

namespace kavendra {

/// A one-point line around the table, which can show a quiet text over the table's centre.
class TableFrame final : public QWidget {
public:
    explicit TableFrame(QWidget* table);

    /// Shows a text, or none if it is empty.
    void showText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void applyColors();

    QGridLayout* m_layout;
    QLabel* m_text = nullptr; ///< made on first use
};

} // namespace kavendra
