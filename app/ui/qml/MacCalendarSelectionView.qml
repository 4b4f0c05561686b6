import Morvex
import QtQuick
import QtQuick.Layouts

/// The calendars that Morvex may use, by account, and the one that takes new events.
Sheet {
    id: sheet

    required property CalendarsModel model

    title: qsTr("Vybrat kalendáře")
    buttons: [
        ActionButton {
            focus: true
            kind: ActionButton.Kind.Main
            text: qsTr("Hotovo")
            onClicked: sheet.close()
        }
    ]

    BodyText {
        Layout.fillWidth: true
        color: Vzhled.secondaryText
        text: qsTr("Morvex uvidí pouze označené kalendáře.")
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.problem
    }

    Repeater {
        model: sheet.model.rows

        ColumnLayout {
            id: row

            required property var modelData

            Layout.fillWidth: true
            spacing: Vzhled.smallGap

            CaptionText {
                Layout.fillWidth: true
                Layout.topMargin: Vzhled.smallGap
                visible: row.modelData.beginsAccount
                text: row.modelData.account
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }

            ToggleRow {
                name: row.modelData.name
                spokenName: `${row.modelData.name}, ${row.modelData.account}`
                detail: row.modelData.writable ? "" : qsTr("Jen pro čtení")
                value: row.modelData.allowed
                onWanted: on => sheet.model.setAllowed(row.modelData.id, on)
            }
        }
    }

    Divider {
        visible: sheet.model.rows.count > 0
    }

    SideRow {
        visible: sheet.model.rows.count > 0
        controls: Picker {
            Accessible.name: qsTr("Výchozí pro nové události")
            model: sheet.model.writers
            textRole: "name"
            currentIndex: sheet.model.writerIndex
            onActivated: index => sheet.model.setWriter(sheet.model.writers[index].calendar)
        }

        BodyText {
            Layout.fillWidth: true
            text: qsTr("Výchozí pro nové události")
            Accessible.ignored: true
        }
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.trouble
    }
}
