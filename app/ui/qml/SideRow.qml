import QtQuick
import QtQuick.Layouts

/// Texts on the left, controls on the right, in the middle of the row's height.
Item {
    id: row

    default property alias texts: left.data
    property alias controls: right.data

    Layout.fillWidth: true
    implicitHeight: Math.max(left.implicitHeight, right.implicitHeight)

    ColumnLayout {
        id: left

        anchors.left: parent.left
        anchors.right: right.left
        anchors.rightMargin: right.width > 0 ? Vzhled.gap : 0
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1
    }

    RowLayout {
        id: right

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Vzhled.gap
    }
}
