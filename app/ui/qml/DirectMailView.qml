import Morvex
import QtQuick
import QtQuick.Layouts

/// The direct mail accounts.
Sheet {
    id: sheet

    required property DirectMailModel model
    signal editing(var account)

    title: qsTr("SMTP / IMAP")
    buttons: [
        ActionButton {
            text: qsTr("Přidat účet")
            onClicked: sheet.editing(null)
        },
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
        text: qsTr("Přímé poštovní účty fungují nezávisle na Apple Mailu. Hesla zůstávají v Keychainu tohoto Macu.")
    }

    BodyText {
        Layout.fillWidth: true
        visible: sheet.model.rows.count === 0
        font.weight: Font.DemiBold
        text: qsTr("Zatím není připojený žádný SMTP účet.")
    }

    Repeater {
        model: sheet.model.rows

        DirectMailRow {
            id: row

            onEdited: sheet.editing(row.modelData)
            onTested: sheet.model.test(row.modelData.id)
            onChosen: sheet.model.setDefault(row.modelData.id)
        }
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.trouble
    }
}
