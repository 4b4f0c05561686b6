import Morvex
import QtQuick
import QtQuick.Layouts

/// The confirmation of clearing the history of tasks.
Sheet {
    id: sheet

    required property AgentTasksModel model

    title: qsTr("Vymazat historii úkolů?")
    buttons: [
        ActionButton {
            kind: ActionButton.Kind.Warning
            text: qsTr("Vymazat historii")
            onClicked: {
                sheet.model.clear();
                sheet.close();
            }
        },
        ActionButton {
            focus: true
            text: qsTr("Zrušit")
            onClicked: sheet.close()
        }
    ]

    BodyText {
        Layout.fillWidth: true
        text: qsTr("Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro pokračování.")
    }
}
