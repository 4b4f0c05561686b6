#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <string>
#include <vector>

namespace morvex {

/// Collects the new descriptions that programs announce on the accessibility bus, as a screen reader hears
/// them. Must be created before the programs start, since they announce only what somebody listens for.
class ToldDescriptions : public QObject {
    Q_OBJECT

  public:
    explicit ToldDescriptions(QDBusConnection bus);

    /// Also processes events that have arrived since.
    [[nodiscard]] bool hasHeard(const std::string& description);

  private Q_SLOTS:
    void note(const QDBusMessage& event);

  private:
    QDBusConnection bus_;
    std::vector<std::string> heard_;
};

} // namespace morvex
