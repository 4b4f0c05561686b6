import QtQuick
import QtQuick.Layouts

/// The shortcut for the voice assistant, which this version lacks.
ColumnLayout {
    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    Divider {}

    SideRow {
        controls: ActionButton {
            enabled: false
            text: qsTr("Nahrát vlastní zkratku")
        }

        BodyText {
            Layout.fillWidth: true
            text: qsTr("Klávesová zkratka pro hlas")
            opacity: 0.6
        }

        CaptionText {
            Layout.fillWidth: true
            text: qsTr("Tahle verze to ještě neumí.")
        }
    }
}
