#pragma once

#include "app/assembly/Features.h"
#include "app/ui/models/AboutModel.h"
#include "app/ui/models/AgentTasksModel.h"
#include "app/ui/models/AppleMailModel.h"
#include "app/ui/models/ApprovalModel.h"
#include "app/ui/models/CalendarsModel.h"
#include "app/ui/models/CustomAppsModel.h"
#include "app/ui/models/DirectMailModel.h"
#include "app/ui/models/FoldersModel.h"
#include "app/ui/models/IntegrationsModel.h"
#include "app/ui/models/LinkModel.h"
#include "app/ui/models/PairingModel.h"
#include "app/ui/models/RecordsModel.h"
#include "app/ui/models/VoiceModel.h"
#include "app/ui/models/WakefulnessModel.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"

#include <functional>
#include <optional>
#include <string>

namespace morvex {

/// Everything that the windows show; each part belongs to one card. Outlives the windows; the companion
/// outlives it.
class CompanionModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("")
    Q_PROPERTY(morvex::LinkModel* link READ link CONSTANT)
    Q_PROPERTY(morvex::PairingModel* pairing READ pairing CONSTANT)
    Q_PROPERTY(morvex::ApprovalModel* approval READ approval CONSTANT)
    Q_PROPERTY(morvex::IntegrationsModel* integrations READ integrations CONSTANT)
    Q_PROPERTY(morvex::FoldersModel* folders READ folders CONSTANT)
    Q_PROPERTY(morvex::WakefulnessModel* wakefulness READ wakefulness CONSTANT)
    Q_PROPERTY(morvex::CalendarsModel* calendars READ calendars CONSTANT)
    Q_PROPERTY(morvex::CustomAppsModel* customApps READ customApps CONSTANT)
    Q_PROPERTY(morvex::DirectMailModel* directMail READ directMail CONSTANT)
    Q_PROPERTY(morvex::AppleMailModel* appleMail READ appleMail CONSTANT)
    Q_PROPERTY(morvex::VoiceModel* voice READ voice CONSTANT)
    Q_PROPERTY(morvex::AgentTasksModel* tasks READ tasks CONSTANT)
    Q_PROPERTY(morvex::RecordsModel* notes READ notes CONSTANT)
    Q_PROPERTY(morvex::RecordsModel* summaries READ summaries CONSTANT)
    Q_PROPERTY(morvex::AboutModel* about READ about CONSTANT)

  public:
    struct Services {
        Clock& clock;
        TaskScope& scope; ///< runs what a button starts; stopped and joined before this object is destroyed
        Clipboard& clipboard;
        std::string appVersion;
        std::function<void()> openMainWindow;
        std::function<void()> quit;
    };

    CompanionModel(Companion& companion, Features& features, Services services);

    LinkModel* link() { return &link_; }

    PairingModel* pairing() { return &pairing_; }

    ApprovalModel* approval() { return &approval_; }

    IntegrationsModel* integrations() { return &integrations_; }

    FoldersModel* folders() { return &folders_; }

    WakefulnessModel* wakefulness() { return &wakefulness_; }

    CalendarsModel* calendars() { return &calendars_; }

    CustomAppsModel* customApps() { return &customApps_; }

    DirectMailModel* directMail() { return &directMail_; }

    AppleMailModel* appleMail() { return &appleMail_; }

    VoiceModel* voice() { return &voice_; }

    AgentTasksModel* tasks() { return &tasks_; }

    RecordsModel* notes() { return &notes_; }

    RecordsModel* summaries() { return &summaries_; }

    AboutModel* about() { return &about_; }

    /// Makes the windows read every text again, for example after a change of the language.
    void refresh();

    /// "Otevřít nastavení"
    Q_INVOKABLE void openMainWindow();
    /// "Ukončit Morvex"
    Q_INVOKABLE void quit();

  private:
    Features& features_;
    Services services_;
    LinkModel link_;
    PairingModel pairing_;
    ApprovalModel approval_;
    IntegrationsModel integrations_;
    FoldersModel folders_;
    WakefulnessModel wakefulness_;
    CalendarsModel calendars_;
    CustomAppsModel customApps_;
    DirectMailModel directMail_;
    AppleMailModel appleMail_;
    VoiceModel voice_;
    AgentTasksModel tasks_;
    RecordsModel notes_;
    RecordsModel summaries_;
    AboutModel about_;
    Connection notesChanged_;
    Connection summariesChanged_;
};

} // namespace morvex
