import QtQuick
import QtQuick.Templates as T

/// The input field of a `TextEntry`.
T.TextField {
    id: field

    /// The typed text, available even where a derived type has its own property `text`.
    property alias typed: field.text

    implicitHeight: Vzhled.controlHeight
    leftPadding: 12
    rightPadding: 12
    verticalAlignment: TextInput.AlignVCenter
    color: Vzhled.text
    selectionColor: Vzhled.button
    selectedTextColor: Vzhled.buttonText
    placeholderTextColor: Vzhled.secondaryText
    font.family: Qt.application.font.family
    font.pixelSize: Vzhled.bodySize
    selectByMouse: true
    hoverEnabled: true

    background: Rectangle {
        radius: Vzhled.controlRadius
        color: Vzhled.field
        border.color: field.activeFocus ? Vzhled.accent : field.hovered ? Vzhled.secondaryText : Vzhled.fieldLine
        border.width: field.activeFocus ? 2 : 1
    }

    Text {
        anchors.fill: parent
        leftPadding: field.leftPadding
        verticalAlignment: Text.AlignVCenter
        visible: field.typed === "" && field.preeditText === ""
        text: field.placeholderText
        color: field.placeholderTextColor
        font: field.font
        elide: Text.ElideRight
    }
}
