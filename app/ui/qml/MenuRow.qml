import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// One command of the tray item's window.
T.Button {
    id: row

    property string glyph

    Layout.fillWidth: true
    implicitHeight: Vzhled.controlHeight
    leftPadding: Vzhled.smallGap
    rightPadding: Vzhled.smallGap
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: row.clicked()
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    contentItem: RowLayout {
        spacing: Vzhled.gap

        Glyph {
            name: row.glyph
            color: Vzhled.secondaryText
            side: 18
        }

        BodyText {
            Layout.fillWidth: true
            lineHeight: 1
            text: row.text
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Vzhled.controlRadius
        color: row.down ? Vzhled.pressed : row.hovered ? Vzhled.hover : Vzhled.card
    }

    FocusRing {
        control: row
    }
}
