#include "tests/support/UiHarness.h"

#include <QCoreApplication>
#include <QEvent>

#include <functional>

namespace morvex {

namespace {

using Visit = std::function<void(QAccessibleInterface*)>;

void walk(QAccessibleInterface* node, const Visit& visit) {
    if (!node || node->state().invisible) return;
    visit(node);
    for (int index = 0; index < node->childCount(); ++index) walk(node->child(index), visit);
}

std::string nameOf(QAccessibleInterface* node) {
    return node->text(QAccessible::Name).toStdString();
}

bool canBePressed(QAccessible::Role role) {
    return role == QAccessible::Button || role == QAccessible::CheckBox || role == QAccessible::RadioButton;
}

} // namespace

UiHarness::~UiHarness() {
    // What still waits is noted while there is a place for it.
    if (companion) companion->schvalovani().vyresit(false);
    executor.runUntilIdle();
    uiScope.stop();
    EXPECT_TRUE(executor.run(uiScope.join()));
    ui.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void UiHarness::openUi() {
    makeUi();
    ui->openMainWindow();
    settle();
}

void UiHarness::startUi() {
    makeUi();
    ui->start();
    settle();
}

void UiHarness::makeUi() {
    ui = std::make_unique<TolvyCompanionApp>(
        *companion, *features,
        TolvyCompanionApp::Services{clock, uiScope, clipboard, notifications, colors, tray, "1.2.3 (4)",
                                    [this] { ++quits; }, [this] { ++releases; }});
}

void UiHarness::settle() {
    for (int round = 0; round < 3; ++round) {
        executor.runUntilIdle();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

std::vector<std::string> UiHarness::names(QAccessible::Role role, QQuickWindow* in) {
    std::vector<std::string> found;
    morvex::walk(QAccessible::queryAccessibleInterface(in ? in : window()), [&](QAccessibleInterface* node) {
        if (node->role() == role) found.push_back(nameOf(node));
    });
    return found;
}

std::vector<std::string> UiHarness::usableControls(QQuickWindow* in) {
    auto* root = QAccessible::queryAccessibleInterface(in ? in : window());
    morvex::walk(root, [&root](QAccessibleInterface* node) {
        if (node->role() == QAccessible::Dialog) root = node;
    });
    std::vector<std::string> found;
    morvex::walk(root, [&](QAccessibleInterface* node) {
        if (isControl(node)) found.push_back(nameOf(node));
    });
    return found;
}

bool UiHarness::isControl(QAccessibleInterface* node) {
    return canBePressed(node->role()) || node->role() == QAccessible::EditableText ||
           node->role() == QAccessible::ComboBox;
}

void UiHarness::walk(QQuickWindow* in, const Visit& visit) {
    morvex::walk(QAccessible::queryAccessibleInterface(in), visit);
}

std::string UiHarness::texts(QQuickWindow* in) {
    std::string all;
    morvex::walk(QAccessible::queryAccessibleInterface(in ? in : window()), [&](QAccessibleInterface* node) {
        all += nameOf(node) + "\n" + node->text(QAccessible::Description).toStdString() + "\n";
    });
    return all;
}

bool UiHarness::reads(const std::string& sentence, QQuickWindow* in) {
    return ("\n" + texts(in)).contains("\n" + sentence + "\n");
}

void UiHarness::press(const std::string& name, QQuickWindow* in) {
    auto* node = find(name, in);
    ASSERT_NE(node, nullptr) << name << " is not there:\n" << texts(in);
    ASSERT_FALSE(node->state().disabled) << name;
    auto* actions = node->actionInterface();
    auto toggle = QAccessibleActionInterface::toggleAction();
    actions->doAction(actions->actionNames().contains(toggle) ? toggle
                                                              : QAccessibleActionInterface::pressAction());
    settle();
}

void UiHarness::type(const std::string& name, const std::string& text) {
    auto* field = findField(name);
    ASSERT_NE(field, nullptr) << name << " is not there:\n" << texts();
    field->object()->setProperty("text", QString::fromStdString(text));
    settle();
}

std::string UiHarness::typedInto(const std::string& name) {
    auto* field = findField(name);
    return field ? field->object()->property("typed").toString().toStdString() : "no such field";
}

void UiHarness::openWithKeyboard() {
    openUi();
    giveKeyboard(window());
}

void UiHarness::giveKeyboard(QQuickWindow* to) {
    to->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(to));
    settle();
}

void UiHarness::give(Qt::Key key, QQuickWindow* in) {
    QTest::keyClick(in ? in : window(), key);
    settle();
}

Task<void> UiHarness::note(Task<bool> asked) {
    answers.push_back(co_await std::move(asked));
}

std::string UiHarness::focused(QQuickWindow* in) {
    auto* node = QAccessible::queryAccessibleInterface((in ? in : window())->focusObject());
    return node ? nameOf(node) : std::string();
}

std::string UiHarness::focusedDescription() {
    auto* node = QAccessible::queryAccessibleInterface(window()->focusObject());
    return node ? node->text(QAccessible::Description).toStdString() : std::string();
}

void UiHarness::goTo(const std::string& name) {
    constexpr int most = 100;
    for (int step = 0; step < most && focused() != name; ++step) give(Qt::Key_Tab);
    ASSERT_EQ(focused(), name);
}

bool UiHarness::isOn(const std::string& name) {
    auto* node = find(name, nullptr);
    return node && node->state().checked;
}

QAccessibleInterface* UiHarness::findField(const std::string& name) {
    QAccessibleInterface* found = nullptr;
    morvex::walk(QAccessible::queryAccessibleInterface(window()), [&](QAccessibleInterface* node) {
        if (node->role() == QAccessible::EditableText && nameOf(node) == name) found = node;
    });
    return found;
}

QAccessibleInterface* UiHarness::find(const std::string& name, QQuickWindow* in) {
    QAccessibleInterface* found = nullptr;
    morvex::walk(QAccessible::queryAccessibleInterface(in ? in : window()), [&](QAccessibleInterface* node) {
        if (!found && canBePressed(node->role()) && nameOf(node) == name) found = node;
    });
    return found;
}

} // namespace morvex
