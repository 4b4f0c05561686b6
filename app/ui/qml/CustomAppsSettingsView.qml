import Morvex
import QtQuick
import QtQuick.Layouts

/// The custom apps: those of this computer can be edited, those of the phone only switched on and off.
Sheet {
    id: sheet

    required property CustomAppsModel model
    signal editing(var app)
    signal removing(var app)
    signal inspecting(var app)

    title: qsTr("Vlastní aplikace")
    buttons: [
        ActionButton {
            text: qsTr("Přidat aplikaci")
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
        text: qsTr("Připoj vlastní MCP službu přes zabezpečenou HTTPS adresu.")
    }

    ColumnLayout {
        visible: sheet.model.rows.count === 0
        spacing: Vzhled.hairGap

        BodyText {
            text: qsTr("Žádné vlastní aplikace")
            font.weight: Font.DemiBold
        }

        CaptionText {
            Layout.fillWidth: true
            text: qsTr("Přidej první aplikaci tady nebo ji synchronizuj z iPhonu.")
        }
    }

    Repeater {
        model: sheet.model.rows

        CustomAppRow {
            id: row

            onWanted: on => sheet.model.setEnabled(row.modelData.id, on)
            onEdited: sheet.editing(row.modelData)
            onRemoved: sheet.removing(row.modelData)
            onAskedAgain: sheet.model.askAgain()
            onInspected: sheet.inspecting(row.modelData)
        }
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.trouble
    }
}
