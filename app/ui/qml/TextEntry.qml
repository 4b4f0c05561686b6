import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// A labelled line of text. What was typed is told by `edited` once it is complete.
ColumnLayout {
    id: entry

    property string label
    /// What stands here until something else is typed.
    property string value
    property alias hint: field.placeholderText
    property alias echoMode: field.echoMode
    property alias text: field.text
    signal edited(string text)
    /// Enter was pressed.
    signal accepted

    /// Takes the keyboard.
    function take() {
        field.forceActiveFocus();
    }

    /// Tells what was typed, if it was not told yet.
    function commit() {
        if (field.text !== value)
            edited(field.text);
    }

    onValueChanged: field.text = value
    Component.onDestruction: commit()
    Layout.fillWidth: true
    spacing: Vzhled.hairGap

    CaptionText {
        text: entry.label
        Accessible.ignored: true
    }

    T.TextField {
        id: field

        Layout.fillWidth: true
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
        Accessible.name: entry.label
        Accessible.description: placeholderText
        onEditingFinished: entry.commit()
        onAccepted: entry.accepted()

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
            visible: field.text === "" && field.preeditText === ""
            text: field.placeholderText
            color: field.placeholderTextColor
            font: field.font
            elide: Text.ElideRight
        }
    }
}
