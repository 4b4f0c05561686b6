import Morvex
import QtQuick
import QtQuick.Layouts

/// The accounts of Apple Mail that Morvex may use.
Sheet {
    id: sheet

    required property AppleMailModel model

    title: "Apple Mail"
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
        text: qsTr("Morvex zde vidí jen účty přidané přímo do Apple Mailu.")
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.problem
    }

    Repeater {
        model: sheet.model.rows

        ToggleRow {
            id: row

            required property var modelData

            name: row.modelData.id
            value: row.modelData.allowed
            onWanted: on => sheet.model.setAllowed(row.modelData.id, on)
        }
    }

    SideRow {
        visible: sheet.model.rows.count > 0
        controls: Picker {
            Accessible.name: qsTr("Výchozí účet pro odesílání")
            model: sheet.model.senders
            textRole: "name"
            currentIndex: sheet.model.senderIndex
            onActivated: index => sheet.model.setSender(sheet.model.senders[index].account)
        }

        BodyText {
            Layout.fillWidth: true
            text: qsTr("Výchozí účet pro odesílání")
            Accessible.ignored: true
        }
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.trouble
    }
}
