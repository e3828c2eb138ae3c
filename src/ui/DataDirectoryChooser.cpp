#include "ui/DataDirectoryChooser.h"

#include "ui/Translation.h"

#include <QFile>
#include <QFileDialog>

namespace kavendra {

namespace {

constexpr QSize dialogSize(760, 480);

} // namespace

std::optional<std::string> chooseDataDirectory(QWidget& parent, const std::string& current) {
    QFileDialog dialog(&parent, translated("Choose Data Directory"),
                       QFile::decodeName(QByteArray::fromStdString(current)));
    dialog.resize(dialogSize);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setLabelText(QFileDialog::Accept, translated("Choose"));
    // The one place of the dialog for words of our own; a desktop's own dialog may leave it out.
    dialog.setLabelText(QFileDialog::LookIn,
                        translated("Select the folder that contains launch data files."));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

} // namespace kavendra
