#include "platform/qt/QtFolderPicker.h"

#include "foundation/OneShot.h"

#include <QAbstractItemView>
#include <QCoreApplication>

#include <memory>
#include <utility>

namespace morvex {

namespace {

using Answer = OneShot<std::vector<std::string>>;

/// Translates into the language of the program's windows.
QString words(const std::string& czech) {
    return QCoreApplication::translate("Morvex", czech.c_str());
}

/// Makes the dialog accept several folders. No native dialog allows that, and Qt's own dialog only if its
/// lists do.
void letChooseSeveral(QFileDialog& dialog) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    for (const auto* name : {"listView", "treeView"})
        if (auto* list = dialog.findChild<QAbstractItemView*>(QLatin1String(name)))
            list->setSelectionMode(QAbstractItemView::ExtendedSelection);
}

QFileDialog* makeDialog(const FolderPicker::Question& question) {
    auto* dialog = new QFileDialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    letChooseSeveral(*dialog);
    dialog->setWindowTitle(words(question.message));
    dialog->setLabelText(QFileDialog::Accept, words(question.prompt));
    if (question.startAt) dialog->setDirectory(QString::fromStdString(*question.startAt));
    return dialog;
}

std::vector<std::string> chosen(const QFileDialog& dialog, int result) {
    std::vector<std::string> paths;
    if (result != QDialog::Accepted) return paths;
    for (const auto& path : dialog.selectedFiles()) paths.push_back(path.toStdString());
    return paths;
}

} // namespace

Task<std::vector<std::string>> QtFolderPicker::pick(Question question) {
    if (open_) {
        open_->raise();
        open_->activateWindow();
        co_return std::vector<std::string>();
    }
    auto answer = std::make_shared<Answer>();
    open_ = makeDialog(question);
    QObject::connect(open_, &QDialog::finished, open_,
                     [dialog = open_.get(), answer](int result) { answer->answer(chosen(*dialog, result)); });
    open_->show();
    co_return co_await answer->wait();
}

void QtFolderPicker::close() {
    if (open_) open_->reject();
}

} // namespace morvex
