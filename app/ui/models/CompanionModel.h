#pragma once

#include "app/ui/models/AboutModel.h"
#include "app/ui/models/ApprovalModel.h"
#include "app/ui/models/FoldersModel.h"
#include "app/ui/models/IntegrationsModel.h"
#include "app/ui/models/LinkModel.h"
#include "app/ui/models/PairingModel.h"
#include "app/ui/models/WakefulnessModel.h"

#include <functional>
#include <string>

namespace morvex {

/// All that the windows show, a part a card. Outlives the windows; the companion outlives it.
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
    Q_PROPERTY(morvex::AboutModel* about READ about CONSTANT)

  public:
    struct Surroundings {
        Clock& clock;
        TaskScope& scope; ///< runs what a button starts; stopped and joined before this object goes
        Clipboard& clipboard;
        std::string appVersion;
        std::function<void()> openMainWindow;
        std::function<void()> quit;
    };

    CompanionModel(Companion& companion, Surroundings surroundings);

    LinkModel* link() { return &link_; }

    PairingModel* pairing() { return &pairing_; }

    ApprovalModel* approval() { return &approval_; }

    IntegrationsModel* integrations() { return &integrations_; }

    FoldersModel* folders() { return &folders_; }

    WakefulnessModel* wakefulness() { return &wakefulness_; }

    AboutModel* about() { return &about_; }

    /// "Otevřít nastavení"
    Q_INVOKABLE void openMainWindow();
    /// "Ukončit Morvex"
    Q_INVOKABLE void quit();

  private:
    Surroundings surroundings_;
    LinkModel link_;
    PairingModel pairing_;
    ApprovalModel approval_;
    IntegrationsModel integrations_;
    FoldersModel folders_;
    WakefulnessModel wakefulness_;
    AboutModel about_;
};

} // namespace morvex
