import QtQuick
import QtQuick.Templates as T

/// Drawn around the focused control if the keyboard moved the focus there.
Rectangle {
    required property T.Control control

    anchors.fill: control
    anchors.margins: -3
    visible: control.visualFocus
    color: "transparent"
    border.color: Vzhled.accent
    border.width: 2
    radius: Vzhled.controlRadius + 3
}
