import Morvex
import QtQuick
import QtQuick.Layouts

/// One allowed folder.
SideRow {
    id: row

    required property var modelData
    required property FoldersModel model

    controls: ActionButton {
        text: qsTr("Odebrat")
        Accessible.name: `${text}: ${row.modelData.path}`
        onClicked: row.model.remove(row.modelData.path)
    }

    BodyText {
        Layout.fillWidth: true
        text: row.modelData.name
        wrapMode: Text.NoWrap
        elide: Text.ElideMiddle
    }

    CaptionText {
        Layout.fillWidth: true
        text: row.modelData.path
        wrapMode: Text.NoWrap
        elide: Text.ElideMiddle
    }

    CaptionText {
        Layout.fillWidth: true
        visible: row.modelData.needsRenewal
        text: qsTr("Vyžaduje znovu povolit")
        color: Vzhled.attention
    }
}
