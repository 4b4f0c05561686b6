import Morvex
import QtQuick
import QtQuick.Layouts

/// The switches for what the phone may use.
Karta {
    id: view

    required property IntegrationsModel model
    required property VoiceModel voice
    /// Wants to open the sheet of a row.
    signal managing(string sheet)

    title: qsTr("Integrace")
    glyph: "grid"

    BodyText {
        Layout.fillWidth: true
        color: Vzhled.secondaryText
        text: qsTr("Zapni jen služby, které má Morvex na tomto Macu používat.")
    }

    IntegrationGroup {
        title: qsTr("Osobní data")
        rows: view.model.personalData
        model: view.model
        onManaging: sheet => view.managing(sheet)
    }

    IntegrationGroup {
        title: qsTr("Nástroje Macu")
        rows: view.model.macTools
        model: view.model
    }

    IntegrationGroup {
        title: qsTr("Vlastní aplikace")
        rows: view.model.customApps
        model: view.model
        onManaging: sheet => view.managing(sheet)
    }

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Změna se projeví od příštího hlasového rozhovoru a bezpečně se oznámí spárovanému iPhonu.")
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            text: qsTr("Obnovit stav")
            onClicked: view.model.detectAgain()
        }

        CaptionText {
            height: Vzhled.controlHeight
            verticalAlignment: Text.AlignVCenter
            visible: view.model.detecting
            text: qsTr("Zjišťuji…")
        }
    }

    LanguageSection {
        model: view.voice
    }

    HotkeySection {}
}
