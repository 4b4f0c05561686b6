import QtQuick
import QtQuick.Layouts

/// One custom app.
ColumnLayout {
    id: row

    required property var modelData
    signal wanted(bool on)
    signal edited
    signal askedAgain
    signal inspected
    signal removed

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    Divider {}

    ToggleRow {
        name: row.modelData.name
        detail: [row.modelData.endpoint, row.modelData.fromPhone ? qsTr("Synchronizováno z iPhonu") : qsTr("Přidáno na Macu"), row.modelData.outcome].filter(line => line !== "").join("\n")
        problem: [row.modelData.failure, row.modelData.news > 0 ? qsTr("Změněné nebo nové nástroje: %1").arg(row.modelData.news) : ""].filter(line => line !== "").join("\n")
        value: row.modelData.enabled
        onWanted: on => row.wanted(on)
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            visible: row.modelData.failure !== ""
            text: qsTr("Zkusit znovu")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.askedAgain()
        }

        ActionButton {
            text: qsTr("Změny nástrojů")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.inspected()
        }

        ActionButton {
            visible: !row.modelData.fromPhone
            text: qsTr("Upravit")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.edited()
        }

        ActionButton {
            visible: !row.modelData.fromPhone
            kind: ActionButton.Kind.Warning
            text: qsTr("Odebrat")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.removed()
        }
    }
}
