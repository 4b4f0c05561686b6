import Morvex
import QtQuick

/// The two answers to the waiting action.
ButtonRow {
    id: row

    required property ApprovalModel model
    property bool approveFirst: false

    Component.onCompleted: {
        if (!approveFirst)
            return;
        refuse.parent = null;
        refuse.parent = row;
    }

    ActionButton {
        id: refuse

        text: qsTr("Zamítnout")
        subject: row.model.requestId
        onClicked: row.model.refuse(refuse.meant)
    }

    ActionButton {
        id: approve

        kind: ActionButton.Kind.Main
        text: qsTr("Potvrdit")
        subject: row.model.requestId
        onClicked: row.model.approve(approve.meant)
    }
}
