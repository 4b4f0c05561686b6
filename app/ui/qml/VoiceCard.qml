import Morvex
import QtQuick
import QtQuick.Layouts

/// The computer's own voice assistant, which this version lacks.
Karta {
    id: view

    required property VoiceModel model

    title: qsTr("Hlas na Macu")
    glyph: "voice"

    BodyText {
        Layout.fillWidth: true
        text: qsTr("Hlasový rozhovor tahle verze ještě neumí.")
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("iPhone zůstává hlavní zařízení")
    }

    CaptionText {
        Layout.fillWidth: true
        text: view.model.hasKey ? qsTr("OpenAI klíč bezpečně převzat z iPhonu") : qsTr("Čekám na OpenAI klíč z iPhonu")
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            enabled: false
            text: qsTr("Mluvit bez držení")
        }
    }
}
