#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <string>
#include <vector>

namespace morvex {

/// The new descriptions that programs tell on the accessibility bus, as a screen reader hears them from now
/// on. Must be made before the programs start, since they tell only what somebody asked for.
class ToldDescriptions : public QObject {
    Q_OBJECT

  public:
    explicit ToldDescriptions(QDBusConnection bus);

    /// Also hears what has come since.
    [[nodiscard]] bool hasHeard(const std::string& description);

  private Q_SLOTS:
    void note(const QDBusMessage& event);

  private:
    QDBusConnection bus_;
    std::vector<std::string> heard_;
};

} // namespace morvex
