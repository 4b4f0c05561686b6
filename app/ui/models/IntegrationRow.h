#pragma once

#include "app/settings/MacIntegrationSettings.h"
#include "app/ui/models/ViewModel.h"
#include "foundation/TaskScope.h"
#include "shared/base/Sentence.h"

#include <QPointer>

#include <functional>

namespace morvex {

/// One family of tools in the card "Integrace".
class IntegrationRow final : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    Q_PROPERTY(QString detail READ detail NOTIFY detailChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(QString action READ action NOTIFY actionChanged)
    /// Which sheet its button opens; empty if the button does something else.
    Q_PROPERTY(QString sheet READ sheet NOTIFY actionChanged)
    Q_PROPERTY(bool available READ available CONSTANT)
    Q_PROPERTY(bool on READ on WRITE setOn NOTIFY onChanged)

  public:
    /// The button of a row.
    struct Action {
        Sentence label = {};                 ///< no button if empty
        const char* sheet = "";              ///< that the button opens
        std::function<void()> run = nullptr; ///< what it does where it opens no sheet
    };

    struct Description {
        Integration integration;
        Sentence name;
        /// The status, or why the row is not available.
        std::function<Sentence()> detail;
        /// A problem that looking again ("Zjistit znovu") may solve; empty if there is none.
        std::function<Sentence()> problem = [] { return Sentence(); };
        bool available = true; ///< the service exists on this system
        std::function<Action()> action = [] { return Action(); };
    };

    /// Called with the result of a switching.
    using Switched = std::function<void(const Result<void>&)>;

    IntegrationRow(MacIntegrationSettings& settings, TaskScope& scope, Description description,
                   Switched switched);

    [[nodiscard]] QString name() const;
    [[nodiscard]] QString detail() const;
    [[nodiscard]] QString problem() const;

    [[nodiscard]] QString action() const;

    [[nodiscard]] QString sheet() const { return QString::fromLatin1(description_.action().sheet); }

    [[nodiscard]] bool available() const { return description_.available; }

    [[nodiscard]] bool on() const;
    /// Switching on takes effect, and shows, once it is saved.
    void setOn(bool on);

    /// Presses the button where it opens no sheet.
    Q_INVOKABLE void act();

    /// Reads the row again when this property changes, too.
    template <class Value> void follow(QProperty<Value>& property) { watch(property); }

    using ViewModel::follow;

  Q_SIGNALS:
    void nameChanged();
    void detailChanged();
    void problemChanged();
    void actionChanged();
    void onChanged();

  private:
    static Task<void> turnOn(MacIntegrationSettings* settings, Integration integration,
                             QPointer<IntegrationRow> row);
    void end(const Result<void>& result);

    MacIntegrationSettings& settings_;
    TaskScope& scope_;
    Description description_;
    Switched switched_;
};

} // namespace morvex
