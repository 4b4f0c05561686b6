#include "tests/e2e/ScreenReader.h"

#include "shared/base/Require.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>
#include <chrono>
#include <thread>

namespace morvex {

namespace {

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString sessionName = QStringLiteral("reader-session");
const QString busName = QStringLiteral("reader");

/// Numbers of states in the accessibility protocol.
constexpr unsigned focused = 12;
constexpr unsigned visible = 30;

QDBusMessage ask(const QDBusConnection& bus, const QString& service, const QString& path,
                 const QString& interface, const QString& method, const QVariantList& arguments = {}) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return bus.call(message);
}

std::vector<ScreenReader::Item> childrenOf(const QDBusConnection& bus, const ScreenReader::Item& item) {
    auto reply = ask(bus, item.application, item.path, accessible, QStringLiteral("GetChildren"));
    std::vector<ScreenReader::Item> children;
    if (reply.signature() != QStringLiteral("a(so)")) return children;
    const auto list = reply.arguments().value(0).value<QDBusArgument>();
    for (list.beginArray(); !list.atEnd();) {
        QString application;
        QDBusObjectPath path;
        list.beginStructure();
        list >> application >> path;
        list.endStructure();
        children.push_back({application, path.path(), {}, false});
    }
    list.endArray();
    return children;
}

std::string nameOf(const QDBusConnection& bus, const ScreenReader::Item& item) {
    auto reply = ask(bus, item.application, item.path, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("Get"), {accessible, QStringLiteral("Name")});
    return reply.arguments().value(0).value<QDBusVariant>().variant().toString().toStdString();
}

std::uint64_t statesOf(const QDBusConnection& bus, const ScreenReader::Item& item) {
    auto reply = ask(bus, item.application, item.path, accessible, QStringLiteral("GetState"));
    if (reply.signature() != QStringLiteral("au")) return 0;
    std::uint64_t states = 0;
    unsigned shift = 0;
    const auto list = reply.arguments().value(0).value<QDBusArgument>();
    for (list.beginArray(); !list.atEnd() && shift < 64; shift += 32) {
        unsigned word = 0;
        list >> word;
        states |= std::uint64_t{word} << shift;
    }
    list.endArray();
    return states;
}

bool has(std::uint64_t states, unsigned state) {
    return (states >> state & 1U) != 0;
}

std::string addressOf(const QDBusConnection& session) {
    const QString name = QStringLiteral("org.a11y.Bus");
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < giveUp) {
        auto reply = ask(session, name, QStringLiteral("/org/a11y/bus"), name, QStringLiteral("GetAddress"));
        if (reply.type() == QDBusMessage::ReplyMessage)
            return reply.arguments().value(0).toString().toStdString();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return {};
}

} // namespace

ScreenReader::ScreenReader(const ChildProgram::Environment& session) {
    launcher_ = std::make_unique<ChildProgram>(
        std::vector<std::string>{"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"}, session);
    const auto address =
        std::ranges::find(session, "DBUS_SESSION_BUS_ADDRESS", &ChildProgram::Environment::value_type::first);
    require(address != session.end(), "a session has a bus");
    auto bus = QDBusConnection::connectToBus(QString::fromStdString(address->second), sessionName);
    bus_ = QDBusConnection::connectToBus(QString::fromStdString(addressOf(bus)), busName);
    require(bus_->isConnected(), "at-spi2-core does not start");
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(busName);
    QDBusConnection::disconnectFromBus(sessionName);
}

std::vector<ScreenReader::Item> ScreenReader::read() const {
    std::vector<Item> all;
    const Item desktop{QStringLiteral("org.a11y.atspi.Registry"),
                       QStringLiteral("/org/a11y/atspi/accessible/root"),
                       {},
                       false};
    for (const auto& application : childrenOf(*bus_, desktop))
        for (const auto& window : childrenOf(*bus_, application)) read(window, all);
    return all;
}

void ScreenReader::read(const Item& item, std::vector<Item>& into) const {
    const auto states = statesOf(*bus_, item);
    if (!has(states, visible)) return;
    into.push_back({item.application, item.path, nameOf(*bus_, item), has(states, focused)});
    for (const auto& child : childrenOf(*bus_, item)) read(child, into);
}

bool ScreenReader::shows(const std::string& name) const {
    return std::ranges::any_of(read(), [&](const Item& item) { return item.name == name; });
}

std::optional<ScreenReader::Item> ScreenReader::withKeyboard() const {
    const auto all = read();
    // The window has it as well; the innermost item is meant.
    auto found = std::ranges::find(all.rbegin(), all.rend(), true, &Item::hasKeyboard);
    if (found == all.rend()) return std::nullopt;
    return *found;
}

} // namespace morvex
