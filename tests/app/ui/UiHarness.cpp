#include "tests/app/ui/UiHarness.h"

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
    uiScope.stop();
    EXPECT_TRUE(executor.run(uiScope.join()));
    ui.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void UiHarness::openUi() {
    ui = std::make_unique<TolvyCompanionApp>(
        *companion, TolvyCompanionApp::Surroundings{clock, uiScope, clipboard, notifications, colors,
                                                    "1.2.3 (4)", [this] { ++quits; }});
    ui->openMainWindow();
    settle();
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
    walk(QAccessible::queryAccessibleInterface(in ? in : window()), [&](QAccessibleInterface* node) {
        if (node->role() == role) found.push_back(nameOf(node));
    });
    return found;
}

std::vector<std::string> UiHarness::usableControls() {
    std::vector<std::string> found;
    walk(QAccessible::queryAccessibleInterface(window()), [&](QAccessibleInterface* node) {
        bool usable = canBePressed(node->role()) || node->role() == QAccessible::EditableText ||
                      node->role() == QAccessible::ComboBox;
        if (usable && !node->state().disabled) found.push_back(nameOf(node));
    });
    return found;
}

std::string UiHarness::texts(QQuickWindow* in) {
    std::string all;
    walk(QAccessible::queryAccessibleInterface(in ? in : window()),
         [&](QAccessibleInterface* node) { all += nameOf(node) + "\n"; });
    return all;
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
    QAccessibleInterface* field = nullptr;
    walk(QAccessible::queryAccessibleInterface(window()), [&](QAccessibleInterface* node) {
        if (node->role() == QAccessible::EditableText && nameOf(node) == name) field = node;
    });
    ASSERT_NE(field, nullptr) << name << " is not there:\n" << texts();
    field->object()->setProperty("text", QString::fromStdString(text));
    settle();
}

bool UiHarness::isOn(const std::string& name) {
    auto* node = find(name, nullptr);
    return node && node->state().checked;
}

QAccessibleInterface* UiHarness::find(const std::string& name, QQuickWindow* in) {
    QAccessibleInterface* found = nullptr;
    walk(QAccessible::queryAccessibleInterface(in ? in : window()), [&](QAccessibleInterface* node) {
        if (!found && canBePressed(node->role()) && nameOf(node) == name) found = node;
    });
    return found;
}

} // namespace morvex
