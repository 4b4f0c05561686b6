import QtQuick
import QtQuick.Layouts

/// One custom app.
ColumnLayout {
    id: row

    required property var modelData
    signal wanted(bool on)
    signal edited
    signal removed

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    Divider {}

    ToggleRow {
        name: row.modelData.name
        detail: `${row.modelData.endpoint}\n${row.modelData.fromPhone ? qsTr("Synchronizováno z iPhonu") : qsTr("Přidáno na Macu")}`
        value: row.modelData.enabled
        onWanted: on => row.wanted(on)
    }

    ButtonRow {
        Layout.fillWidth: true
        visible: !row.modelData.fromPhone

        ActionButton {
            text: qsTr("Upravit")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.edited()
        }

        ActionButton {
            kind: ActionButton.Kind.Warning
            text: qsTr("Odebrat")
            Accessible.name: `${text}: ${row.modelData.name}`
            onClicked: row.removed()
        }
    }
}
