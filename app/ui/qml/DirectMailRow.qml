import QtQuick
import QtQuick.Layouts

/// One direct mail account.
ColumnLayout {
    id: row

    required property var modelData
    signal edited
    signal tested
    signal chosen

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    Divider {}

    BodyText {
        Layout.fillWidth: true
        font.weight: Font.DemiBold
        text: row.modelData.name
    }

    CaptionText {
        Layout.fillWidth: true
        visible: text !== ""
        text: [row.modelData.name === row.modelData.address ? "" : row.modelData.address, row.modelData.isDefault ? qsTr("Výchozí účet pro odesílání") : "", row.modelData.status].filter(line => line !== "").join("\n")
    }

    Note {
        visible: text !== ""
        trouble: true
        text: row.modelData.failure
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            text: qsTr("Upravit")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.edited()
        }

        ActionButton {
            enabled: !row.modelData.isTesting
            text: qsTr("Ověřit")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.tested()
        }

        ActionButton {
            visible: !row.modelData.isDefault
            text: qsTr("Nastavit jako výchozí")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.chosen()
        }
    }
}
