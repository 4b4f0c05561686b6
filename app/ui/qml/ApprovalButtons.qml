import Morvex
import QtQuick

ButtonRow {
    id: row

    required property ApprovalModel model

    ActionButton {
        text: qsTr("Zamítnout")
        onClicked: row.model.refuse(row.model.requestId)
    }

    ActionButton {
        kind: ActionButton.Kind.Main
        text: qsTr("Potvrdit")
        onClicked: row.model.approve(row.model.requestId)
    }
}
