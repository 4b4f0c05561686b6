import QtQuick
import QtQuick.Layouts

/// Texts on the left and controls on the right, vertically centred. If the texts had too little room, the
/// controls go below them.
Item {
    id: row

    default property alias texts: left.data
    property alias controls: right.data
    readonly property real beside: right.implicitWidth > 0 ? right.implicitWidth + Vzhled.gap : 0
    readonly property bool stacked: beside > 0 && width - beside < 0.4 * width

    Layout.fillWidth: true
    implicitHeight: stacked ? left.implicitHeight + Vzhled.smallGap + right.implicitHeight : Math.max(left.implicitHeight, right.implicitHeight)

    ColumnLayout {
        id: left

        y: row.stacked ? 0 : Math.round((row.height - height) / 2)
        width: row.stacked ? row.width : row.width - row.beside
        spacing: 1
    }

    RowLayout {
        id: right

        x: row.stacked ? 0 : row.width - width
        y: row.stacked ? row.height - height : Math.round((row.height - height) / 2)
        spacing: Vzhled.gap
    }
}
