#include "platform/memory/ManualExecutor.h"
#include "platform/qt/QtFolderPicker.h"
#include "tests/support/TemporaryFolder.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QTest>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <set>

namespace morvex {
namespace {

class FolderPickerTest : public testing::Test {
  protected:
    using Paths = std::vector<std::string>;

    FolderPickerTest() {
        for (const char* name : {"a", "b", "c"}) std::filesystem::create_directory(path(name));
    }

    [[nodiscard]] std::string path(const std::string& name) const { return temporary.path() / name; }

    /// Opens the dialog on the folder with "a", "b" and "c" and lets it find them.
    QFileDialog* ask() {
        executor.start(keep(picker, {"Povolit", "Které složky?", temporary.path().string()}, answer));
        executor.runUntilIdle();
        QFileDialog* dialog = nullptr;
        for (auto* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QFileDialog*>(widget)) dialog = found;
        if (dialog)
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return list(*dialog).model()->rowCount(list(*dialog).rootIndex()) == 3; }));
        return dialog;
    }

    static QAbstractItemView& list(const QFileDialog& dialog) {
        return *dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"));
    }

    static void choose(const QFileDialog& dialog, const std::set<std::string>& names) {
        auto& view = list(dialog);
        view.clearSelection();
        for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row) {
            const auto index = view.model()->index(row, 0, view.rootIndex());
            if (names.contains(index.data().toString().toStdString()))
                view.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }

    std::optional<Paths>& answered() {
        QApplication::processEvents();
        executor.runUntilIdle();
        return *answer;
    }

    TemporaryFolder temporary;
    ManualExecutor executor;
    QtFolderPicker picker;
    std::shared_ptr<std::optional<Paths>> answer = std::make_shared<std::optional<Paths>>();

  private:
    static Task<void> keep(QtFolderPicker& picker, FolderPicker::Question question,
                           std::shared_ptr<std::optional<Paths>> answer) {
        *answer = co_await picker.pick(std::move(question));
    }
};

TEST_F(FolderPickerTest, SeveralFoldersMayBeChosenAtOnce) {
    auto* dialog = ask();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle().toStdString(), "Které složky?");
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept).toStdString(), "Povolit");
    choose(*dialog, {"a", "c"});
    static_cast<QDialog*>(dialog)->accept();
    ASSERT_TRUE(answered());
    EXPECT_THAT(*answered(), testing::UnorderedElementsAre(path("a"), path("c")));
}

TEST_F(FolderPickerTest, AFileIsNotOffered) {
    std::ofstream(path("file")) << "x";
    auto* dialog = ask();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(list(*dialog).model()->rowCount(list(*dialog).rootIndex()), 3);
    dialog->reject();
    ASSERT_TRUE(answered());
    EXPECT_TRUE(answered()->empty());
}

TEST_F(FolderPickerTest, AFurtherQuestionHasNoAnswerOfItsOwn) {
    auto* dialog = ask();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(executor.run(picker.pick({"Povolit", "Znovu?", {}})).value().empty());
    EXPECT_TRUE(dialog->isVisible());
    picker.close();
    ASSERT_TRUE(answered());
    EXPECT_TRUE(answered()->empty());
}

} // namespace
} // namespace morvex
