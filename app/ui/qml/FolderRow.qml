import Morvex
import QtQuick
import QtQuick.Layouts

/// One allowed folder.
RowLayout {
    id: row

    required property var modelData
    required property FoldersModel model

    Layout.fillWidth: true
    spacing: Vzhled.gap

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 1

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

    ActionButton {
        text: qsTr("Odebrat")
        Accessible.name: `${text}: ${row.modelData.path}`
        onClicked: row.model.remove(row.modelData.path)
    }
}
