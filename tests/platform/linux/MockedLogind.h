#pragma once

#include "tests/platform/linux/MockedSystem.h"

#include <QDBusArgument>

#include <vector>

namespace morvex {

/// A mocked login service.
class MockedLogind : public MockedSystem {
  protected:
    MockedLogind()
        : MockedSystem("logind", QStringLiteral("org.freedesktop.login1"),
                       QStringLiteral("/org/freedesktop/login1")) {}

    /// The locks in force, as "what by who, mode: why".
    std::vector<std::string> locks() const {
        auto reply = call(manager, QStringLiteral("ListInhibitors"), {});
        std::vector<std::string> all;
        const auto list = reply.arguments().value(0).value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
            QString what, who, why, mode;
            uint user = 0;
            uint process = 0;
            list.beginStructure();
            list >> what >> who >> why >> mode >> user >> process;
            list.endStructure();
            all.push_back((what + QStringLiteral(" by ") + who + QStringLiteral(", ") + mode +
                           QStringLiteral(": ") + why)
                              .toStdString());
        }
        list.endArray();
        return all;
    }

    bool eventuallyHolds(const std::vector<std::string>& expected) const {
        return eventually([&] { return locks() == expected; });
    }

    void sendPrepare(const QString& signal, bool starts) const {
        emitSignal(manager, signal, QStringLiteral("b"), {starts});
    }

  private:
    inline static const QString manager = QStringLiteral("org.freedesktop.login1.Manager");
};

} // namespace morvex
