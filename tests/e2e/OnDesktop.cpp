#include "tests/e2e/OnDesktop.h"

#include <QCoreApplication>

#include <filesystem>

namespace morvex {

OnDesktop::OnDesktop() : reader(desktop()) {
    static int argc = 1;
    static char name[] = "test";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    for (const auto& [variable, value] : desktop()) shared[variable] = value;
}

ChildProgram::Environment OnDesktop::desktop() {
    const auto runtime = temporary.path() / "run";
    std::filesystem::create_directories(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    return {{"DISPLAY", display.name()},
            {"DBUS_SESSION_BUS_ADDRESS", bus.address()},
            {"XDG_RUNTIME_DIR", runtime.string()},
            {"GSETTINGS_BACKEND", "memory"},
            {"QT_QPA_PLATFORM", "xcb"},
            {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"},
            {"LC_ALL", "C.UTF-8"}};
}

void OnDesktop::see(const std::string& text) {
    ASSERT_TRUE(eventually([&] { return reader.shows(text); })) << text << " is not in\n" << screen();
}

void OnDesktop::goTo(const std::string& name) {
    constexpr int mostItems = 60;
    auto at = reader.withKeyboard();
    for (int presses = 0; presses < mostItems && !(at && at->name == name); ++presses) {
        display.press(VirtualDisplay::tab);
        auto before = at ? at->path : QString();
        ASSERT_TRUE(eventually([&] {
            at = reader.withKeyboard();
            return at && at->path != before;
        })) << "the keyboard stays where it is\n"
            << screen();
    }
    ASSERT_TRUE(at && at->name == name) << name << " is not to be reached\n" << screen();
}

void OnDesktop::pressButton(const std::string& name) {
    see(name);
    goTo(name);
    display.press(VirtualDisplay::space);
}

std::string OnDesktop::screen() const {
    std::string all;
    for (const auto& item : reader.read())
        all += "  " + item.name + (item.hasKeyboard ? "   <- keyboard\n" : "\n");
    return all;
}

std::unique_ptr<Program> OnDesktop::start() {
    return std::make_unique<Program>("morvex", std::vector<std::string>{}, environment("mac"));
}

std::unique_ptr<Program> OnDesktop::startWindow() {
    auto mac = start();
    see("Zobrazit QR kód");
    return mac;
}

void OnDesktop::startAgain() {
    auto second = runProgram("morvex", {}, environment("mac"));
    EXPECT_EQ(second.code, 0) << second.output;
}

} // namespace morvex
