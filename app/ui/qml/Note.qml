import QtQuick
import QtQuick.Layouts

/// A tinted note: an important message, a hint, or a problem.
Rectangle {
    id: note

    property string text
    property bool trouble: false

    Layout.fillWidth: true
    implicitHeight: row.implicitHeight + 2 * Vzhled.gap
    radius: Vzhled.controlRadius
    color: trouble ? Vzhled.attentionTint : Vzhled.accentTint

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: Vzhled.gap
        spacing: Vzhled.smallGap

        Glyph {
            Layout.alignment: Qt.AlignTop
            Layout.topMargin: 1
            name: note.trouble ? "warning" : "info"
            color: note.trouble ? Vzhled.attention : Vzhled.accent
            side: 18
        }

        BodyText {
            Layout.fillWidth: true
            text: note.text
        }
    }
}
