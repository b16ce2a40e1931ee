#include "screens/report/save_dialog.h"

#include <QDir>
#include <QFileDialog>
#include <QPointer>
#include <QStandardPaths>

namespace ostrel {

QString askWithSaveDialog(QWidget& window, const SaveQuestion& question) {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    // The window may be closed meanwhile, and takes the dialog with it.
    const QPointer<QFileDialog> dialog(new QFileDialog(&window, question.title, documents.path(),
                                                       QStringLiteral("*.") + question.suffix));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(question.suffix);
    dialog->selectFile(question.suggestedName);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {};
    }
    QString path = isAccepted ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return path;
}

}  // namespace ostrel
