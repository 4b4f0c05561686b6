import QtQuick
import QtQuick.Layouts

/// The computer's own voice assistant, which this version does not have.
Karta {
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

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            enabled: false
            text: qsTr("Mluvit bez držení")
        }
    }
}
